# SPDX-FileCopyrightText: velmora-installationhandler contributors
# SPDX-License-Identifier: BSD-3-Clause
"""The fixtures of the tests of faults in removals."""

import pytest
from packages import build_package

from .busfaults import BusFaults
from .removalfaults import RemovalFaults
from .removalfixture import RemovalFixture


@pytest.fixture(scope='module')
def app_package(tmp_path_factory):
    """The package of the application, which has a launcher."""
    return build_package(tmp_path_factory.mktemp('packages'), 'app')


@pytest.fixture
def make_removal(processes, device, app_package, standins):
    """The removal of a request, with its peers and without the service."""
    def make(request):
        removal = RemovalFixture(request, app_package, processes, device)
        removal.start_peers(standins)
        removal.set_up()
        return removal
    return make


@pytest.fixture
def try_faults(make_removal, program, client, signals, system_bus, session_bus, removal_table):
    """Tries all faults of a peer in a request, with the ends that differ from the usual one by (call, fault)."""
    def try_all(request, peer, ends):
        removal = make_removal(request)
        removal.enter(program.start(), client, signals)
        RemovalFaults(removal, peer, ends, {'system': system_bus, 'session': session_bus}, removal_table).try_all()
    return try_all


@pytest.fixture
def make_bus_faults(make_removal, processes, environment, system_bus, session_bus):
    """The buses of a request, on which the service has not been started."""
    def make(request):
        return BusFaults(make_removal(request), processes, environment, {'system': system_bus, 'session': session_bus})
    return make
