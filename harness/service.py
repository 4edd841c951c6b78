# SPDX-FileCopyrightText: velmora-installationhandler contributors
# SPDX-License-Identifier: BSD-3-Clause
"""The service as a process."""

from .client import NAME, Client
from .processes import DEADLINE

PROGRAM = '/usr/bin/velmora-installationhandler'
WARNING = 'warning default: '
DEBUG = 'debug default: '


class Service:
    """The installed program in service mode, started by `start`."""

    def __init__(self, processes, session_bus, system_bus, environment):
        self.process = None
        self._processes = processes
        self._session_bus = session_bus
        self._system_bus = system_bus
        self._environment = environment

    def start(self, arguments=(), environment=None):
        """Starts it and waits until it owns its name."""
        self.launch(arguments, environment)
        self._session_bus.wait_owner(NAME)
        return self

    def launch(self, arguments=(), environment=None):
        """Starts it and does not wait for anything."""
        self.process = self._processes.start_in_session('service', [PROGRAM, *arguments],
                                                        {**self._environment, **(environment or {})})
        return self

    @property
    def alive(self):
        """Whether the process runs."""
        self._processes.run_pending()
        return self.process is not None and self.process.alive

    def wait_exit(self, seconds=DEADLINE):
        """Waits for the end of the process and returns its exit status."""
        return self._processes.wait_end(self.process, seconds)

    def kill(self):
        """Ends the process abruptly."""
        self._processes.kill(self.process)

    def log(self):
        """All lines so far, each "TYPE CATEGORY: TEXT"."""
        self._processes.run_pending()
        return self.process.lines()

    def warnings(self):
        """The texts of the warnings in the category "default" so far."""
        return [line[len(WARNING):] for line in self.log() if line.startswith(WARNING)]

    def debugs(self):
        """The texts of the debug messages in the category "default" so far."""
        return [line[len(DEBUG):] for line in self.log() if line.startswith(DEBUG)]

    def wait_for_log(self, text, count=1, seconds=DEADLINE):
        """Waits until `count` lines contain the text, and returns the last of these."""
        def found():
            return [line for line in self.process.lines() if text in line]
        self._processes.wait_until(lambda: len(found()) >= count, f'"{text}" in the log, {count} times', seconds)
        return found()[count - 1]

    def barrier(self):
        """Returns when the service has handled everything that was sent to it before, on either bus.

        The first ping proves that the service has taken in what came on the system bus; its main loop
        handles that before the introspection. After the second ping everything that the main loop has
        sent in turn has reached its receivers.
        """
        system_name = self._system_bus.name_of_process(self.process.pid)
        if system_name:
            self._system_bus.ping(system_name)
        Client(self._session_bus.connection, self._processes).introspect()
        if system_name:
            self._system_bus.ping(system_name)
        self._processes.run_pending()
