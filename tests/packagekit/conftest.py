# SPDX-FileCopyrightText: velmora-installationhandler contributors
# SPDX-License-Identifier: BSD-3-Clause
"""Tests of the real PackageKit and of its stand-in, with the fixtures of the integration tests."""

import pytest
from packagekitclient import PackageKitClient

pytest_plugins = ['support.fixtures']


def pytest_addoption(parser):
    """Adds the option for the built program packagekitclient."""
    parser.addoption('--client', required=True, help='the program packagekitclient')


@pytest.fixture
def requests(request, processes, system_bus):
    """Makes requests to PackageKit through the library that the service uses."""
    return PackageKitClient(request.config.getoption('--client'), processes)
