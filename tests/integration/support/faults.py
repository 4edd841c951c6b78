# SPDX-FileCopyrightText: velmora-installationhandler contributors
# SPDX-License-Identifier: BSD-3-Clause
"""Faults of the peers and of the buses of a removal, one after the other, and the fixtures that cause them."""

import signal

import pytest
from gi.repository import GLib
from harness.bus import PrivateBus
from harness.client import Client
from harness.service import Service
from harness.signalrecorder import SignalRecorder
from harness.standins import StandIns
from packages import build_package
from standin.names import BUSES

from .removalfixture import RemovalFixture
from .removalrequests import DELETED, METHODS, PEERS, End

NONSENSE = GLib.Variant('(a{sv})', ({},))
NO_REPLY = 'Message recipient disconnected from message bus without replying'
CRASHED = 'The PackageKit daemon has crashed'

# PackageKit's end and the missing answer are both reported, in the order in which they arrive, as long as an object
# receives them: Known behaviour 26.
CRASH = End(log=DELETED, known='26', words='a failure, in up to four reports')

# A call without an answer that ends it comes last: it would hear of every later death.
CALL_FAULTS = ('dies', 'hangs', 'wrong type')


class RemovalFaults:
    """Makes a peer of the removal faulty; `ends` has what then differs from the usual end, by call and fault."""

    def __init__(self, removal, peer, ends, buses, table):
        self._removal = removal
        self._name = peer
        self._ends = ends
        self._bus = buses[BUSES[peer]]
        self._table = table

    def try_all(self):
        """Each fault, and after it the same request once more, which takes its usual course."""
        self._try('any', 'absent', self._go)
        self._try('any', 'returns', self._leave_and_return)
        for fault in CALL_FAULTS:
            for method in self._removal.request.methods_of(self._name):
                self._try(method, fault, lambda method=method, fault=fault: self._plan(method, fault))

    def _try(self, method, fault, prepare):
        removal = self._removal
        cell = (removal.request.name, self._name, method, fault)
        end = self._ends.get((method, fault), removal.request.usual)
        row = self._table.begin(*cell, end.known)
        removal.set_up()
        prepare()

        outcomes = self._run(method, fault, end)

        if end is CRASH:
            failures = {text for success, text in outcomes if not success}
            assert outcomes[0][0] is False and failures <= {CRASHED, NO_REPLY}, (cell, outcomes)
        else:
            assert outcomes == end.outcomes, cell
        row += end.cells(outcomes)
        self._repair()
        row.append(removal.repeat())

    def _run(self, method, fault, end):
        removal = self._removal
        standin = removal.peer(self._name)
        seen = len(standin.calls(method)) if fault in CALL_FAULTS else 0
        asked = removal.ask(end)
        if fault == 'dies':
            standin.wait_exit()
        elif fault == 'hangs':
            removal.wait_answered(method, seen + 1)
            assert standin.hanging() == [method]
            assert removal.outcomes() == ()
            standin.release(method)
        elif fault == 'wrong type':
            removal.wait_answered(method, seen + 1)
        asked.wait()
        return removal.wait_end(end)

    def _plan(self, method, fault):
        standin = self._removal.peer(self._name)
        standin.restore(method)
        if fault == 'dies':
            standin.exit_on(method, 'before')
        elif fault == 'hangs':
            standin.hang(method, 1)
        else:
            standin.answer(method, NONSENSE, 1)
        self._removal.set_up_peer(self._name)

    def _go(self):
        self._removal.peer(self._name).kill()
        self._bus.wait_owner(PEERS[self._name], owned=False)

    def _leave_and_return(self):
        self._removal.peer(self._name).vanish()
        self._removal.peer(self._name).come_back()

    def _repair(self):
        if not self._removal.peer(self._name).process.alive:
            self._removal.standins.start(self._name)


class BusFaults:
    """Two buses with the service and the peers of a removal, time and again."""

    def __init__(self, removal, processes, environment, buses):
        self.removal = removal
        self.service = None
        self._processes = processes
        self._environment = environment
        self._buses = buses

    def start_service(self):
        """Starts a service of the present buses, and waits until it is there."""
        connection = self._buses['session'].connection
        self.service = self._new_service().start()
        self.removal.enter(self.service, Client(connection, self._processes),
                           SignalRecorder(connection, self._processes))

    def launch_service(self):
        """Starts a service of the present buses that will not come far."""
        self.service = self._new_service().launch()
        return self.service

    def ask_and_hold(self, end):
        """Asks for the removal, whose last call hangs then; returns the peer that is called."""
        last = self.removal.request.last
        peer = self.removal.peer(METHODS[last])
        self.removal.set_up()
        peer.restore(last)
        peer.hang(last, 1)
        self.removal.set_up_peer(METHODS[last])
        count = len(peer.calls(last))
        self.removal.ask(end)
        self.removal.wait_answered(last, count + 1)
        assert peer.hanging() == [last]
        return peer

    def stop(self, name):
        """The bus takes nothing and passes on nothing."""
        self._buses[name].process.send_signal(signal.SIGSTOP)

    def resume(self, name):
        """It passes on what has come meanwhile."""
        self._buses[name].process.send_signal(signal.SIGCONT)
        self._buses[name].process.end_awaited = False

    def kill(self, name):
        """The bus is gone, and with it the peers that lived there."""
        gone = [self.removal.peer(peer).process for peer in self.removal.peers() if BUSES[peer] == name]
        for process in gone:
            process.end_awaited = True
        self._processes.kill(self._buses[name].process)
        for process in gone:
            self._processes.wait_end(process)

    def start_anew(self):
        """New buses with their peers and a service of theirs; the old ones go."""
        if self.service.alive:
            self.service.kill()
        for name, bus in self._buses.items():
            if bus.process.alive:
                self.kill(name)
        self._buses = {'system': PrivateBus.system(self._processes),
                       'session': PrivateBus.session(self._processes, self._environment)}
        self.removal.start_peers(StandIns(self._processes, self._buses['system'], self._buses['session']))
        self.start_service()

    def wait_settled(self):
        """A round trip to the service that has only the system bus left."""
        bus = self._buses['system']
        bus.ping(bus.name_of_process(self.service.process.pid))

    def _new_service(self):
        return Service(self._processes, self._buses['session'], self._buses['system'], self._environment)


@pytest.fixture(scope='module')
def app_package():
    """The package of the application, which has a launcher."""
    return build_package('/tmp/packages', 'app')


@pytest.fixture
def make_removal(processes, device, app_package, standins):
    """The removal of a request, with its peers and without the service."""
    def make(request):
        removal = RemovalFixture(request, app_package, processes, device)
        removal.start_peers(standins)
        removal.set_up()
        return removal
    return make


@pytest.fixture
def try_faults(make_removal, program, client, signals, system_bus, session_bus, removal_table):
    """Tries all faults of a peer in a request, with the ends that differ from the usual one by (call, fault)."""
    def try_all(request, peer, ends):
        removal = make_removal(request)
        removal.enter(program.start(), client, signals)
        RemovalFaults(removal, peer, ends, {'system': system_bus, 'session': session_bus}, removal_table).try_all()
    return try_all


@pytest.fixture
def make_bus_faults(make_removal, processes, environment, system_bus, session_bus):
    """The buses of a request, on which the service has not been started."""
    def make(request):
        return BusFaults(make_removal(request), processes, environment, {'system': system_bus, 'session': session_bus})
    return make
