# SPDX-FileCopyrightText: velmora-installationhandler contributors
# SPDX-License-Identifier: BSD-3-Clause
"""Tests of the stand-ins themselves, with the fixtures of the integration tests."""

import pytest
from harness.client import Client

pytest_plugins = ['support.fixtures']


@pytest.fixture
def peer(system_bus, processes):
    """A program on the system bus, which calls the stand-ins."""
    return Client(system_bus.connect(), processes)
