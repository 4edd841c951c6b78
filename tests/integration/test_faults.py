# SPDX-FileCopyrightText: velmora-installationhandler contributors
# SPDX-License-Identifier: BSD-3-Clause
"""Peers and buses that are absent, return, die, hang or answer nonsense in removals of every kind."""

import os

import pytest
from harness.client import INTERFACE, PATH
from standin.remoteerror import RemoteError
from support.faults import CALL_FAULTS, CRASH, NO_REPLY
from support.removalrequests import (ALL, ANDROID_LAUNCHER, DELETED, MANAGED_LAUNCHER, MANAGED_PACKAGE, NATIVE_LAUNCHER,
                                     NATIVE_PACKAGE, OWN_LAUNCHER, REMOVED, SDK_MODE, SEARCHED_IN_VAIN, End)

pytestmark = pytest.mark.side_by_side(2 * os.cpu_count())

UNKNOWN_OWNER = End(log='Error on resolving desktop file owner', known='22')
ANDROID_FAILED = End(log='failed to remove android app:', known='21')
NO_PACKAGE_KIT = 'The name org.freedesktop.PackageKit was not provided by any .service files'
WRONG_TYPE = 'Unexpected reply signature: got "a{sv}", expected "o"'


def without_manager(end):
    """The end of all that happens because the answer of the package manager is missing."""
    return {('any', 'absent'): end, **{('GetPackage', fault): end for fault in CALL_FAULTS},
            ('Remove', 'dies'): End(((False, NO_REPLY),))}


def hook_failed(text):
    """The launcher is gone, and the log tells the error of the runtime manager in the library's words."""
    return End(log=f"Failed to call ZARN hook 'OnRemove' for Runtime Manager service:  \"{text}\"", known='21')


def reported_twice(text):
    """The library reports both the error and the end of a request that never began. Known behaviour 25."""
    return End(((False, text), *REMOVED), DELETED, known='25')


def without_end(method):
    """Neither an error nor an end ever comes. Known behaviour 31."""
    return End(call=method, known='31')


# The ends that differ from the usual one, by kind of removal, peer, call and fault. PackageKit receives the names that the
# package manager does not know, and is asked for the owners of launchers.
ENDS = {
    (MANAGED_PACKAGE.name, 'package-manager'): without_manager(End(REMOVED, DELETED)),
    (MANAGED_LAUNCHER.name, 'package-manager'): without_manager(SEARCHED_IN_VAIN),
    (SDK_MODE.name, 'package-manager'): without_manager(End(REMOVED, DELETED)),
    (NATIVE_PACKAGE.name, 'package-kit'): {
        ('any', 'absent'): reported_twice(NO_PACKAGE_KIT),
        ('CreateTransaction', 'dies'): reported_twice(NO_REPLY),
        ('CreateTransaction', 'wrong type'): reported_twice(WRONG_TYPE),
        ('Resolve', 'dies'): CRASH,
        ('RemovePackages', 'dies'): CRASH,
        ('Resolve', 'wrong type'): without_end('Resolve'),
        ('RemovePackages', 'wrong type'): without_end('RemovePackages'),
    },
    (NATIVE_LAUNCHER.name, 'package-kit'): {
        ('any', 'absent'): UNKNOWN_OWNER,
        ('CreateTransaction', 'dies'): UNKNOWN_OWNER,
        ('CreateTransaction', 'wrong type'): UNKNOWN_OWNER,
        ('SearchFiles', 'dies'): UNKNOWN_OWNER,
        # It has searched too late for what was planned, and knows nothing.
        ('SearchFiles', 'hangs'): SEARCHED_IN_VAIN,
        ('Resolve', 'dies'): CRASH,
        ('RemovePackages', 'dies'): CRASH,
        ('SearchFiles', 'wrong type'): without_end('SearchFiles'),
        ('Resolve', 'wrong type'): without_end('Resolve'),
        ('RemovePackages', 'wrong type'): without_end('RemovePackages'),
    },
    (OWN_LAUNCHER.name, 'runtime-manager'): {
        ('any', 'absent'): hook_failed('The name ru.quon.RuntimeManager was not provided by any .service files'),
        ('OnRemove', 'dies'): hook_failed(NO_REPLY),
    },
    (ANDROID_LAUNCHER.name, 'package-kit'): {('SearchFiles', 'wrong type'): without_end('SearchFiles')},
    (ANDROID_LAUNCHER.name, 'android-support'): {
        ('any', 'absent'): ANDROID_FAILED,
        ('removeFile', 'dies'): ANDROID_FAILED,
        ('removeFile', 'wrong type'): ANDROID_FAILED,
    },
}

# The ends of removals at a system bus that is lost, and at one that never was there. Known behaviour 42.
LOST_BUS = {OWN_LAUNCHER.name: hook_failed('Not connected to D-Bus server'), ANDROID_LAUNCHER.name: ANDROID_FAILED}
ABSENT_BUS = {**LOST_BUS, MANAGED_LAUNCHER.name: UNKNOWN_OWNER, NATIVE_LAUNCHER.name: UNKNOWN_OWNER}


@pytest.mark.parametrize('request_, peer', [(request, peer) for request in ALL for peer in request.peers()],
                         ids=lambda value: getattr(value, 'name', value))
def test_peer(try_faults, request_, peer):
    try_faults(request_, peer, ENDS.get((request_.name, peer), {}))


@pytest.mark.parametrize('request_', ALL, ids=lambda request: request.name)
def test_system_bus(make_bus_faults, removal_table, request_):
    faults = make_bus_faults(request_)
    faults.start_service()
    removal = faults.removal

    def check(fault, end):
        call = request_.last if fault == 'dies' else 'any'
        row = removal_table.begin(request_.name, 'system bus', call, fault, end.known)
        outcomes = removal.wait_end(end)
        assert outcomes == end.outcomes, row
        row += end.cells(outcomes)
        return row

    removal.expect(request_.usual)
    faults.stop('system')
    request_.ask(removal)
    assert removal.outcomes() == ()
    faults.resume('system')
    check('hangs', request_.usual).append(removal.repeat())

    end = LOST_BUS.get(request_.name, End(((False, 'Not connected to D-Bus server'),), known='42'))
    faults.ask_and_hold(end)
    faults.kill('system')
    died = check('dies', end)

    # This service has lost its bus for good. To one that never had it things look a little different.
    faults.service.kill()
    faults.start_service()
    removal.set_up_files()
    end = ABSENT_BUS.get(request_.name, End(((False, 'Not connected to the system bus'),), known='42'))
    removal.ask(end).wait()
    absent = check('absent', end)

    faults.start_anew()
    removal.set_up()
    removal.ask(request_.usual).wait()
    returned = check('returns', request_.usual)
    following = removal.repeat()
    for row in (died, absent, returned):
        row.append(following)


@pytest.mark.parametrize('request_', ALL, ids=lambda request: request.name)
def test_session_bus(make_bus_faults, removal_table, request_):
    """The removal goes on whatever becomes of the bus of the caller, who is told as long as there is one. The service
    does not look for another bus: the next one has a service of its own."""
    faults = make_bus_faults(request_)
    faults.start_service()
    removal = faults.removal
    usual = request_.usual

    def begin(fault):
        return removal_table.begin(request_.name, 'session bus', 'any' if fault == 'returns' else request_.last, fault,
                                   usual.known)

    row = begin('hangs')
    peer = faults.ask_and_hold(usual)
    faults.stop('session')
    peer.release(request_.last)
    assert removal.outcomes() == ()
    faults.resume('session')
    outcomes = removal.wait_end(usual)
    assert outcomes == usual.outcomes
    row += [*usual.cells(outcomes), removal.repeat()]

    died = begin('dies')
    peer = faults.ask_and_hold(usual)
    faults.kill('session')
    peer.release(request_.last)
    if usual.outcomes:
        removal.wait_log('Uninstalled "app"')
    if request_ in (NATIVE_PACKAGE, NATIVE_LAUNCHER):
        removal.wait_log(usual.log)
    faults.wait_settled()
    assert faults.service.alive
    died += usual.cells(removal.outcomes())

    faults.start_anew()
    returned = begin('returns')
    died.append(removal.repeat())
    returned += [*usual.cells(usual.outcomes), removal.repeat()]


def test_absent_session_bus(make_bus_faults, removal_table):
    """Nobody can ask for anything."""
    faults = make_bus_faults(ALL[0])
    row = removal_table.begin('any', 'session bus', 'any', 'absent', '')
    faults.kill('session')

    service = faults.launch_service()

    assert service.wait_exit() == 1
    assert service.log() == ['warning default: Could not connect to session bus.']
    row += ['no service', f'`{service.warnings()[0]}`']
    faults.start_anew()
    row.append(faults.removal.repeat())


def test_wrong_type_of_session_bus(system_bus, program, scripted_bus, removal_table):
    """All that the service asks the bus is who the caller of a removal by launcher is."""
    row = removal_table.begin('any launcher', 'session bus', 'GetConnectionUnixProcessID', 'wrong type', '')
    program.launch(environment={'DBUS_SESSION_BUS_ADDRESS': scripted_bus.address})
    scripted_bus.wait_name_request()
    scripted_bus.grant_name()

    def ask():
        return scripted_bus.start_call(PATH, INTERFACE, 'removePackageByDesktopFile', '(s)', '/absent.desktop').wait()

    scripted_bus.answers['GetConnectionUnixProcessID'] = '(s)', str(os.getpid())
    with pytest.raises(RemoteError) as refusal:
        ask()
    assert (refusal.value.name, refusal.value.message) == \
        ('org.freedesktop.DBus.Error.AccessDenied', 'PID 0 is not in privileged group')
    row += [f'`{refusal.value.message}`', '']

    scripted_bus.answers['GetConnectionUnixProcessID'] = '(u)', os.getpid()
    assert ask() == ()
    program.wait_for_log('bad desktop file: "/absent.desktop"')
    row.append('allowed')
