# SPDX-FileCopyrightText: velmora-installationhandler contributors
# SPDX-License-Identifier: BSD-3-Clause
"""Tests of the two PackageKits, the real one and the stand-in, with the fixtures of the integration tests."""

import pytest
from packagekitclient import PackageKitClient

pytest_plugins = ['support.fixtures']


def pytest_addoption(parser):
    """Where the build has put the program that talks to PackageKit."""
    parser.addoption('--client', required=True, help='the program packagekitclient')


@pytest.fixture
def requests(request, processes, system_bus):
    """Requests at PackageKit, made through the library that the service uses."""
    return PackageKitClient(request.config.getoption('--client'), processes)
