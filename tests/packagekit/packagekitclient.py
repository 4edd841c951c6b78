# SPDX-FileCopyrightText: velmora-installationhandler contributors
# SPDX-License-Identifier: BSD-3-Clause
"""Requests at PackageKit and what is reported of them."""

import json


class Request:
    """What has been reported of one request so far: events, each a list of its name and values."""

    def __init__(self, number, process):
        self._number = number
        self._process = process

    @property
    def events(self):
        """All events."""
        lines = [json.loads(line) for line in self._process.lines() if line.startswith('[')]
        return [event for number, *event in lines if number == self._number]

    def of(self, name):
        """The values of the events of a name: package, progress, error or finished."""
        return [values for event, *values in self.events if event == name]

    @property
    def exit(self):
        """The exit status by its name, None before the end."""
        return self.of('finished')[-1][0] if self.of('finished') else None

    @property
    def ids(self):
        """The ids of the packages reported, in that order."""
        return [package_id for _, package_id, _ in self.of('package')]


class PackageKitClient:
    """Runs the program packagekitclient."""

    def __init__(self, program, processes):
        self._program = program
        self._processes = processes

    def start(self, *requests):
        """Makes requests at the same time, each a list such as ['resolve', NAME]."""
        words = [word for request in requests for word in ('+', *request)][1:]
        process = self._processes.start('packagekitclient', [self._program, *words])
        process.end_awaited = True
        return [Request(number, process) for number in range(len(requests))], process

    def run(self, *requests):
        """Makes requests at the same time and waits until all have ended."""
        started, process = self.start(*requests)
        assert self._processes.wait_end(process) == 0
        return started

    def resolve(self, *names):
        """Asks for installed packages by name, and waits."""
        return self.run(['resolve', *names])[0]

    def search(self, path):
        """Asks for the installed packages that own a file, and waits."""
        return self.run(['search', path])[0]

    def remove(self, *ids):
        """Removes packages, and waits."""
        return self.run(['remove', *ids])[0]
