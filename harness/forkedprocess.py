# SPDX-FileCopyrightText: velmora-installationhandler contributors
# SPDX-License-Identifier: BSD-3-Clause
"""A child process that is a function of Python, and starts faster than an interpreter does."""

import multiprocessing
import os
import subprocess
import sys
from functools import cache
from multiprocessing import forkserver
from unittest.mock import patch


class ForkedProcess:
    """A process that runs a function, with as much of the interface of subprocess.Popen as Process needs.

    A server with all modules of the function loaded forks it. Standard output and error go to `stdout`.
    """

    def __init__(self, function, *arguments):
        context = forking_context(function.__module__)
        self.stdout, output = context.Pipe(duplex=False)
        self._process = context.Process(target=run, args=(output, function, arguments))
        self._process.start()
        output.close()
        self.pid = self._process.pid

    def wait(self, timeout=None):
        """Waits for the end and returns the exit status; subprocess.TimeoutExpired after the timeout."""
        self._process.join(timeout)
        if self._process.exitcode is None:
            raise subprocess.TimeoutExpired(str(self.pid), timeout)
        return self._process.exitcode

    def send_signal(self, number):
        """Sends a signal if it still runs."""
        if self._process.exitcode is None:
            os.kill(self.pid, number)

    def kill(self):
        self._process.kill()


@cache
def forking_context(module):
    """The means to fork processes that have the module and all that it imports."""
    context = multiprocessing.get_context('forkserver')
    context.set_forkserver_preload([module])
    # The server would look for modules in Python's own folders only.
    with patch.dict(os.environ, PYTHONPATH=os.pathsep.join(sys.path)):
        forkserver.ensure_running()
    return context


def run(output, function, arguments):
    """Runs the function in the new process."""
    for descriptor in (1, 2):
        os.dup2(output.fileno(), descriptor)
    output.close()
    function(*arguments)
