# SPDX-FileCopyrightText: velmora-installationhandler contributors
# SPDX-License-Identifier: BSD-3-Clause
"""The program as a client of a service that somebody else stands in for."""

import os
import shutil

import pytest
from gi.repository import GLib
from harness.client import NAME
from harness.service import PROGRAM
from support.otherservice import OtherService

FAILURE = 'warning default: int main(int, char**) failed to request file installation:'


def accept(invocation):
    invocation.return_value(None)


def refusing(name):
    return lambda invocation: invocation.return_dbus_error(name, 'not today')


@pytest.mark.parametrize('files, sent', [
    *([[file], file] for file in (
        '/tmp/a.rpm', 'relative.rpm', '', ' ', 'file:///tmp/a%20b.rpm', 'http://example.org/a.rpm', '~/a.rpm', '%1',
        'two words.rpm', 'two\nlines.rpm', '-platform', '--help', 'install', 'größer 文.rpm', '🙂.rpm')),
    [[os.fsdecode(b'/tmp/\xff\xfea\xe4.rpm')], '/tmp/\ufffd\ufffda\ufffd.rpm'],
    [['first.rpm', 'second.rpm', 'third.rpm'], 'first.rpm'],
], ids=ascii)
def test_first_file_is_sent_as_typed(session_bus, run_client, files, sent):
    """Bytes that are no text are replaced."""
    other = OtherService(session_bus.connection, accept)

    assert run_client('install', *files) == (0, [])
    assert other.calls == [('(s)', (sent,))]


@pytest.mark.parametrize('mode, status, calls', [(0o755, 0, 1), (0o2755, 1, 0)], ids=['ordinary', 'set-group-ID'])
def test_bus_is_not_found_with_the_set_group_id_bit(session_bus, run_client, tmp_path, mode, status, calls):
    """QtDBus does not trust the environment then."""
    other = OtherService(session_bus.connection, accept)
    program = shutil.copy(PROGRAM, tmp_path)
    os.chown(program, 0, 100001)
    os.chmod(program, mode)

    assert run_client('install', '/tmp/a.rpm', program=program)[0] == status
    assert len(other.calls) == calls


def test_nothing_else_is_asked_of_the_bus(session_bus, session_monitor, run_client):
    OtherService(session_bus.connection, accept)

    run_client('install', '/tmp/a.rpm')

    (call,) = [message for message in session_monitor.messages(kind='method-call') if message.member == 'installFiles']
    assert (call.path, call.interface, call.signature) == \
        ('/org/velmoraos/installationhandler', 'org.velmoraos.installationhandler', 's')
    sent = [(message.destination, message.member) for message in session_monitor.messages(call.sender, 'method-call')]
    # How much of what it no longer listens to it still takes back at its end is up to chance.
    assert [message for message in sent if message != ('org.freedesktop.DBus', 'RemoveMatch')] == [
        ('org.freedesktop.DBus', 'Hello'),
        ('org.velmoraos.installationhandler', 'Introspect'),
        ('org.freedesktop.DBus', 'AddMatch'),
        ('org.freedesktop.DBus', 'GetNameOwner'),
        ('org.velmoraos.installationhandler', 'installFiles')]


def test_no_display_is_needed(session_bus, run_client):
    OtherService(session_bus.connection, accept)

    assert run_client('install', '/tmp/a.rpm', QT_QPA_PLATFORM='no-such-platform') == (0, [])


def test_contents_of_the_answer_do_not_matter(session_bus, session_monitor, run_client):
    """A plain answer with values that no client asked for."""
    def answer(invocation):
        reply = invocation.get_message().new_method_reply()
        reply.set_body(GLib.Variant('(bs)', (False, 'failed')))
        invocation.get_connection().send_message(reply, 0)
    OtherService(session_bus.connection, answer)

    assert run_client('install', '/tmp/a.rpm') == (0, [])
    assert 'bs' in [message.signature for message in session_monitor.messages(kind='method-return')]


@pytest.mark.parametrize('error', [
    'a.b.Refused', 'org.freedesktop.DBus.Error.AccessDenied', 'org.freedesktop.DBus.Error.NoReply',
    'org.freedesktop.DBus.Error.UnknownMethod', 'ru.quon.ZARN.Error.NoSpace',
])
def test_refused_request_fails_without_telling_why(session_bus, run_client, error):
    OtherService(session_bus.connection, refusing(error))

    assert run_client('install', '/tmp/a.rpm') == (1, [FAILURE])


def test_service_that_leaves_without_an_answer_fails(session_bus, run_client):
    connection = session_bus.connect()
    OtherService(connection, lambda _invocation: connection.close_sync())

    assert run_client('install', '/tmp/a.rpm') == (1, [FAILURE])


def test_own_service_takes_no_single_string(service, session_messages, run_client):
    """Known behaviour 1."""
    assert run_client('install', '/tmp/a.rpm') == (1, [FAILURE])

    (error,) = session_messages('error')
    assert error.error_name == 'org.freedesktop.DBus.Error.UnknownMethod'
    assert service.log() == []


def test_absent_service_fails(session_bus, run_client):
    assert session_bus.has_owner(NAME) is False
    assert run_client('install', '/tmp/a.rpm') == (1, [FAILURE])


def test_absent_service_is_started(session_bus, run_client):
    session_bus.allow_activation()

    assert run_client('install', '/tmp/a.rpm') == (1, [FAILURE])
    assert session_bus.has_owner(NAME)


def test_absent_bus_fails(run_client):
    assert run_client('install', '/tmp/a.rpm', DBUS_SESSION_BUS_ADDRESS='unix:path=/absent') == (1, [FAILURE])
