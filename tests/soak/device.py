# SPDX-FileCopyrightText: velmora-installationhandler contributors
# SPDX-License-Identifier: BSD-3-Clause
"""The device of a soak: buses, all peers, the service and its clients."""

import re
import shutil
from pathlib import Path

from gi.repository import Gio, GLib
from harness.bus import DAEMON, PrivateBus
from harness.client import Client
from harness.processes import DEADLINE, Processes
from harness.service import Service
from harness.signalrecorder import SignalRecorder
from harness.standins import StandIns
from packages import handmade
from standin.names import BUSES
from support.devicestate import DeviceState, make_own_folder
from support.dialog import Dialog
from support.fixtures import ENVIRONMENT

from .plan import CLIENTS, METHODS, PACKAGES

FOLDER = Path('/tmp/packages')
LAUNCHERS = Path('/usr/share/applications')
STATISTICS = 'org.freedesktop.DBus.Debug.Stats'

# Blocks of this size and more get memory of their own, and give it back. In the heap the images of dialogs and other
# large blocks would leave holes, more or fewer by which requests meet, and growth could not be told from these.
ALLOCATOR = {'MALLOC_MMAP_THRESHOLD_': '4096'}

# A call of a transaction of PackageKit, whose path ends with the number of the process that has made it.
TRANSACTION_OF = re.compile(r'package-kit: /\d+_(\d+) ')

# The instructions that a peer gets before anybody can call it.
SETTINGS = {'package-manager': {'installs': 'nothing'}}


class SoakDevice:
    """One service, whose buses never end, and whose peers may."""

    def __init__(self):
        self.processes = Processes()
        self.state = DeviceState()
        self.system_bus = PrivateBus.system(self.processes)
        self.session_bus = PrivateBus.session(self.processes, ENVIRONMENT)
        self.standins = StandIns(self.processes, self.system_bus, self.session_bus)
        self.standins.start(*METHODS.keys() - SETTINGS)
        for name in SETTINGS:
            self.restart(name)
        self.service = Service(self.processes, self.session_bus, self.system_bus, ENVIRONMENT | ALLOCATOR)
        self._write_packages()
        self.own_launchers = make_own_folder(self.state.home / '.local/share/applications')
        Dialog(self.service, FOLDER / 'installed-dialog').use('ByName')
        self.service.start()
        self.clients = [Client(self.session_bus.connect(), self.processes) for _ in range(CLIENTS)]
        self.signals = SignalRecorder(self.session_bus.connection, self.processes)

    def peer(self, name):
        """The stand-in of a name."""
        return getattr(self.standins, name.replace('-', '_'))

    def is_well(self, name):
        """Whether a peer runs."""
        return self.peer(name).process.alive

    def kill(self, name):
        """A peer dies."""
        if self.is_well(name):
            self.peer(name).kill()

    def restart(self, name):
        """The peer runs again. It has forgotten all but its settings."""
        self.standins.start(name, **SETTINGS.get(name, {}))

    def has_name(self, name, public_name):
        """Whether a peer is on its bus under its public name."""
        bus = self.system_bus if BUSES[name] == 'system' else self.session_bus
        return bus.has_owner(public_name)

    def file(self, number, declined):
        """The path of a package, or of an absent file, that the user declines or accepts."""
        name = 'absent' if number is None else PACKAGES[number]
        return str(FOLDER / ('declined' if declined else 'accepted') / f'{name}.rpm')

    def make_launcher(self, name, own):
        """A launcher of the user's own, or one of the system, of an Android application; its path."""
        path = (self.own_launchers if own else LAUNCHERS) / f'{name}.desktop'
        path.write_text('[Desktop Entry]\nX-zindro-apkfile=/app.apk\n', encoding='ascii')
        return str(path)

    def forget(self):
        """Forgets what has been said and called, and the processes that have ended."""
        self.processes.all = [process for process in self.processes.all if process.alive]
        self.signals.all.clear()
        for name in METHODS:
            self.peer(name).seen.clear()
            self.peer(name).clear()
            self.peer(name).process.text = ''
        for path in LAUNCHERS.glob('application*.desktop'):
            path.unlink()

    def unexpected(self):
        """The calls that no peer knows, but for those of transactions of a PackageKit that has died."""
        own = str(self.peer('package-kit').process.pid)
        calls = [(TRANSACTION_OF.match(text), text) for text in self.standins.unexpected()]
        return [text for transaction, text in calls if not transaction or transaction[1] == own]

    def private_memory(self):
        """The service's own memory in KiB, without pages that others may share."""
        rollup = Path(f'/proc/{self.service.process.pid}/smaps_rollup').read_text(encoding='ascii')
        return int(re.search(r'Private_Dirty: +(\d+) kB', rollup)[1])

    def resources(self):
        """What the service holds: descriptors, threads, rules of both buses; and the processes of the device."""
        own = Path(f'/proc/{self.service.process.pid}')
        return {
            'descriptors': sorted(kind(path.readlink()) for path in (own / 'fd').iterdir()),
            'threads': sorted(path.read_text(encoding='utf-8').strip() for path in own.glob('task/*/comm')),
            'match rules of the system bus': match_rules(self.system_bus, self.service.process.pid),
            'match rules of the session bus': match_rules(self.session_bus, self.service.process.pid),
            'processes': sorted(path.read_text(encoding='utf-8').strip() for path in Path('/proc').glob('[0-9]*/comm')),
        }

    def close(self):
        """Ends everything."""
        self.processes.stop()

    @staticmethod
    def _write_packages():
        for folder in (FOLDER / 'accepted', FOLDER / 'declined'):
            folder.mkdir(parents=True)
            for name in PACKAGES:
                handmade.write(folder / f'{name}.rpm', {handmade.NAME: (handmade.Type.STRING, name)})


def kind(target):
    """A descriptor's target without the number of a socket, pipe or the like."""
    return re.sub(r'\[\d+\]', '', str(target))


def match_rules(bus, pid):
    """The rules of all connections of a process."""
    reply = bus.connection.call_sync(*DAEMON[:2], STATISTICS, 'GetAllMatchRules', None, None, Gio.DBusCallFlags.NONE,
                                     DEADLINE * 1000, None)
    return sorted(rule for name, rules in reply.unpack()[0].items() if bus.process_of(name) == pid for rule in rules)
