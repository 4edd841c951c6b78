# SPDX-FileCopyrightText: velmora-installationhandler contributors
# SPDX-License-Identifier: BSD-3-Clause
"""Buses that are absent, return, die, hang or refuse in installations of every kind."""

import pytest
from harness.bus import SYSTEM_CONFIGURATION
from support.installationdevice import PEERS
from support.installationfaults import DEVELOPER_MODE, MANAGER, MCE
from support.installationrequests import (ALL, AS_USUAL, UNKNOWN, WARNING, asking, failed, handed_over, logging, usual,
                                          words)

NO_BUS = UNKNOWN + '"Not connected to D-Bus server"'
REJECTED = UNKNOWN + '"Rejected send message, …'
NAME_IN_USE = WARNING + 'Service name is already in use: org.velmoraos.installationhandler'
IN_NEW_SERVICE = 'in a new service as usual'


def without_system_bus(request, lost_after=0):
    """The outcome at a bus that goes when so many files have been handed over. Known behaviour 9, 42."""
    lines = [None] * lost_after + [NO_BUS] * request.files
    removed = usual(request).removed
    if removed and not lost_after:
        removed = ((False, 'Not connected to the system bus'),) * request.files
    return usual(request).but(told=failed(*['Disconnected'] * request.files), removed=removed,
                              handed_over=handed_over(request, lost_after), **asking(request, *range(lost_after, request.files)), **logging(request, *lines))


def install(device, request, outcome):
    """Asks for an installation and checks what comes of it; the cells of a table."""
    device.set_up(request)
    device.ask(request).wait()
    assert device.wait_end(outcome) == outcome
    return words(outcome, request)


def begin_all(table, peer, fault, known=''):
    """A row for each kind of request."""
    return [table.begin(str(request), peer, 'any', fault, known) for request in ALL]


def repeat_all(device, rows):
    """Asks for each kind once more, in a new service."""
    device.start_service()
    for request, row in zip(ALL, rows):
        device.repeat(request)
        row.append(IN_NEW_SERVICE)


def hold_first_file(device, request):
    """Asks for an installation, which waits for the package manager; returns that."""
    manager = device.peer(MANAGER)
    device.set_up(request)
    manager.hang('Install', 1)
    device.ask(request).wait()
    device.wait_signals('removalFinished', len(usual(request).removed))
    manager.wait_call('Install')
    return manager


def test_absent_system_bus(installations, installation_table):
    device = installations
    device.kill_bus('system')
    device.start_service()
    rows = begin_all(installation_table, 'system bus', 'absent', '9')
    for request, row in zip(ALL, rows):
        row += install(device, request, without_system_bus(request))
    device.start_bus('system')
    repeat_all(device, rows)


def test_system_bus_dies_and_returns(installations, installation_table):
    """A service that has lost the bus does not look for another one."""
    device = installations
    dies, returns = (begin_all(installation_table, 'system bus', fault, '9')
                     for fault in ('dies after the reply', 'returns'))
    for request, row in zip(ALL, dies):
        row += install(device, request, usual(request))
    device.kill_bus('system')
    device.service.barrier()
    for request, row in zip(ALL, dies):
        install(device, request, without_system_bus(request))
        row.append('as with an absent bus')
    device.start_bus('system')
    for request, row in zip(ALL, returns):
        row += install(device, request, without_system_bus(request))
    repeat_all(device, returns)


@pytest.mark.parametrize('request_', ALL, ids=str)
def test_system_bus_dies_before_the_reply(installations, installation_table, request_):
    device, outcome = installations, without_system_bus(request_, lost_after=1)
    row = installation_table.begin(str(request_), 'system bus', 'Install', 'dies before the reply', '9')
    hold_first_file(device, request_)

    device.kill_bus('system')

    assert device.wait_end(outcome) == outcome
    row += words(outcome, request_)
    device.start_bus('system')
    device.start_service()
    device.repeat(request_)
    row.append(IN_NEW_SERVICE)


@pytest.mark.parametrize('request_', ALL, ids=str)
def test_system_bus_hangs(installations, installation_table, request_):
    device = installations
    row = installation_table.begin(str(request_), 'system bus', 'any', 'hangs', '')
    device.set_up(request_)
    device.stop_bus('system')

    asked = device.ask(request_)

    assert device.told() == []
    device.resume_bus('system')
    asked.wait()
    assert device.wait_end(usual(request_)) == usual(request_)
    row += words(usual(request_), request_)
    device.repeat(request_)
    row.append(AS_USUAL)


def test_system_bus_refuses(installations, installation_table, tmp_path):
    """Its configuration does not let the user of the session call."""
    device = installations
    rules = ''.join(f'<deny send_destination="{PEERS[peer]}"/>' for peer in (MANAGER, DEVELOPER_MODE, MCE))
    configuration = tmp_path / 'bus.conf'
    configuration.write_text(SYSTEM_CONFIGURATION.read_text(encoding='utf-8').replace(
        '</busconfig>', f'<policy user="velmora">{rules}</policy></busconfig>'), encoding='utf-8')
    device.kill_bus('system')
    device.start_bus('system', configuration)
    device.start_service()
    rows = begin_all(installation_table, 'system bus', 'error')
    for request, row in zip(ALL, rows):
        row += install(device, request, usual(request).but(
            told=failed(*['AccessDenied'] * request.files), **asking(request, 0, 1), **logging(request, REJECTED, REJECTED)))

    device.kill_bus('system')
    device.start_bus('system')
    repeat_all(device, rows)


@pytest.mark.parametrize('request_', ALL, ids=str)
def test_session_bus_hangs(installations, installation_table, request_):
    device = installations
    row = installation_table.begin(str(request_), 'session bus', 'Install', 'hangs', '')
    manager = hold_first_file(device, request_)

    device.stop_bus('session')
    manager.release('Install')

    assert device.told() == []
    device.resume_bus('session')
    assert device.wait_end(usual(request_)) == usual(request_)
    row += words(usual(request_), request_)
    device.repeat(request_)
    row.append(AS_USUAL)


@pytest.mark.parametrize('request_', ALL, ids=str)
def test_session_bus_dies_before_the_reply(installations, installation_table, request_):
    """The installation goes on though nobody hears of it."""
    device = installations
    outcome = usual(request_).but(told=None, asked=1 if request_.asks else 0)
    row = installation_table.begin(str(request_), 'session bus', 'Install', 'dies before the reply', '')
    manager = hold_first_file(device, request_)

    device.kill_bus('session')
    manager.release('Install')

    manager.wait_call('Install', request_.files)
    device.wait_settled()
    assert device.outcome() == outcome
    row += ['nothing', *words(outcome, request_)[1:]]
    device.start_bus('session')
    device.start_service()
    device.repeat(request_)
    row.append(IN_NEW_SERVICE)


def test_session_bus_dies_and_returns(installations, installation_table):
    """The service lives until its idle time is over. The next bus has a service of its own."""
    device = installations
    dies, returns = (begin_all(installation_table, 'session bus', fault)
                     for fault in ('dies after the reply', 'returns'))
    for request, row in zip(ALL, dies):
        row += install(device, request, usual(request))
    device.kill_bus('session')
    device.wait_settled()
    assert device.service.alive
    device.start_bus('session')
    device.start_service()
    for request, died, returned in zip(ALL, dies, returns):
        returned += install(device, request, usual(request))
        device.repeat(request)
        died.append(IN_NEW_SERVICE)
        returned.append(AS_USUAL)


def test_service_without_session_bus(program, installation_table):
    """Nobody can ask for anything."""
    row = installation_table.begin('any', 'session bus', 'any', 'absent', '')
    program.launch(environment={'DBUS_SESSION_BUS_ADDRESS': 'unix:path=/absent'})

    assert program.wait_exit() == 1
    assert program.log() == [WARNING + 'Could not connect to session bus.']
    row += ['no service', 'nothing', f'`{program.warnings()[0]}`', 'no service']


@pytest.mark.parametrize('fault, signature, answer', [('error', '(u)', 3), ('wrong type', '(s)', 'owner')])
def test_service_without_name(system_bus, program, scripted_bus, installation_table, fault, signature, answer):
    row = installation_table.begin('any', 'session bus', 'RequestName', fault, '')
    program.launch(environment={'DBUS_SESSION_BUS_ADDRESS': scripted_bus.address})
    scripted_bus.wait_name_request()

    scripted_bus.answer_name_request(signature, answer)

    assert program.wait_exit() == 1
    assert program.log() == [NAME_IN_USE]
    row += ['no service', 'nothing', f'`{program.warnings()[0]}`', 'no service']
