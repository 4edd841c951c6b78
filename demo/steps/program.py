# SPDX-FileCopyrightText: velmora-installationhandler contributors
# SPDX-License-Identifier: BSD-3-Clause
"""Programs that the demo runs."""

import queue
import subprocess
import time
from threading import Thread

from steps.progress import Failure

DEADLINE = 30


def run(*command, **options):
    """Runs a program to its end; what it prints."""
    try:
        result = subprocess.run(command, capture_output=True, text=True, timeout=DEADLINE, check=False, **options)
    except subprocess.TimeoutExpired:
        raise Failure(f'{command[0]} did not end within {DEADLINE} seconds') from None
    if result.returncode:
        raise Failure(f'{command[0]} failed with {result.returncode}: {result.stderr.strip() or result.stdout.strip()}')
    return result.stdout


class Companion:
    """A program that runs beside the demo until the device ends. What it prints goes to a log."""

    def __init__(self, log, *command):
        self._name = command[0]
        self._log = log
        self._lines = queue.SimpleQueue()
        process = subprocess.Popen(command, stdin=subprocess.DEVNULL, stdout=subprocess.PIPE, stderr=subprocess.STDOUT,
                                   text=True)
        Thread(target=self._listen, args=[process.stdout], daemon=True).start()

    def await_line(self, accepts):
        """Waits for the line of its output that is accepted, and returns it."""
        end = time.monotonic() + DEADLINE
        while True:
            try:
                line = self._lines.get(timeout=max(0, end - time.monotonic()))
            except queue.Empty:
                raise Failure(f'{self._name} was not ready within {DEADLINE} seconds; see {self._log}') from None
            if line is None:
                raise Failure(f'{self._name} ended too early; see {self._log}')
            if accepts(line):
                return line

    def _listen(self, output):
        with open(self._log, 'w', encoding='utf-8') as log:
            for line in output:
                print(line, end='', file=log, flush=True)
                self._lines.put(line.rstrip('\n'))
        self._lines.put(None)
