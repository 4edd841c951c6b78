# SPDX-FileCopyrightText: velmora-installationhandler contributors
# SPDX-License-Identifier: BSD-3-Clause
"""A bus that stands still or is gone while a removal is under way, and new ones after it."""

import signal

from harness.bus import PrivateBus
from harness.client import Client
from harness.service import Service
from harness.signalrecorder import SignalRecorder
from harness.standins import StandIns
from standin.names import BUSES

from .removalrequests import METHODS


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
        self.removal.start_peers(StandIns(self._processes, self._buses['system'], self._buses['session'],
                                          self._environment))
        self.start_service()

    def wait_settled(self):
        """A round trip to the service that has only the system bus left."""
        bus = self._buses['system']
        bus.ping(bus.name_of_process(self.service.process.pid))

    def _new_service(self):
        return Service(self._processes, self._buses['session'], self._buses['system'], self._environment)
