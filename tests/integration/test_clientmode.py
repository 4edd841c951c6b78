# SPDX-FileCopyrightText: velmora-installationhandler contributors
# SPDX-License-Identifier: BSD-3-Clause
"""The program as a client of a service that somebody else stands in for."""

import pytest
from gi.repository import Gio, GLib
from support.client import INTERFACE, NAME, PATH
from support.service import PROGRAM

FAILURE = 'warning default: int main(int, char**) failed to request file installation:'

DESCRIPTION = f'''<node><interface name="{INTERFACE}">
    <method name="installFiles"><arg type="s" direction="in"/></method>
</interface></node>'''


class OtherService:
    """Owns the service's name and answers installFiles as told."""

    def __init__(self, connection, answer):
        self.calls = []
        self._answer = answer
        description = Gio.DBusNodeInfo.new_for_xml(DESCRIPTION)
        connection.register_object(PATH, description.interfaces[0], self._called)
        connection.call_sync('org.freedesktop.DBus', '/', 'org.freedesktop.DBus', 'RequestName',
                             GLib.Variant('(su)', (NAME, 4)), None, Gio.DBusCallFlags.NONE, 20000, None)

    def _called(self, _connection, _sender, _path, _interface, _method, arguments, invocation):
        self.calls.append((arguments.get_type_string(), arguments.unpack()))
        self._answer(invocation)


def accept(invocation):
    invocation.return_value(None)


def refuse(invocation):
    invocation.return_dbus_error('a.b.Refused', 'not today')


@pytest.fixture
def run_client(processes, environment):
    """Runs the program with arguments; returns its exit status and its lines."""
    def run(*arguments):
        process = processes.start('client', [PROGRAM, *arguments], environment)
        return processes.wait_end(process), process.lines()
    return run


def test_accepted_request_succeeds(session_bus, run_client):
    other = OtherService(session_bus.connection, accept)

    assert run_client('install', 'file:///tmp/a%20b.rpm', 'ignored.rpm') == (0, [])
    assert other.calls == [('(s)', ('file:///tmp/a%20b.rpm',))]


def test_refused_request_fails_without_telling_why(session_bus, run_client):
    OtherService(session_bus.connection, refuse)

    assert run_client('install', '/tmp/a.rpm') == (1, [FAILURE])


def test_own_service_takes_no_single_string(service, run_client):
    assert run_client('install', '/tmp/a.rpm') == (1, [FAILURE])
    assert service.alive


def test_absent_service_fails(session_bus, run_client):
    assert session_bus.has_owner(NAME) is False
    assert run_client('install', '/tmp/a.rpm') == (1, [FAILURE])
