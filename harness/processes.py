# SPDX-FileCopyrightText: velmora-installationhandler contributors
# SPDX-License-Identifier: BSD-3-Clause
"""All processes of a test or of the demo, and waiting for what they do."""

import os
import signal
import subprocess

from gi.repository import GLib
from standin.names import SESSION

from .process import Process

# Seconds, for everything that is waited for. Only a failure takes that long.
DEADLINE = 180
SANITIZER_REPORTS = (
    'ERROR: AddressSanitizer',
    'ERROR: LeakSanitizer',
    'AddressSanitizer:DEADLYSIGNAL',
    'runtime error:')


class WaitFailed(AssertionError):
    """Something did not happen in time, or cannot happen any more."""


class Processes:
    """Starts processes and notices when one of them ends unasked."""

    def __init__(self):
        self.all = []

    def start(self, name, arguments, environment=None, log=None):
        """Starts a program, in the environment of the caller plus the given variables; see Process for the log."""
        return self.watch(name, subprocess.Popen(
            [str(argument) for argument in arguments], env={**os.environ, **(environment or {})},
            stdin=subprocess.DEVNULL, stdout=subprocess.PIPE, stderr=subprocess.STDOUT), log)

    def watch(self, name, popen, log=None):
        """Takes in a process that runs already; see Process."""
        process = Process(name, popen, log)
        self.all.append(process)
        return process

    def start_in_session(self, name, arguments, environment=None):
        """Starts a program of the session: as the session's user, in that user's environment plus the given variables."""
        variables = [f'{variable}={value}' for variable, value in (environment or {}).items()]
        return self.start(name, [SESSION, *variables, *arguments])

    def run(self, name, arguments, environment=None):
        """Runs a program to its end, which has to be a success, and returns its output."""
        process = self.start(name, arguments, environment)
        if self.wait_end(process):
            raise WaitFailed(f'{name} failed with {process.returncode}: {process.text.strip()}')
        return process.text

    def wait_until(self, condition, what, seconds=DEADLINE):
        """Runs the main loop until the condition holds; fails at the deadline or when a process has died."""
        if not self.happens(condition, seconds, what):
            raise WaitFailed(f'not within {seconds} s: {what}')

    def wait_line(self, process, accepts, what):
        """Waits for a line of the output of a process that is accepted, and returns it."""
        def found():
            return next(filter(accepts, process.lines()), None)
        self.wait_until(lambda: found() is not None, what)
        return found()

    def happens(self, condition, seconds, what='nothing in particular'):
        """Runs the main loop until the condition holds (true) or the time is over (false).

        All that has arrived is taken in before the condition is looked at, which may cost more than what arrives.
        """
        expired = []
        timer = GLib.timeout_add(int(seconds * 1000), lambda: expired.append(True) or GLib.SOURCE_CONTINUE)
        try:
            while not condition():
                self.check_alive(what)
                if expired:
                    return False
                GLib.MainContext.default().iteration(True)
                self.run_pending()
        finally:
            GLib.source_remove(timer)
        return True

    def run_pending(self):
        """Takes in what has arrived already."""
        while GLib.MainContext.default().iteration(False):
            pass

    def wait_end(self, process, seconds=DEADLINE):
        """Waits until a process has ended and returns its exit status, negative for a signal."""
        process.end_awaited = True
        self.wait_until(lambda: not process.alive, f'end of {process.name}', seconds)
        return process.returncode

    def kill(self, process):
        """Ends a process without giving it a chance to say anything."""
        process.send_signal(signal.SIGKILL)
        self.wait_end(process)

    def check_alive(self, what='the end of the test'):
        """Fails when a process has ended that nobody expected to."""
        for process in self.all:
            if not process.alive and not process.end_awaited:
                process.end_awaited = True
                raise WaitFailed(f'{process.name} ended with {process.returncode} while waiting for {what}')

    def stop(self):
        """Ends all processes, the last started first."""
        for process in reversed(self.all):
            process.stop()

    def sanitizer_reports(self):
        """Lines in which a sanitizer complains."""
        return [f'{process.name}: {line}' for process in self.all for line in process.lines()
                if any(report in line for report in SANITIZER_REPORTS)]
