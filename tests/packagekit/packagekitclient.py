# SPDX-FileCopyrightText: velmora-installationhandler contributors
# SPDX-License-Identifier: BSD-3-Clause
"""Requests to PackageKit, and the events that it reports."""

import json


class Request:
    """The events of one request so far, each a list of its name and its values."""

    def __init__(self, number, process):
        self._number = number
        self._process = process

    @property
    def events(self):
        """All events."""
        lines = [json.loads(line) for line in self._process.lines() if line.startswith('[')]
        return [event for number, *event in lines if number == self._number]

    def of(self, name):
        """The values of all events of a name: package, progress, error or finished."""
        return [values for event, *values in self.events if event == name]

    @property
    def exit(self):
        """The name of the exit status, None before the end."""
        return self.of('finished')[-1][0] if self.of('finished') else None

    @property
    def ids(self):
        """The ids of the reported packages, in that order."""
        return [package_id for _, package_id, _ in self.of('package')]


class PackageKitClient:
    """Runs the program packagekitclient in the session. All methods wait for the end of their requests, except start()."""

    def __init__(self, program, processes):
        self._program = program
        self._processes = processes

    def start(self, *requests):
        """Makes requests at the same time, each a list such as ['resolve', NAME]."""
        words = [word for request in requests for word in ('+', *request)][1:]
        process = self._processes.start_in_session('packagekitclient', [self._program, *words])
        process.end_awaited = True
        return [Request(number, process) for number in range(len(requests))], process

    def run(self, *requests):
        """Makes requests at the same time."""
        started, process = self.start(*requests)
        assert self._processes.wait_end(process) == 0
        return started

    def resolve(self, *names):
        """Asks for installed packages by name."""
        return self.run(['resolve', *names])[0]

    def search(self, path):
        """Asks for the installed packages that own a file."""
        return self.run(['search', path])[0]

    def remove(self, *ids):
        """Removes packages."""
        return self.run(['remove', *ids])[0]
