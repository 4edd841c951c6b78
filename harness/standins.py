# SPDX-FileCopyrightText: velmora-installationhandler contributors
# SPDX-License-Identifier: BSD-3-Clause
"""The stand-ins of the platform services, as processes: those on the session bus of the session's user, others of root."""

from pathlib import Path

from standin.controlclient import ControlClient
from standin.names import BUSES, TOGETHER
from standin.remoteerror import RemoteError

from .forkedstandin import start_standin

SIMULATOR = Path(__file__).resolve().parents[1] / 'simulator'


class StandIn(ControlClient):
    """One stand-in: its process, and its control interface."""

    def __init__(self, name, connection, processes, settings):
        super().__init__(connection, name)
        self.name = name
        self.seen = []
        self._processes = processes
        self._watch = self.watch(self.seen.append)
        self.process = processes.watch(name, start_standin(name, settings))

    def wait_ready(self):
        """Waits until it can be called."""
        self._processes.wait_until(lambda: f'ready {self.name}' in self.process.lines(), f'start of {self.name}')

    def wait_call(self, method, count=1):
        """Waits for call number `count` of a method, however it is answered, and returns it."""
        def calls():
            return [call for call in self.seen if call.method == method]
        self._processes.wait_until(lambda: len(calls()) >= count, f'call {count} of {method} at {self.name}')
        return calls()[count - 1]

    def exit_on(self, method, when):
        self.process.end_awaited = True
        super().exit_on(method, when)

    def wait_exit(self):
        """Waits until the process has ended."""
        self._processes.wait_end(self.process)

    def forget(self):
        """Takes no more notice of the stand-in, nor of another one of its name."""
        self._connection.signal_unsubscribe(self._watch)

    def last_words(self):
        """The unexpected calls; none if the stand-in was told to exit and has left the bus."""
        try:
            return self.unexpected()
        except RemoteError:
            if not self.process.end_awaited:
                raise
            self.wait_exit()
            return []

    def kill(self):
        """Ends the process abruptly."""
        self._processes.kill(self.process)


class StandIns:
    """The stand-ins of a test, each an attribute once it is started: `standins.package_manager`."""

    def __init__(self, processes, system_bus, session_bus):
        self._processes = processes
        self._connections = {'system': system_bus.connection, 'session': session_bus.connection}
        self._started = {}

    def start(self, *names, **settings):
        """Starts stand-ins at the same time and waits until all can be called.

        Keyword arguments, with "_" for "-", are parameters of the one stand-in named. A stand-in that has
        ended may be started again.
        """
        assert not settings or len(names) == 1, 'parameters are for one stand-in'
        parameters = {key.replace('_', '-'): written(value) for key, value in settings.items()}
        for name in self._started.keys() & set(names):
            self._started[name].forget()
        started = [StandIn(name, self._connections[BUSES[name]], self._processes, parameters)
                   for name in names]
        for standin in started:
            standin.wait_ready()
            self._started[standin.name] = standin
        return started[0] if len(started) == 1 else started

    def start_all(self):
        """Starts every stand-in but that of PackageKit."""
        self.start(*TOGETHER)
        return self

    def __getattr__(self, name):
        try:
            return self._started[name.replace('_', '-')]
        except KeyError:
            raise AttributeError(f'{name} has not been started') from None

    def unexpected(self):
        """Calls that no stand-in offers and mistakes in directing one, of all that still run."""
        return [f'{standin.name}: {text}' for standin in self._started.values() if standin.process.alive
                for text in standin.last_words()]


def written(value):
    """A parameter as one writes it on the command line."""
    return str(value).lower() if isinstance(value, bool) else str(value)
