# SPDX-FileCopyrightText: velmora-installationhandler contributors
# SPDX-License-Identifier: BSD-3-Clause
"""Peers that are absent, die, hang, answer nonsense or have just come back, at each call of every removal."""

import pytest
from gi.repository import GLib
from packages import build_package
from support.removalfaults import PEERS, REQUESTS, Peer, Scene

NONSENSE = GLib.Variant('(a{sv})', ({},))
FAULTS = ('absent', 'dies', 'hangs', 'wrong type', 'returns')
CELLS = [(request, method, fault) for request in REQUESTS for method in REQUESTS[request].methods for fault in FAULTS]

REMOVED = [(True, '')]
SILENT = []
NO_PACKAGE_KIT = 'The name org.freedesktop.PackageKit was not provided by any .service files'
NO_REPLY = 'Message recipient disconnected from message bus without replying'
CRASHED = 'The PackageKit daemon has crashed'
WRONG = 'Unexpected reply signature: got "a{sv}", expected "o"'

USUAL = {request: SILENT if request in ('own launcher', 'launcher of an Android application') else REMOVED
         for request in REQUESTS}

# Where the removal ends in a call, and nobody is told.
LAST_CALLS = {'own launcher': ('runtime_manager', 'OnRemove'),
              'launcher of an Android application': ('android_support', 'removeFile')}

# What differs from the usual outcome. The library reports the failure of a request that never began twice.
OUTCOMES = {
    **{(request, 'Remove', 'dies'): [(False, NO_REPLY)] for request in REQUESTS},
    ('native package', 'CreateTransaction', 'dies'): [(False, NO_REPLY), *REMOVED],
    ('native package', 'CreateTransaction', 'wrong type'): [(False, WRONG), *REMOVED],
    **{('native package', method, 'absent'): [(False, NO_PACKAGE_KIT), *REMOVED]
       for method in ('CreateTransaction', 'Resolve', 'RemovePackages')},
    # Neither an error nor an end ever comes.
    **{(request, method, 'wrong type'): SILENT for request in REQUESTS for method in ('Resolve', 'RemovePackages')},
    # The owner is not found.
    **{('launcher of a managed package', 'GetPackage', fault): SILENT for fault in FAULTS if fault != 'returns'},
    ('launcher of a managed package', 'Remove', 'absent'): SILENT,
    **{('launcher of a native package', method, 'absent'): SILENT
       for method in ('CreateTransaction', 'SearchFiles', 'Resolve', 'RemovePackages')},
    **{('launcher of a native package', 'CreateTransaction', fault): SILENT for fault in ('dies', 'wrong type')},
    **{('launcher of a native package', 'SearchFiles', fault): SILENT for fault in ('dies', 'hangs', 'wrong type')},
}

# PackageKit's end and the missing answer are both reported, in the order in which they arrive, and each may end twice.
CRASHES = {(request, method, 'dies') for request in ('native package', 'launcher of a native package')
           for method in ('Resolve', 'RemovePackages')}


@pytest.fixture(scope='module')
def table(request):
    """What came of each fault, shown when all have been tried."""
    rows = []
    yield rows
    reporter = request.config.pluginmanager.getplugin('terminalreporter')
    reporter.ensure_newline()
    for row in rows:
        reporter.write_line('{:<36}{:<19}{:<12}{}; next: {}'.format(*row))


@pytest.fixture(scope='module')
def file(tmp_path_factory):
    """The package of the application."""
    return build_package(tmp_path_factory.mktemp('packages'), 'app')


def plan_fault(peer, fault):
    """Before the request."""
    if fault == 'absent':
        peer.go()
    elif fault == 'dies':
        peer.plan(lambda standin: standin.exit_on(peer.method, 'before'))
    elif fault == 'hangs':
        peer.plan(lambda standin: standin.hang(peer.method, 1))
    elif fault == 'wrong type':
        peer.plan(lambda standin: standin.answer(peer.method, NONSENSE, 1))
    else:
        peer.standin.vanish()
        peer.standin.come_back()


def wait_outcomes(expected, crash, service, signals):
    """The outcomes of the removals, when all that is expected has come and nothing more is on its way."""
    if crash:
        signals.wait('removalFinished')
    elif expected:
        signals.wait('removalFinished', len(expected))
    service.barrier()
    return signals.arguments('removalFinished')


def wait_android_end(standins, service, method, fault):
    """Nobody is told of it, but it comes; except for a search that never ends."""
    if (method, fault) == ('removeFile', 'absent'):
        service.wait_for_log('failed to remove android app:')
    elif (method, fault) != ('SearchFiles', 'wrong type'):
        standins.android_support.wait_call('removeFile')


def written(outcomes):
    """For the table."""
    return ', '.join(text or 'removed' for _, text in outcomes) or 'silence'


@pytest.mark.parametrize('request_, method, fault', CELLS)
def test_fault(standins, service, client, signals, device, file, system_bus, session_bus, table, request_, method, fault):
    scene = Scene(REQUESTS[request_], standins, client, device, file)
    peer = Peer(method, scene, standins, session_bus if PEERS[method][0] == 'launcher-model' else system_bus)
    cell = request_, method, fault
    expected = OUTCOMES.get(cell, USUAL[request_])

    plan_fault(peer, fault)
    asked = scene.request.ask(scene)
    if fault == 'hangs':
        peer.standin.wait_call(method)
        assert signals.arguments('removalFinished') == []
        peer.standin.release(method)
    if fault == 'dies':
        peer.standin.wait_exit()
    asked.wait()
    if request_ == 'launcher of an Android application':
        wait_android_end(standins, service, method, fault)
    outcomes = wait_outcomes(expected, cell in CRASHES, service, signals)

    if cell in CRASHES:
        assert {text for success, text in outcomes if not success} <= {CRASHED, NO_REPLY} and outcomes[0][0] is False
    else:
        assert outcomes == expected
    peer.repair()
    following = repeat(scene, cell[0], standins, service, signals)
    table.append((*cell, written(outcomes), following))


def repeat(scene, request, standins, service, signals):
    """Whatever was wrong, the same request takes its usual course."""
    if request == 'installation in sdk mode':
        signals.wait('installFinished')
    service.barrier()
    signals.all.clear()
    if request in LAST_CALLS:
        name, method = LAST_CALLS[request]
        count = len(getattr(standins, name).calls(method))

    scene.request.ask(scene).wait()

    if request in LAST_CALLS:
        getattr(standins, name).wait_call(method, count + 1)
        return method
    outcomes = wait_outcomes(USUAL[request], False, service, signals)
    assert outcomes == USUAL[request]
    return written(outcomes)
