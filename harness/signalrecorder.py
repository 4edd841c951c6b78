# SPDX-FileCopyrightText: velmora-installationhandler contributors
# SPDX-License-Identifier: BSD-3-Clause
"""The signals of the service, recorded from before the first call."""

from typing import NamedTuple

from gi.repository import Gio

from .client import INTERFACE, PATH
from .processes import DEADLINE


class Signal(NamedTuple):
    """A signal as it was on the wire."""

    name: str
    signature: str
    arguments: tuple


class SignalRecorder:
    """Remembers every signal of the service's interface, in order."""

    def __init__(self, connection, processes):
        self.all = []
        self._processes = processes
        connection.signal_subscribe(None, INTERFACE, None, PATH, None, Gio.DBusSignalFlags.NONE, self._received)
        # Signals are routed to this connection from the moment the bus has taken the subscription.
        connection.call_sync('org.freedesktop.DBus', '/', 'org.freedesktop.DBus.Peer', 'Ping', None, None,
                             Gio.DBusCallFlags.NONE, DEADLINE * 1000, None)

    def names(self):
        """The names of all signals so far."""
        return [signal.name for signal in self.all]

    def arguments(self, name):
        """The arguments of each signal of a name."""
        return [signal.arguments for signal in self.all if signal.name == name]

    def wait(self, name, count=1, seconds=DEADLINE):
        """Waits for the signal number `count` of a name, and returns its arguments."""
        self._processes.wait_until(lambda: len(self.arguments(name)) >= count, f'signal {name} number {count}', seconds)
        return self.arguments(name)[count - 1]

    def _received(self, _connection, _sender, _path, _interface, name, arguments):
        self.all.append(Signal(name, arguments.get_type_string()[1:-1], arguments.unpack()))
