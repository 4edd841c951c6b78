# SPDX-FileCopyrightText: velmora-installationhandler contributors
# SPDX-License-Identifier: BSD-3-Clause
"""The service in a session as a device has one: systemd's user manager starts the session bus and the service."""

import pytest
from harness.usermanager import UserManager

pytest_plugins = ['support.fixtures']
UNIT = 'velmora-installationhandler.service'


@pytest.fixture
def user_manager(processes, system_bus, environment):
    """The user manager, running. The system bus is there before it."""
    return UserManager(processes, environment)


@pytest.fixture
def session_bus(user_manager):
    """The bus that the user manager starts, in the place of the one of other tests."""
    return user_manager.bus


@pytest.fixture
def unit(user_manager):
    """The unit of the service."""
    return user_manager.unit(UNIT)
