# SPDX-FileCopyrightText: velmora-installationhandler contributors
# SPDX-License-Identifier: BSD-3-Clause
"""The calls that a service makes, as the buses see them."""

import subprocess
from contextlib import ExitStack

import dbus
import dbus.lowlevel

BUSES = {'--session': dbus.SessionBus, '--system': dbus.SystemBus}
MARK = ('/org/velmoraos/benchmark', 'org.velmoraos.Benchmark', 'Mark')


def calls(service, act):
    """The methods that the service's process calls on both buses until act() has returned."""
    with ExitStack() as stack:
        monitors = [stack.enter_context(Monitor(option, bus(), service.process.pid)) for option, bus in BUSES.items()]
        act()
        return [method for monitor in monitors for method in monitor.calls()]


class Monitor:
    """Watches one process on one bus."""

    def __init__(self, option, bus, pid):
        self.bus = bus
        rules = [f"type='method_call',sender='{name}'" for name in names(bus, pid)]
        self.command = ['dbus-monitor', option, '--profile', f"type='signal',interface='{MARK[1]}'", *rules]
        self.process = None

    def __enter__(self):
        self.process = subprocess.Popen(self.command, stdout=subprocess.PIPE, text=True)
        # The bus has told that its name is lost: from now on it is a monitor.
        self.read_until('NameLost')
        return self

    def __exit__(self, *_):
        self.process.terminate()
        self.process.wait()
        self.process.stdout.close()

    def calls(self):
        """All calls so far, each by its method; what was sent before the mark has been seen before it."""
        self.bus.send_message(dbus.lowlevel.SignalMessage(*MARK))
        self.bus.flush()
        lines = self.read_until(MARK[2])
        return [line[-1] for line in lines if line[0] == 'mc']

    def read_until(self, member):
        lines = []
        for line in self.process.stdout:
            lines.append(line.split())
            if lines[-1][-1] == member:
                return lines
        raise RuntimeError(f'{self.command}: ended before {member}')


def names(bus, pid):
    """The names that the bus has given to the process."""
    daemon = dbus.Interface(bus.get_object('org.freedesktop.DBus', '/org/freedesktop/DBus'), 'org.freedesktop.DBus')
    unique = [name for name in daemon.ListNames() if name.startswith(':')]
    return [name for name in unique if daemon.GetConnectionUnixProcessID(name) == pid]
