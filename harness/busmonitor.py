# SPDX-FileCopyrightText: velmora-installationhandler contributors
# SPDX-License-Identifier: BSD-3-Clause
"""A monitor of what goes over a bus."""

import itertools
from typing import NamedTuple

from gi.repository import Gio, GLib

from .bus import DAEMON
from .processes import DEADLINE

MARKER_INTERFACE = 'org.velmoraos.harness.Marker'


class Message(NamedTuple):
    """A message as the bus passed it on. `kind` is "method-call", "method-return", "signal" or "error"."""

    kind: str
    sender: str
    destination: str
    path: str
    interface: str
    member: str
    signature: str
    arguments: tuple
    error_name: str
    serial: int
    reply_serial: int


class BusMonitor:
    """Records all messages on one bus, from all programs to all, answered or not.

    Stand-ins stamp calls when they handle them; only the bus knows in which order a program has sent
    messages to different receivers, and that it has sent one to a receiver which is not there.
    """

    def __init__(self, bus, processes, record=None):
        """Appends to the list `record`, which several monitors may share."""
        self._bus = bus
        self._processes = processes
        self._messages = [] if record is None else record
        self._markers = itertools.count()
        self._monitor = bus.connect()
        self._monitor.call_sync('org.freedesktop.DBus', '/org/freedesktop/DBus', 'org.freedesktop.DBus.Monitoring',
                                'BecomeMonitor', GLib.Variant('(asu)', ([], 0)), None, Gio.DBusCallFlags.NONE,
                                DEADLINE * 1000, None)
        self._filter = self._monitor.add_filter(self._passed)

    def close(self):
        """Leaves the bus, which then need not copy its messages any more."""
        self._monitor.remove_filter(self._filter)
        self._monitor.close_sync(None)

    def messages(self, sender=None, kind=None):
        """All messages up to now, of one sender's unique name or of all."""
        self.settle()
        return [message for message in self._messages if message.interface != MARKER_INTERFACE
                and sender in (None, message.sender) and kind in (None, message.kind)]

    def calls(self, sender):
        """The method calls of a sender to other programs, but not to the bus itself, nor introspection."""
        return [message for message in self.messages(sender, 'method-call')
                if message.destination != DAEMON[0] and message.interface != 'org.freedesktop.DBus.Introspectable']

    def settle(self):
        """Waits until the monitor has seen all that the bus passed on before."""
        name = self._bus.connection.get_unique_name()
        member = f'Marker{next(self._markers)}'
        self._bus.connection.emit_signal(name, '/', MARKER_INTERFACE, member, None)
        self._processes.wait_until(lambda: any((message.sender, message.member) == (name, member)
                                               for message in reversed(self._messages)), 'the monitor to catch up')

    def _passed(self, _connection, message, incoming):
        """Runs in the connection's own thread, and consumes the message: a monitor must not answer."""
        if not incoming:
            return message
        body = message.get_body()
        self._messages.append(Message(
            message.get_message_type().value_nick, message.get_sender(), message.get_destination(), message.get_path(),
            message.get_interface(), message.get_member(), message.get_signature(), body.unpack() if body else (),
            message.get_error_name(), message.get_serial(), message.get_reply_serial()))
        GLib.MainContext.default().wakeup()
        return None
