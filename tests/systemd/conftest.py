# SPDX-FileCopyrightText: velmora-installationhandler contributors
# SPDX-License-Identifier: BSD-3-Clause
"""The service in a session as a device has one: systemd's user manager starts the session bus and the service."""

from pathlib import Path

import documents
import pytest
from harness.usermanager import UserManager
from standin.names import SESSION

pytest_plugins = ['support.fixtures']
UNIT = 'velmora-installationhandler.service'


def pytest_addoption(parser):
    parser.addoption('--stage', type=Path, help='the folder in which the product has been installed')


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


@pytest.fixture
def examples():
    """The examples in the section on systemd: the command that tells the user manager of the display, and a drop-in."""
    return documents.examples('docs/integration.md', 'systemd')


@pytest.fixture
def provide_display(processes, user_manager, screen, examples):
    """Puts the display into the environment of the user manager."""
    def provide():
        variables = [f'{name}={value}' for name, value in screen.environment().items()]
        processes.run('compositor', [SESSION, *variables, 'sh', '-c', examples[0]])
    return provide
