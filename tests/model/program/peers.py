# SPDX-FileCopyrightText: velmora-installationhandler contributors
# SPDX-License-Identifier: BSD-3-Clause
"""The services that the program calls: connections of this process, which come and go within a millisecond."""

import threading
from typing import NamedTuple

from gi.repository import Gio, GLib
from model.answers import ANSWERED, METHODS, PEERS, TRANSACTION, Answers
from model.steps import ENDS, ERRORS, FOUND, REPORTED_ERRORS

INFO_INSTALLED, ERROR_NOT_FOUND = 1, 8
NO_QUEUE = 4

# The types of the answers that have a value.
TYPES = {'IsSilentInstallationEnabled': '(b)', 'removeFile': '(b)', 'CreateTransaction': '(o)',
         'get_display_status': '(s)', 'Notify': '(u)', 'GetPackage': '(a{ss})'}
WRONG_TYPE = GLib.Variant('(a{sv})', ({},))

# Calls that the libraries of the service make by themselves, with their answers.
HOUSEKEEPING = {
    'Introspect': GLib.Variant('(s)', ('<node/>',)),
    'GetAll': GLib.Variant('(a{sv})', ({},)),
    'SetHints': None,
}


class WaitingCall(NamedTuple):
    """A call that has not been answered."""

    method: str
    message: Gio.DBusMessage
    connection: Gio.DBusConnection
    held: bool


class Peers:
    """All peers, who answer every call at first. Calls arrive in a thread of GLib's, which answers most of them."""

    def __init__(self, buses):
        """`buses` are the running "system" and "session" bus."""
        self._buses = buses
        self._lock = threading.Lock()
        self._held = set()
        self._waiting = []
        self._given_up = []
        self._answers_all = True
        self._connections = {}
        self.answers = Answers()
        for peer in PEERS:
            self.come(peer)

    def close(self):
        """All peers go."""
        for peer in list(self._connections):
            self.die(peer)

    def let_calls_wait(self):
        """From now on calls that do not block wait for an answer."""
        self._answers_all = False

    def come(self, peer):
        """The peer appears on its bus."""
        connection = self._buses[PEERS[peer].bus].connect()
        connection.add_filter(self._received)
        connection.call_sync('org.freedesktop.DBus', '/org/freedesktop/DBus', 'org.freedesktop.DBus', 'RequestName',
                             GLib.Variant('(su)', (PEERS[peer].name, NO_QUEUE)), None, Gio.DBusCallFlags.NONE, -1, None)
        self._connections[peer] = connection

    def die(self, peer):
        """The peer is gone as if its process had been killed."""
        connection = self._connections.pop(peer)
        with self._lock:
            self._waiting = [call for call in self._waiting if call.connection != connection]
        self._given_up = [call for call in self._given_up if call.connection != connection]
        connection.get_stream().get_socket().shutdown(True, True)
        self._buses[PEERS[peer].bus].wait_owner(PEERS[peer].name, owned=False)

    def hold(self, method):
        """The next call of a method waits for an answer."""
        with self._lock:
            self._held.add(method)

    def waiting(self):
        """The calls that have not been answered, in the order in which each peer has received them."""
        with self._lock:
            return list(self._waiting)

    def blocking(self):
        """Whether the service waits for an answer."""
        return any(METHODS[call.method].blocks for call in self.waiting())

    def next_to_answer(self):
        """The oldest call that neither blocks nor waits for a step; None if there is none."""
        return next((call for call in self.waiting()
                     if call.method in ANSWERED and not METHODS[call.method].blocks and not call.held), None)

    def find(self, method, number):
        """One of the calls of a method that wait, 0 being the oldest."""
        return [call for call in self.waiting() if call.method == method][number]

    def answer(self, call, manner):
        """Answers a call that waits."""
        self._forget(call)
        self._send_reply(call, manner)

    def give_up(self, call):
        """The service does not wait for a call any more."""
        self._forget(call)
        self._given_up.append(call)

    def answer_late(self, number, manner):
        """Answers one of the calls that the service does not wait for any more, and returns it."""
        call = self._given_up.pop(number)
        self._send_reply(call, manner)
        return call

    def report(self, number, event):
        """PackageKit reports something of a transaction."""
        if event in FOUND:
            member, body = 'Package', GLib.Variant('(uss)', (INFO_INSTALLED, FOUND[event], ''))
        elif event in REPORTED_ERRORS:
            member, body = 'ErrorCode', GLib.Variant('(us)', (ERROR_NOT_FOUND, REPORTED_ERRORS[event]))
        else:
            member, body = 'Finished', GLib.Variant('(uu)', (ENDS[event], 0))
        self._connections['PackageKit'].emit_signal(None, transaction_path(number), TRANSACTION, member, body)

    def show(self, state):
        """MCE says what the display does."""
        self.answers.display = state
        self._connections['MCE'].emit_signal(None, '/com/nokia/mce/signal', 'com.nokia.mce.signal',
                                             'display_status_ind', GLib.Variant('(s)', (state,)))

    def ping(self, peer, receiver):
        """Returns when a receiver on the peer's bus has taken in all that the peer has sent to it."""
        self._connections[peer].call_sync(receiver, '/', 'org.freedesktop.DBus.Peer', 'Ping', None, None,
                                          Gio.DBusCallFlags.NO_AUTO_START, -1, None)

    def _forget(self, call):
        with self._lock:
            self._waiting.remove(call)

    def _send_reply(self, call, manner):
        send(call.connection, self._reply(call.message, manner))

    def _received(self, connection, message, incoming):
        """Runs in GLib's thread."""
        method = message.get_member()
        if not incoming or message.get_message_type() != Gio.DBusMessageType.METHOD_CALL:
            return message
        if method in HOUSEKEEPING:
            send(connection, reply_with(message, HOUSEKEEPING[method]))
        elif method in METHODS:
            self._take(method, message, connection)
        else:
            return message
        return None

    def _take(self, method, message, connection):
        with self._lock:
            held = method in self._held
            self._held.discard(method)
            waits = held or not (METHODS[method].blocks or self._answers_all)
            if waits:
                self._waiting.append(WaitingCall(method, message, connection, held))
        if waits:
            GLib.MainContext.default().wakeup()
        else:
            send(connection, self._reply(message, 'usual'))

    def _reply(self, message, manner):
        if manner in ERRORS:
            return message.new_method_error_literal(*ERRORS[manner])
        if manner == 'wrong type':
            return reply_with(message, WRONG_TYPE)
        method, body = message.get_member(), message.get_body()
        reply = self.answers.usual(method, body.unpack() if body else ())
        if reply.is_error:
            return message.new_method_error_literal(reply.error_name, reply.error_text)
        value = transaction_path(reply.value) if method == 'CreateTransaction' else reply.value
        return reply_with(message, GLib.Variant(TYPES[method], (value,)) if method in TYPES else None)


def transaction_path(number):
    return f'/{number}_model'


def reply_with(message, body):
    reply = message.new_method_reply()
    if body:
        reply.set_body(body)
    return reply


def send(connection, message):
    connection.send_message(message, Gio.DBusSendMessageFlags.NONE)
