# SPDX-FileCopyrightText: velmora-installationhandler contributors
# SPDX-License-Identifier: BSD-3-Clause
"""A session bus that is absent, hangs, dies or returns, with a removal of each kind."""

import os

import pytest
from harness.client import INTERFACE, PATH
from standin.remoteerror import RemoteError
from support.faulttable import written
from support.removalrequests import ALL, NATIVE_LAUNCHER, NATIVE_PACKAGE


@pytest.mark.parametrize('request_', ALL, ids=lambda request: request.name)
def test_faults(make_bus_faults, removal_table, request_):
    """The removal goes on whatever becomes of the bus of the caller, who is told as long as there is one. The service
    does not look for another bus: the next one has a service of its own."""
    faults = make_bus_faults(request_)
    faults.start_service()
    scene = faults.scene
    usual = request_.usual

    def begin(fault):
        return removal_table.begin(request_.name, 'session bus', 'any' if fault == 'returns' else request_.last, fault)

    row = begin('hangs')
    peer = faults.ask_and_hold(usual)
    faults.stop('session')
    peer.release(request_.last)
    assert scene.outcomes() == ()
    faults.resume('session')
    outcomes = scene.wait_end(usual)
    assert outcomes == usual.outcomes
    row += [written(outcomes), scene.repeat()]

    died = begin('dies')
    peer = faults.ask_and_hold(usual)
    faults.kill('session')
    peer.release(request_.last)
    if usual.outcomes:
        scene.wait_log('Uninstalled "app"')
    if request_ in (NATIVE_PACKAGE, NATIVE_LAUNCHER):
        scene.wait_log(usual.log)
    faults.wait_settled()
    assert faults.service.alive
    died.append(written(scene.outcomes()))

    faults.start_anew()
    returned = begin('returns')
    returned += [scene.repeat(), scene.repeat()]
    died.append(returned[-1])


def test_absent(make_bus_faults, removal_table):
    """Nobody can ask for anything."""
    faults = make_bus_faults(ALL[0])
    row = removal_table.begin('any', 'session bus', 'any', 'absent')
    faults.kill('session')

    service = faults.launch_service()

    assert service.wait_exit() == 1
    assert service.log() == ['warning default: Could not connect to session bus.']
    row.append('no service')
    faults.start_anew()
    row.append(faults.scene.repeat())


def test_wrong_type(system_bus, program, scripted_bus, removal_table):
    """All that the service asks the bus is who the caller of a removal by launcher is."""
    row = removal_table.begin('any launcher', 'session bus', 'process of the caller', 'wrong type')
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
    row.append(refusal.value.message)

    scripted_bus.answers['GetConnectionUnixProcessID'] = '(u)', os.getpid()
    assert ask() == ()
    program.wait_for_log('bad desktop file: "/absent.desktop"')
    row.append('allowed')
