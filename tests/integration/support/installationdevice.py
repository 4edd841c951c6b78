# SPDX-FileCopyrightText: velmora-installationhandler contributors
# SPDX-License-Identifier: BSD-3-Clause
"""A device on which installations of every kind are asked for, one after the other."""

import json
import re
import shutil
import signal

import pytest
from harness.bus import PrivateBus
from harness.busmonitor import BusMonitor
from harness.client import NAME, Client
from harness.processes import Processes
from harness.service import Service
from harness.signalrecorder import SignalRecorder
from harness.standins import StandIns
from packages import handmade
from standin.names import BUSES

from .devicestate import REFUSING_POLICY, DeviceState
from .dialog import Dialog
from .fixtures import ENVIRONMENT, PROCESSES
from .installationrequests import FOLDER, NAMES, Outcome, forbidden, path_of, usual
from .removalrequests import KNOWN

ALLOWING_POLICY = '[Applications]\nInstallationEnabled=true\n'

# Whom an installation calls, and their public names.
PEERS = {
    'package-manager': 'ru.quon.ZARN', 'developer-mode': 'ru.quon.developermode', 'mce': 'com.nokia.mce',
    'notifications': 'org.freedesktop.Notifications', 'package-kit': 'org.freedesktop.PackageKit',
}

BUS_NAMES = ('system', 'session')

SHOWN = re.compile(r'debug qml: dialog \d+ shows (\{.*\})')
# The reason is the system's last error, of whatever call it was: Known behaviour 47.
UNREADABLE = re.compile(r'(debug default: could not read rpm: \d+) ".*"')
# The bus goes on with the rule, the processes and the message, and the QML engine with what it has expected.
DETAILS = re.compile(r'(Rejected send message,|SideloadDialog.qml:\d+:).*')


class InstallationDevice:
    """The peers, the buses and the service. The package manager installs nothing, and knows what sdk mode removes."""

    def __init__(self):
        self.processes = Processes()
        self.state = DeviceState()
        self.sound = True
        self.service = self.client = self.signals = None
        self.dialog = Dialog(self, FOLDER / 'installed-dialog')
        self.dialog.use('Confirming')
        self._buses, self._standins = {}, {}
        self._passed, self._monitor = [], None  # the messages on the system bus, which may have been several
        self._announced = self._lines = self._notified = self._called = 0
        for name in BUS_NAMES:
            self.start_bus(name)
        self.start_service()

    def start_bus(self, name, *configuration):
        """Starts a bus, the system bus maybe of another configuration, with the peers that live there."""
        if name == 'system':
            self._buses[name] = PrivateBus.system(self.processes, *configuration)
            self._monitor = BusMonitor(self._buses[name], self.processes, self._passed)
        else:
            self._buses[name] = PrivateBus.session(self.processes, ENVIRONMENT)
        bus = self._buses[name]
        self._standins[name] = StandIns(self.processes, bus, bus)
        self._standins[name].start(*self._peers_on(name))
        for peer in self._peers_on(name):
            self._set_up_peer(peer)

    def kill_bus(self, name):
        """The bus is gone, and with it the peers that live there."""
        if name == 'system':
            self._monitor.settle()
            self._monitor.close()
            self._monitor = None
        gone = [self.peer(peer).process for peer in self._peers_on(name)]
        for process in gone:
            process.end_awaited = True
        self.processes.kill(self._buses[name].process)
        for process in gone:
            self.processes.wait_end(process)

    def stop_bus(self, name):
        """The bus takes nothing and passes on nothing."""
        self._buses[name].process.send_signal(signal.SIGSTOP)

    def resume_bus(self, name):
        """It passes on what has come meanwhile."""
        self._buses[name].process.send_signal(signal.SIGCONT)
        self._buses[name].process.end_awaited = False

    def start_service(self):
        """A new service on the present buses."""
        self.stop_service()
        session, system = self._buses['session'], self._buses['system']
        self.service = Service(self.processes, session, system, ENVIRONMENT).start()
        self.client = Client(session.connection, self.processes)
        self.signals = SignalRecorder(session.connection, self.processes)

    def stop_service(self):
        """Nobody has the service's name any more."""
        if self.service and self.service.alive:
            self.service.kill()
            if self._buses['session'].alive:
                self._buses['session'].wait_owner(NAME, owned=False)

    def peer(self, name):
        """The stand-in of a name."""
        return getattr(self._standins[BUSES[name]], name.replace('-', '_'))

    def wait_gone(self, name):
        """Waits until the bus has noticed that a peer has left it."""
        self._buses[BUSES[name]].wait_owner(PEERS[name], owned=False)

    def repair(self, name, *methods):
        """The peer is as it was at first."""
        if not self.peer(name).process.alive:
            self._standins[BUSES[name]].start(name)
            self._set_up_peer(name)
        elif not self._buses[BUSES[name]].has_owner(PEERS[name]):
            self.peer(name).come_back()
        for method in methods:
            self.peer(name).restore(method)

    def set_up(self, request, forbidding=False):
        """What the request finds: files, a policy, and the kind of device."""
        FOLDER.mkdir(exist_ok=True)
        for name in NAMES:
            path = path_of(name)
            path.unlink(missing_ok=True)
            handmade.write(path, {handmade.NAME: (handmade.Type.STRING, name)})
        self.state.set_policy(None)
        self.state.set_policy(REFUSING_POLICY if forbidding else ALLOWING_POLICY)
        self.state.mark_as_emulator(request.emulator)

    def ask(self, request):
        """Sends the request. All that happens from now on belongs to it."""
        self.sound = False
        self._announced = len(self.signals.all)
        self._lines = len(self.service.log())
        self._notified = self._notifications()
        self._called = len(self._passed)
        files = [str(path_of(name)) for name in NAMES[:request.files]]
        return self.client.start('installFiles', '(asb)', files, request.sdk_mode)

    def told(self):
        """The outcomes of the request so far."""
        return [signal.arguments for signal in self.signals.all[self._announced:] if signal.name == 'installFinished']

    def wait_for_log(self, text, count=1):
        """Waits for lines of the service's log, as Service does."""
        return self.service.wait_for_log(text, count)

    def wait_end(self, expected):
        """Waits until nothing more can come of the request, and returns what has."""
        self.wait_signals('removalFinished', len(expected.removed))
        if expected.told:
            self.wait_signals('installFinished', 1)
        elif expected.log:
            self.wait_log(expected.log[-1].partition('…')[0].rstrip())
        self.service.barrier()
        return self.outcome()

    def wait_settled(self):
        """A round trip to a service that has only the system bus left."""
        bus = self._buses['system']
        bus.ping(bus.name_of_process(self.service.process.pid))

    def outcome(self):
        """What has come of the request so far."""
        told = self.told()
        assert len(told) <= 1
        announced = self.signals.all[self._announced:]
        log = self.service.log()[self._lines:]
        shown = [json.loads(found[1])['name'] for found in map(SHOWN.fullmatch, log) if found]
        return Outcome(
            told=told[0] if told else None,
            removed=tuple(signal.arguments for signal in announced if signal.name == 'removalFinished'),
            asked=sum(signal.name == 'needConfirm' for signal in announced), shown=tuple(shown),
            handed_over=self._handed_over(), notified=self._notifications() - self._notified, log=tuple(self._chosen(log)))

    def repeat(self, request, forbidding=False):
        """Asks when nothing is wrong: the request takes its usual course, or that of a policy that forbids installing."""
        self.set_up(request, forbidding)
        self.ask(request).wait()
        outcome = forbidden(request) if forbidding else usual(request)
        assert self.wait_end(outcome) == outcome
        self.sound = True

    def wait_signals(self, name, count):
        """Waits until the request has brought so many signals of a name."""
        def arrived():
            return sum(signal.name == name for signal in self.signals.all[self._announced:])
        self.processes.wait_until(lambda: arrived() >= count, f'{name}, {count} times')

    def wait_log(self, text):
        """Waits until the request has brought a line of the log."""
        self.processes.wait_until(lambda: any(text in line for line in self.service.process.lines()[self._lines:]),
                                  f'"{text}" in the log')

    def check(self):
        """Nobody may have ended unasked, no sanitizer complained, and no peer received a call that it does not offer."""
        self.processes.run_pending()
        self.processes.check_alive()
        assert not [call for standins in self._standins.values() for call in standins.unexpected()]
        assert not self.processes.sanitizer_reports()

    def forget(self):
        """Forgets what has been said, called and announced, and the processes that have ended."""
        self.processes.all = [process for process in self.processes.all if process.alive]
        for process in self.processes.all:
            process.text = ''
        for peer in PEERS:
            self.peer(peer).seen.clear()
        self.signals.all.clear()
        self._passed.clear()

    def close(self):
        """Ends everything."""
        self.processes.stop()
        self.dialog.restore()
        shutil.rmtree(FOLDER)

    def _handed_over(self):
        """The arguments of the request's calls of "Install", also those to a package manager that is not there."""
        if self._monitor:
            self._monitor.settle()
        return tuple(message.arguments for message in self._passed[self._called:] if message.member == 'Install')

    def _notifications(self):
        """How many notifications the present server has shown."""
        bus, server = self._buses['session'], self.peer('notifications')
        if bus.alive and server.process.alive and bus.has_owner(PEERS['notifications']):
            bus.ping(PEERS['notifications'])
        self.processes.run_pending()
        return server.process.text.count(' Notify answered')

    @staticmethod
    def _peers_on(bus):
        return [peer for peer in PEERS if BUSES[peer] == bus]

    def _set_up_peer(self, name):
        """What a peer answers as long as nothing else is planned."""
        if name == 'package-manager':
            self.peer(name).configure('installs', 'nothing')
            self.peer(name).answer('GetPackage', KNOWN)
        elif name == 'developer-mode':
            self.peer(name).configure('silent-installation', True)

    @staticmethod
    def _chosen(log):
        for line in log:
            # An error in the dialog comes with the line of its file.
            if not line.startswith(('debug ', ' ')):
                yield DETAILS.sub(r'\1 …', line)
            elif UNREADABLE.fullmatch(line):
                yield UNREADABLE.sub(r'\1 …', line)


class SharedDevice:
    """One device for many tests, and another one after a test that has failed."""

    def __init__(self):
        self._device = None

    def take(self):
        """A device on which nothing is wrong."""
        if self._device and not self._device.sound:
            self.close()
        if not self._device:
            self._device = InstallationDevice()
        self._device.forget()
        return self._device

    def close(self):
        """Ends the device, if there is one."""
        if self._device:
            self._device.close()
        self._device = None


@pytest.fixture(scope='module')
def shared_device():
    """The device of all tests of the file that leave it as it was."""
    shared = SharedDevice()
    yield shared
    shared.close()


@pytest.fixture
def installations(request, shared_device):
    """The shared device."""
    device = shared_device.take()
    request.node.stash[PROCESSES] = device.processes
    yield device
    device.check()
