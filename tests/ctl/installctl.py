# SPDX-FileCopyrightText: velmora-installationhandler contributors
# SPDX-License-Identifier: BSD-3-Clause
"""The program velmora-installctl as a process of the session."""

import json
import os
import subprocess
import tempfile
from typing import NamedTuple

from harness.processes import SANITIZER_REPORTS
from standin.names import SESSION

PROGRAM = '/usr/bin/velmora-installctl'


class Ended(NamedTuple):
    """The end of a run: its exit status, and the lines of its two outputs."""

    status: int
    out: list
    err: list


class Run:
    """A run of the program. Its standard output is that of `process`."""

    def __init__(self, processes, command, folder, output):
        """`output` is a file, or None for `process` to read."""
        self._processes = processes
        # A file holds any number of errors, and keeps them apart from the output.
        self._errors = tempfile.TemporaryFile()
        popen = subprocess.Popen(command, cwd=folder, stdin=subprocess.DEVNULL,
                                 stdout=subprocess.PIPE if output is None else output, stderr=self._errors)
        if output is not None:
            popen.stdout = open(os.devnull, 'rb')
        self.process = processes.watch('installctl', popen)
        self.process.end_awaited = True

    def wait_line(self, text, count=1):
        """Waits until `count` lines of the standard output contain a text, and returns the last of these."""
        def found():
            return [line for line in self.process.lines() if text in line]
        self._processes.wait_until(lambda: len(found()) >= count or not self.process.alive, f'"{text}" of installctl')
        assert len(found()) >= count, self.wait()
        return found()[count - 1]

    def send_signal(self, number):
        """Sends a signal of the system."""
        self.process.send_signal(number)

    def wait(self):
        """Waits until the program has ended, and returns how."""
        self._processes.wait_end(self.process)
        err = self.errors()
        assert not [line for line in err if any(report in line for report in SANITIZER_REPORTS)], '\n'.join(err)
        return Ended(self.process.returncode, self.process.lines(), err)

    def errors(self):
        """The lines of the standard error output so far."""
        size = os.fstat(self._errors.fileno()).st_size
        return os.pread(self._errors.fileno(), size, 0).decode(errors='backslashreplace').splitlines()

    def objects(self):
        """The objects of --json so far, without the times, which are numbers."""
        return [without_time(line) for line in self.process.lines()]


def without_time(line):
    """The object of a line of --json, without its time."""
    made = json.loads(line)
    assert isinstance(made.pop('elapsed'), (int, float)), line
    return made


class InstallCtl:
    """Starts the program as the session's user, with the variables of every program of the session."""

    def __init__(self, processes, environment):
        self._processes = processes
        self._environment = environment

    def command(self, *arguments, group='velmora', starter=(), **variables):
        """The command of a run, in a group, started by another command, and with more variables."""
        settings = [f'{name}={value}' for name, value in {**self._environment, **variables}.items()]
        return [SESSION, '--group', group, *settings, *starter, PROGRAM, *map(str, arguments)]

    def start(self, *arguments, folder='/', output=None, **options):
        """Starts it in a folder and does not wait for anything; see `command` for the options."""
        return Run(self._processes, self.command(*arguments, **options), folder, output)

    def __call__(self, *arguments, **options):
        """Runs it to its end, and returns how it ended."""
        return self.start(*arguments, **options).wait()
