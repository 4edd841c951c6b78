# SPDX-FileCopyrightText: velmora-installationhandler contributors
# SPDX-License-Identifier: BSD-3-Clause
"""Message buses: those of the device, and private ones."""

import os
import shutil
from pathlib import Path

from gi.repository import Gio, GLib

from .processes import DEADLINE

SYSTEM_CONFIGURATION = Path(__file__).parents[1] / 'sandbox/system-bus.conf'
SESSION_CONFIGURATION = Path(__file__).with_name('session-bus.conf')
SYSTEM_ADDRESS = 'unix:path=/run/dbus/system_bus_socket'
SESSION_ADDRESS = 'unix:path=/run/user/100000/bus'
SERVICE_FILE = Path('/usr/share/dbus-1/services/org.velmoraos.installationhandler.service')
ACTIVATION_FOLDER = Path('/run/test-session-services')

ROOT, SESSION_USER = 0, 100000

DAEMON = ('org.freedesktop.DBus', '/org/freedesktop/DBus', 'org.freedesktop.DBus')
FLAGS = Gio.DBusConnectionFlags.AUTHENTICATION_CLIENT | Gio.DBusConnectionFlags.MESSAGE_BUS_CONNECTION


class Bus:
    """A running message bus and a connection to it.

    This process runs as root, whom the session bus refuses. It therefore connects there as the session's user. The service
    still sees a caller of root's, to whom all of its methods are open.
    """

    def __init__(self, address, user, processes):
        """`user` is the id of the user to connect as."""
        self.address = address
        self._user = user
        self._processes = processes
        self._names = {}
        self.connection = self.connect()

    @classmethod
    def device_system(cls, processes):
        """The system bus that the device has started."""
        return cls(SYSTEM_ADDRESS, ROOT, processes)

    @classmethod
    def device_session(cls, processes):
        """The session bus that the device has started."""
        return cls(SESSION_ADDRESS, SESSION_USER, processes)

    @property
    def alive(self):
        """Whether the bus can still be asked."""
        return not self.connection.is_closed()

    def connect(self):
        """One more connection, with a name of its own on the bus."""
        os.seteuid(self._user)
        try:
            return Gio.DBusConnection.new_for_address_sync(self.address, FLAGS, None, None)
        finally:
            os.seteuid(ROOT)

    def ask(self, method, signature, *arguments):
        """The answer of the bus daemon itself."""
        return self.connection.call_sync(*DAEMON, method, GLib.Variant(signature, arguments), None,
                                         Gio.DBusCallFlags.NONE, DEADLINE * 1000, None).unpack()

    def has_owner(self, name):
        """Whether a name has an owner now."""
        return self.ask('NameHasOwner', '(s)', name)[0]

    def wait_owner(self, name, owned=True, seconds=DEADLINE):
        """Waits until a name is on the bus, or has left it."""
        changes = self.connection.signal_subscribe(DAEMON[0], DAEMON[2], 'NameOwnerChanged', DAEMON[1], name,
                                                   Gio.DBusSignalFlags.NONE, lambda *_: None)
        try:
            self._processes.wait_until(lambda: self.has_owner(name) == owned,
                                       f'{name} {"on" if owned else "to leave"} the bus', seconds)
        finally:
            self.connection.signal_unsubscribe(changes)

    def process_of(self, name):
        """The id of the process that owns a name; None when nobody does."""
        try:
            return self.ask('GetConnectionUnixProcessID', '(s)', name)[0]
        except GLib.Error:
            return None

    def name_of_process(self, pid):
        """The unique name of a process on this bus; None when it is not there, or the bus is not."""
        if not self.alive:
            return None
        # The bus gives no unique name twice, so one question is enough later on.
        if not self._names.get(pid) or self.process_of(self._names[pid]) != pid:
            self._names[pid] = next((name for name in self.ask('ListNames', '()')[0]
                                     if name.startswith(':') and self.process_of(name) == pid), None)
        return self._names[pid]

    def ping(self, name):
        """A round trip to a connection; everything it sent before has then passed the bus."""
        self.connection.call_sync(name, '/', 'org.freedesktop.DBus.Peer', 'Ping', None, None,
                                  Gio.DBusCallFlags.NO_AUTO_START, DEADLINE * 1000, None)


class PrivateBus(Bus):
    """A bus daemon of its own, which only the caller knows."""

    def __init__(self, address, user, process, processes):
        """`process` is the daemon, which says its address when it can be called."""
        self.process = process
        processes.wait_until(lambda: address in process.text, f'start of the {process.name}')
        super().__init__(address, user, processes)

    @classmethod
    def system(cls, processes, configuration=SYSTEM_CONFIGURATION):
        """A system bus at the standard path, open to everybody, or as another configuration file says."""
        process = processes.start('system bus', daemon(SYSTEM_ADDRESS, configuration))
        return cls(SYSTEM_ADDRESS, ROOT, process, processes)

    @classmethod
    def session(cls, processes, environment):
        """A session bus without activation; its services would get this environment."""
        shutil.rmtree(ACTIVATION_FOLDER, ignore_errors=True)
        ACTIVATION_FOLDER.mkdir()
        process = processes.start_in_session('session bus', daemon(SESSION_ADDRESS, SESSION_CONFIGURATION), environment)
        return cls(SESSION_ADDRESS, SESSION_USER, process, processes)

    @property
    def alive(self):
        return self.process.alive

    def allow_activation(self):
        """From now on the bus knows the service's installed activation file."""
        os.symlink(SERVICE_FILE, ACTIVATION_FOLDER / SERVICE_FILE.name)
        self.ask('ReloadConfig', '()')


def daemon(address, configuration):
    """The command of a bus daemon, which takes the place of an older one."""
    Path(address.partition('=')[2]).unlink(missing_ok=True)
    return ['dbus-daemon', f'--config-file={configuration}', '--nofork', '--nopidfile', '--nosyslog', '--print-address']
