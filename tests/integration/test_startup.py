# SPDX-FileCopyrightText: velmora-installationhandler contributors
# SPDX-License-Identifier: BSD-3-Clause
"""The service's way onto the bus, and the command lines that start it."""

import pytest
from harness.client import INTERFACE, NAME, PATH

NAME_IN_USE = 'warning default: Service name is already in use: org.velmoraos.installationhandler'
ASKED_BEFORE = [
    ('com.nokia.mce', 'get_display_status'), ('ru.quon.developermode', 'Introspect'), ('ru.quon.ZARN', 'Introspect'),
    ('ru.quon.RuntimeManager', 'Introspect'),
]


def asked(monitor):
    """The calls of other programs than the bus itself."""
    return [(message.destination, message.member) for message in monitor.messages(kind='method-call')
            if message.destination != 'org.freedesktop.DBus']


def test_name_is_asked_for_once_and_not_for_others_to_take(program, session_bus, session_messages):
    program.start()

    requests = [message.arguments for message in session_messages() if message.member == 'RequestName']
    do_not_queue = 4
    assert requests == [('org.velmoraos.installationhandler', do_not_queue)]
    replace_existing, exists = 2, 3
    assert session_bus.ask('RequestName', '(su)', NAME, replace_existing | do_not_queue) == (exists,)
    program.barrier()
    assert program.log() == []


def test_object_answers_what_was_asked_before_the_name_was_there(system_bus, program, scripted_bus):
    program.launch(environment={'DBUS_SESSION_BUS_ADDRESS': scripted_bus.address})
    scripted_bus.wait_name_request()
    call = scripted_bus.start_call(PATH, INTERFACE, 'installFiles', '(as)', [])

    scripted_bus.grant_name()

    assert call.wait() == ()


def test_proxies_are_made_before_the_name(processes, session_bus, session_monitor, standins, program):
    """The proxy of the launcher model comes first."""
    developer_mode = standins.start('developer-mode')
    developer_mode.hang('Introspect')

    program.launch()
    processes.wait_until(lambda: 'Introspect hangs' in developer_mode.process.text, 'the service to look at a peer')
    assert not session_bus.has_owner(NAME)
    assert asked(session_monitor) == [('org.orrinmobile.rozzle', 'Introspect')]

    developer_mode.release('Introspect')
    session_bus.wait_owner(NAME)


def test_name_that_is_refused_ends_the_service(system_bus, program, scripted_bus):
    program.launch(environment={'DBUS_SESSION_BUS_ADDRESS': scripted_bus.address})
    assert scripted_bus.wait_name_request()[0] == 'org.velmoraos.installationhandler'

    scripted_bus.refuse_name()

    assert program.wait_exit() == 1
    assert program.log() == [NAME_IN_USE]


def test_second_service_gives_up(service, second_program, session_bus, client, signals, system_monitor):
    """It introspects its peers first."""
    owner = session_bus.ask('GetNameOwner', '(s)', NAME)

    assert second_program.launch().wait_exit() == 1

    assert second_program.log() == [NAME_IN_USE]
    assert asked(system_monitor) == ASKED_BEFORE
    assert session_bus.ask('GetNameOwner', '(s)', NAME) == owner
    client.install([])
    assert signals.wait('installFinished') == (True, '')
    assert service.log() == []


def test_service_without_session_bus_gives_up(program, system_monitor):
    """It introspects its peers on the other bus first."""
    program.launch(environment={'DBUS_SESSION_BUS_ADDRESS': 'unix:path=/absent'})

    assert program.wait_exit() == 1
    assert program.log() == ['warning default: Could not connect to session bus.']
    assert asked(system_monitor) == ASKED_BEFORE


def test_call_starts_the_service(session_bus, client, signals):
    session_bus.allow_activation()
    assert not session_bus.has_owner(NAME)

    client.call('installFiles', '(as)', [])

    assert signals.wait('installFinished') == (True, '')
    assert session_bus.has_owner(NAME)


@pytest.mark.parametrize('arguments', [
    [], ['install'], ['INSTALL', '/tmp/a.rpm'], ['Install', '/tmp/a.rpm', '/tmp/b.rpm'], ['install ', '/tmp/a.rpm'],
    ['installs', '/tmp/a.rpm'], ['instal', '/tmp/a.rpm'], ['--install', '/tmp/a.rpm'], ['', '/tmp/a.rpm'],
    ['/tmp/a.rpm', 'install'], ['/tmp/a.rpm', 'install', '/tmp/b.rpm'],
], ids=str)
def test_service_is_started_by(program, install_and_wait, arguments):
    program.start(arguments)

    assert install_and_wait([]) == (True, '')
    assert program.log() == []


def test_toolkit_takes_its_options(program):
    program.start(['-platform', 'offscreen', 'install', '/tmp/a.rpm'], {'QT_QPA_PLATFORM': 'no-such-platform'})

    program.barrier()
    assert program.log() == []
