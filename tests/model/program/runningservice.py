# SPDX-FileCopyrightText: velmora-installationhandler contributors
# SPDX-License-Identifier: BSD-3-Clause
"""The process of the program."""

from gi.repository import GLib
from harness.client import NAME
from harness.service import Service
from model.seen import Seen
from standin.remoteerror import RemoteError

from .log import Log
from .recording import Recording

ENVIRONMENT = {
    'QT_QPA_PLATFORM': 'offscreen', 'QT_QUICK_BACKEND': 'software', 'QT_FORCE_STDERR_LOGGING': '1',
    'QT_MESSAGE_PATTERN': '%{type} %{category}: %{message}',
}

QUIET_ROUNDS = 2


class Ended(Exception):
    """The process has ended."""


class RunningService:
    """The process between its peers, as Seen describes it."""

    def __init__(self, surroundings, peers):
        self._processes = surroundings.processes
        self._buses = surroundings.buses
        self._client = surroundings.client
        self._peers = peers
        service = Service(self._processes, self._buses['session'], self._buses['system'],
                          {**ENVIRONMENT, **surroundings.clock.environment})
        self.process = service.start().process
        self.process.end_awaited = True
        self.names = {'system': self._buses['system'].name_of_process(self.process.pid),
                      'session': self._buses['session'].ask('GetNameOwner', '(s)', NAME)[0]}
        client = self._client.connection.get_unique_name()
        self._recordings = {name: Recording(bus, self._processes, self.names[name], client)
                            for name, bus in self._buses.items()}
        self._log = Log(self.process)
        self.settle()
        self.take()

    def end(self):
        """Ends the process."""
        if self.process.alive:
            self._processes.kill(self.process)
        for recording in self._recordings.values():
            recording.close()
        self._buses['session'].wait_owner(NAME, owned=False)
        self._processes.all.remove(self.process)

    def settle(self):
        """Waits until the process has nothing more to do: it is idle, or waits for an answer of a peer. Raises Ended.

        One quiet round is not enough: an event that it has handled may have led to another one, or to its end.
        """
        quiet = 0
        while quiet < QUIET_ROUNDS:
            self._go_round()
            has_acted = [recording.look() for recording in self._recordings.values()]
            unanswered = sum(len(recording.unanswered) for recording in self._recordings.values())
            is_quiet = not any(has_acted) and unanswered == len(self._peers.waiting())
            quiet = quiet + 1 if is_quiet else 0

    def forget(self, call, bus):
        """A call has gone without an answer for too long."""
        del self._recordings[bus].unanswered[call.message.get_serial()]

    def take(self):
        """All that can be seen since the last call."""
        self._processes.run_pending()
        for recording in self._recordings.values():
            recording.look()
        messages = {name: recording.take() for name, recording in self._recordings.items()}
        log = self._log.take()
        screen = list(self._log.screen.items()) if self.process.alive else []
        return Seen(messages['session'], messages['system'], log, screen, self.process.returncode)

    def _go_round(self):
        """Returns when the process has handled what was sent to it and has sent what it had to say, or waits."""
        try:
            self._ping('system')
            self._look()
            self._ping('session')
            self._ping('system')
        except (GLib.Error, RemoteError):
            # A process that is about to end does not answer any more, or has no object.
            self._processes.wait_until(lambda: not self.process.alive, 'the end of the program')
        if not self.process.alive:
            raise Ended

    def _ping(self, bus):
        self._processes.run_pending()
        self._buses[bus].ping(self.names[bus])

    def _look(self):
        """Lets the main loop answer, unless it is blocked."""
        if self._peers.blocking():
            return
        look = self._client.start('Introspect', interface='org.freedesktop.DBus.Introspectable')
        self._processes.wait_until(lambda: look.answered or self._peers.blocking(), 'the program to answer or to wait')
        if look.answered:
            look.wait()
