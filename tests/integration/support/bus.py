# SPDX-FileCopyrightText: velmora-installationhandler contributors
# SPDX-License-Identifier: BSD-3-Clause
"""Private message buses."""

import os
import shutil
from pathlib import Path

from gi.repository import Gio, GLib

from .processes import DEADLINE_S

SANDBOX = Path(__file__).resolve().parents[3] / 'sandbox'
SYSTEM_ADDRESS = 'unix:path=/run/dbus/system_bus_socket'
SESSION_ADDRESS = 'unix:path=/run/test-session-bus'
SERVICE_FILE = Path('/usr/share/dbus-1/services/org.velmoraos.installationhandler.service')
ACTIVATION_FOLDER = Path('/run/test-session-services')

DAEMON = ('org.freedesktop.DBus', '/org/freedesktop/DBus', 'org.freedesktop.DBus')


class Bus:
    """A bus daemon that only this test knows, and connections to it."""

    def __init__(self, name, address, configuration, processes, environment=None):
        self.address = address
        self._processes = processes
        socket = Path(address.partition('=')[2])
        socket.parent.mkdir(parents=True, exist_ok=True)
        socket.unlink(missing_ok=True)
        command = ['dbus-daemon', f'--config-file={configuration}', '--nofork', '--nopidfile', '--nosyslog',
                   '--print-address']
        self.process = processes.start(name, command, environment)
        processes.wait_until(lambda: address in self.process.text, f'start of the {name}')
        self.connection = self.connect()

    @classmethod
    def system(cls, processes):
        """A system bus at the standard path, open to everybody."""
        return cls('system bus', SYSTEM_ADDRESS, SANDBOX / 'system-bus.conf', processes)

    @classmethod
    def session(cls, processes, environment):
        """A session bus without activation; its services would get this environment."""
        shutil.rmtree(ACTIVATION_FOLDER, ignore_errors=True)
        ACTIVATION_FOLDER.mkdir()
        return cls('session bus', SESSION_ADDRESS, Path(__file__).with_name('session-bus.conf'), processes,
                   {**environment, 'DBUS_SESSION_BUS_ADDRESS': SESSION_ADDRESS})

    def connect(self):
        """One more connection, with a name of its own on the bus."""
        flags = Gio.DBusConnectionFlags.AUTHENTICATION_CLIENT | Gio.DBusConnectionFlags.MESSAGE_BUS_CONNECTION
        return Gio.DBusConnection.new_for_address_sync(self.address, flags, None, None)

    def allow_activation(self):
        """From now on the bus knows the service's installed activation file."""
        os.symlink(SERVICE_FILE, ACTIVATION_FOLDER / SERVICE_FILE.name)
        self.ask('ReloadConfig', '()')

    def ask(self, method, signature, *arguments):
        """The bus daemon's own answer."""
        return self.connection.call_sync(*DAEMON, method, GLib.Variant(signature, arguments), None,
                                         Gio.DBusCallFlags.NONE, 20000, None).unpack()

    def has_owner(self, name):
        """Whether somebody owns a name now."""
        return self.ask('NameHasOwner', '(s)', name)[0]

    def wait_owner(self, name, owned=True, seconds=DEADLINE_S):
        """Waits until a name is on the bus, or has left it."""
        changes = self.connection.signal_subscribe(DAEMON[0], DAEMON[2], 'NameOwnerChanged', DAEMON[1], name,
                                                   Gio.DBusSignalFlags.NONE, lambda *_: None)
        try:
            self._processes.wait_until(lambda: self.has_owner(name) == owned,
                                       f'{name} {"on" if owned else "to leave"} the bus', seconds)
        finally:
            self.connection.signal_unsubscribe(changes)

    def name_of_process(self, pid):
        """The unique name of a process on this bus; None when it is not there, or the bus is not."""
        if not self.process.alive:
            return None
        for name in self.ask('ListNames', '()')[0]:
            if name.startswith(':') and self._process_of(name) == pid:
                return name
        return None

    def _process_of(self, name):
        try:
            return self.ask('GetConnectionUnixProcessID', '(s)', name)[0]
        except GLib.Error:
            return None

    def ping(self, name):
        """A round trip to a connection; everything it sent before has then passed the bus."""
        self.connection.call_sync(name, '/', 'org.freedesktop.DBus.Peer', 'Ping', None, None,
                                  Gio.DBusCallFlags.NO_AUTO_START, 20000, None)
