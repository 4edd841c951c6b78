# SPDX-FileCopyrightText: velmora-installationhandler contributors
# SPDX-License-Identifier: BSD-3-Clause
"""The messages on the buses while the installation handler removes something."""

import queue
import time

from gi.repository import Gio, GLib

from steps.program import DEADLINE
from steps.progress import Failure

INTERFACES = {
    Gio.BusType.SESSION: ('org.velmoraos.installationhandler', 'org.orrinmobile.rozzle.LauncherModel'),
    Gio.BusType.SYSTEM: ('ru.quon.ZARN', 'ru.quon.ZARN.Hooks', 'com.zelka.zindro',
                         'org.freedesktop.PackageKit.Transaction'),
}

# PackageKit tells its progress in many words.
METHODS_OF_PACKAGEKIT = ('Resolve', 'SearchFiles', 'RemovePackages')
FLAGS = Gio.DBusConnectionFlags.AUTHENTICATION_CLIENT | Gio.DBusConnectionFlags.MESSAGE_BUS_CONNECTION


class BusMonitor:
    """Records the requests to the back ends, and the signals of the service, from now on."""

    def __init__(self):
        self._messages = queue.SimpleQueue()
        self._connections = [self._monitor(bus, interfaces) for bus, interfaces in INTERFACES.items()]

    def wait_for(self, *members):
        """Waits until all these methods and signals have passed a bus; all that has: [(member, its values as text)]."""
        end = time.monotonic() + DEADLINE
        messages = []
        missing = set(members)
        while missing:
            try:
                messages.append(self._messages.get(timeout=max(0, end - time.monotonic())))
            except queue.Empty:
                raise Failure(f'no {", ".join(sorted(missing))} on the buses within {DEADLINE} seconds') from None
            missing.discard(messages[-1][0])
        return messages

    def _monitor(self, bus, interfaces):
        connection = Gio.DBusConnection.new_for_address_sync(Gio.dbus_address_get_for_bus_sync(bus), FLAGS, None, None)
        rules = [f"interface='{interface}'" for interface in interfaces]
        connection.call_sync('org.freedesktop.DBus', '/org/freedesktop/DBus', 'org.freedesktop.DBus.Monitoring',
                             'BecomeMonitor', GLib.Variant('(asu)', (rules, 0)), None, Gio.DBusCallFlags.NONE,
                             DEADLINE * 1000, None)
        connection.add_filter(self._filter)
        return connection

    def _filter(self, _connection, message, incoming):
        """Runs in the connection's own thread, and consumes the message: a monitor must not answer."""
        interface, member = message.get_interface(), message.get_member()
        if not incoming:
            return message
        if interface in sum(INTERFACES.values(), ()) and (
                'PackageKit' not in interface or member in METHODS_OF_PACKAGEKIT):
            values = message.get_body()
            self._messages.put((member, ', '.join(values.get_child_value(index).print_(False)
                                                  for index in range(values.n_children()))))
        return None
