# SPDX-FileCopyrightText: velmora-installationhandler contributors
# SPDX-License-Identifier: BSD-3-Clause
"""systemd's user manager, and the session bus that it starts."""

import shutil
from pathlib import Path

from gi.repository import Gio, GLib
from standin.names import SESSION

from .bus import ACTIVATION_FOLDER, SERVICE_FILE, SESSION_CONFIGURATION, Bus
from .processes import DEADLINE

RUNTIME = Path('/run/user/100000')
# The option --cgroup of sandbox/device makes this group.
ENTER_CGROUP = 'echo $$ >/sys/fs/cgroup/velmora/cgroup.procs && exec "$@"'
# The manager finds its bus itself. The variable would say that another program runs the bus.
SYSTEMD = ('env', '--unset=DBUS_SESSION_BUS_ADDRESS', '/usr/lib/systemd/systemd', '--user',
           '--default-standard-output=inherit', '--default-standard-error=inherit')

# The units of the bus, as a distribution has them. The file says that the socket can be connected to.
LISTENS = RUNTIME / 'bus-listens'
UNIT_FOLDER = Path('/run/systemd/user')
UNITS = {
    'sockets.target.d/dbus.conf': '[Unit]\nWants=dbus.socket\n',
    'dbus.socket': f'[Socket]\nListenStream=%t/bus\nExecStartPost=touch {LISTENS}\n',
    'dbus.service': '[Unit]\nRequires=dbus.socket\n[Service]\nType=notify\n'
                    f'ExecStart=/usr/bin/dbus-daemon --config-file={SESSION_CONFIGURATION} --address=systemd: '
                    '--nofork --nopidfile --nosyslog --systemd-activation\n',
}

NAME, PATH, MANAGER = 'org.freedesktop.systemd1', '/org/freedesktop/systemd1', 'org.freedesktop.systemd1.Manager'
UNIT, SERVICE = 'org.freedesktop.systemd1.Unit', 'org.freedesktop.systemd1.Service'
PROPERTIES = 'org.freedesktop.DBus.Properties'


class Unit:
    """A unit of the user manager, as its properties tell."""

    def __init__(self, bus, processes, name):
        self.name = name
        self._bus = bus
        self._processes = processes
        self._path = call(bus, PATH, MANAGER, 'LoadUnit', '(s)', name)
        # Without a reference the manager forgets what a unit has done as soon as it has ended.
        call(bus, PATH, MANAGER, 'RefUnit', '(s)', name)

    def get(self, name, interface=UNIT):
        """The value of a property."""
        return call(self._bus, self._path, PROPERTIES, 'Get', '(ss)', interface, name)

    def state(self):
        """The state as `systemctl status` shows it: 'active (running)', and the result of the last run."""
        return f'{self.get("ActiveState")} ({self.get("SubState")})', self.get('Result', SERVICE)

    def wait_state(self, *state):
        """Waits until the unit is in a state, which is given as `state` returns it."""
        self.wait_until(lambda: self.state() == state, f'{self.name} to be {state}')

    def wait_until(self, condition, what):
        """Waits until a condition on the unit holds."""
        changes = self._bus.connection.signal_subscribe(NAME, PROPERTIES, 'PropertiesChanged', self._path, None,
                                                        Gio.DBusSignalFlags.NONE, lambda *_: None)
        try:
            self._processes.wait_until(condition, what)
        finally:
            self._bus.connection.signal_unsubscribe(changes)

    def main_process(self):
        """The id of the service's process; 0 when there is none."""
        return self.get('MainPID', SERVICE)

    def has_job(self):
        """Whether the manager has been asked for the unit's start or end, and has not done it yet."""
        return self.get('Job')[0] != 0

    def stop(self):
        """Asks for the end of the unit."""
        call(self._bus, PATH, MANAGER, 'StopUnit', '(ss)', self.name, 'replace')


class UserManager:
    """systemd --user as the user velmora, in a control group of its own.

    The output of the services that it starts is in `process`.
    """

    def __init__(self, processes, environment):
        self._processes = processes
        # The mark of a machine that systemd has booted. Without it no user manager starts.
        Path('/run/systemd/system').mkdir(parents=True, exist_ok=True)
        for name, text in UNITS.items():
            write_unit(name, text)
        allow_activation()
        LISTENS.unlink(missing_ok=True)
        # New files wake the main loop.
        changes = Gio.File.new_for_path(str(RUNTIME)).monitor_directory(Gio.FileMonitorFlags.NONE)
        variables = [f'{name}={value}' for name, value in environment.items()]
        self.process = processes.start('user manager', ['sh', '-c', ENTER_CGROUP, 'sh', SESSION, *variables, *SYSTEMD])
        processes.wait_until(LISTENS.exists, 'start of the user manager')
        changes.cancel()
        self.bus = Bus.device_session(processes)
        self.bus.wait_owner(NAME)
        # Without it the manager announces no change of a unit.
        call(self.bus, PATH, MANAGER, 'Subscribe')

    def unit(self, name):
        """A unit by its name."""
        return Unit(self.bus, self._processes, name)

    def start(self, name):
        """Asks for the start of a unit."""
        call(self.bus, PATH, MANAGER, 'StartUnit', '(ss)', name, 'replace')


def write_unit(name, text):
    """Writes a unit, or additions to one. The manager reads them when it first needs the unit."""
    path = UNIT_FOLDER / name
    path.parent.mkdir(parents=True, exist_ok=True)
    path.write_text(text, encoding='utf-8')


def allow_activation():
    """Lets the bus know the service's installed activation file."""
    shutil.rmtree(ACTIVATION_FOLDER, ignore_errors=True)
    ACTIVATION_FOLDER.mkdir()
    (ACTIVATION_FOLDER / SERVICE_FILE.name).symlink_to(SERVICE_FILE)


def call(bus, path, interface, method, signature='()', *arguments):
    """The only value, if any, that a method of the manager returns."""
    answer = bus.connection.call_sync(NAME, path, interface, method, GLib.Variant(signature, arguments), None,
                                      Gio.DBusCallFlags.NONE, DEADLINE * 1000, None).unpack()
    return answer[0] if answer else None
