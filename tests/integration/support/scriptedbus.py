# SPDX-FileCopyrightText: velmora-installationhandler contributors
# SPDX-License-Identifier: BSD-3-Clause
"""A session bus with one member, which can be made to wait for its name."""

from pathlib import Path

from gi.repository import Gio, GLib
from harness.client import PendingCall

DAEMON = 'org.freedesktop.DBus'
SOCKET = Path('/run/user/100000/scripted-bus')
MEMBER = ':1.1'


class ScriptedBus:
    """Answers its one member as a bus does which has no other members.

    A real bus answers a request for a name at once. Here it stays in `name_request` until `grant_name` or
    `refuse_name`.
    """

    def __init__(self, processes):
        self.address = f'unix:path={SOCKET}'
        self.member = None
        self.name_request = None
        # The signature and values of the bus's own answers, by method.
        self.answers = {'Hello': ('(s)', MEMBER), 'AddMatch': ('()',), 'RemoveMatch': ('()',)}
        self._processes = processes
        SOCKET.unlink(missing_ok=True)
        self._server = Gio.DBusServer.new_sync(self.address, Gio.DBusServerFlags.NONE, Gio.dbus_generate_guid(), None,
                                               None)
        SOCKET.chmod(0o666)
        self._server.connect('new-connection', self._connected)
        self._server.start()

    def wait_name_request(self):
        """Waits until the member asks for a name; returns the name and the flags."""
        self._processes.wait_until(lambda: self.name_request, 'a request for a name')
        return self.name_request.get_body().unpack()

    def grant_name(self):
        """The member becomes the owner of the name."""
        self.answer_name_request('(u)', 1)

    def refuse_name(self):
        """The member is told that the name has another owner."""
        self.answer_name_request('(u)', 3)

    def answer_name_request(self, signature, answer):
        """Answers the request for a name with one value."""
        self._reply(self.name_request, signature, answer)

    def start_call(self, path, interface, method, signature='()', *arguments):
        """Calls the member; returns an object with `answered` and `wait()`."""
        pending = PendingCall(method, self._processes)
        self.member.call(None, path, interface, method, GLib.Variant(signature, arguments), None,
                         Gio.DBusCallFlags.NONE, 20000, None, pending.finish)
        return pending

    def stop(self):
        """Ends the bus."""
        self._server.stop()
        if self.member and not self.member.is_closed():
            self.member.close_sync()

    def _connected(self, _server, connection):
        self.member = connection
        connection.add_filter(self._received)
        return True

    def _received(self, connection, message, incoming):
        """Runs in the connection's own thread."""
        if not incoming or message.get_message_type() != Gio.DBusMessageType.METHOD_CALL:
            return message
        if message.get_member() == 'RequestName':
            self.name_request = message
            GLib.MainContext.default().wakeup()
        elif message.get_destination() == DAEMON and message.get_member() in self.answers:
            self._reply(message, *self.answers[message.get_member()])
        else:
            self._send(
                message.new_method_error_literal('org.freedesktop.DBus.Error.ServiceUnknown', 'nobody else here'))
        return None

    def _reply(self, message, signature, *values):
        reply = message.new_method_reply()
        reply.set_body(GLib.Variant(signature, values))
        self._send(reply)

    def _send(self, reply):
        reply.set_sender(DAEMON)
        self.member.send_message(reply, Gio.DBusSendMessageFlags.NONE)
