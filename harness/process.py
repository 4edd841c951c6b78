# SPDX-FileCopyrightText: velmora-installationhandler contributors
# SPDX-License-Identifier: BSD-3-Clause
"""A child process whose output and end arrive in the main loop."""

import os
import signal
import subprocess

from gi.repository import GLib


class Process:
    """A running program with its standard output and error, kept line by line.

    `returncode` is None while it runs, and like that of subprocess.Popen afterwards. The file `log`, if any, gets the
    output too.
    """

    def __init__(self, name, popen, log=None):
        """`popen` is the process, whose output and errors go to a pipe."""
        self.name = name
        self.text = ''
        self.returncode = None
        self.end_awaited = False
        self._log = log
        self._popen = popen
        self.pid = popen.pid
        self._output = popen.stdout.fileno()
        os.set_blocking(self._output, False)
        self._end = os.pidfd_open(self.pid)
        self._raw = b''
        self._output_watch = self._watch(self._output, self._on_output)
        self._end_watch = self._watch(self._end, self._on_end)

    @property
    def alive(self):
        """Whether it runs, as far as the main loop knows."""
        return self.returncode is None

    def lines(self):
        """The complete lines so far."""
        return self.text.splitlines()

    def send_signal(self, number):
        """Sends a signal, after which an end is no surprise."""
        self.end_awaited = True
        self._popen.send_signal(number)

    def stop(self):
        """Ends the program if it still runs, and keeps the rest of its output."""
        if not self.alive:
            return
        self.send_signal(signal.SIGTERM)
        try:
            self._popen.wait(timeout=10)
        except subprocess.TimeoutExpired:
            self._popen.kill()
        GLib.source_remove(self._end_watch)
        self._finish()

    @staticmethod
    def _watch(descriptor, ready):
        return GLib.io_add_watch(descriptor, GLib.PRIORITY_DEFAULT, GLib.IO_IN | GLib.IO_HUP, ready)

    def _on_output(self, _source, _condition):
        more = self._read()
        if not more:
            self._output_watch = None
        return more

    def _on_end(self, _source, _condition):
        self._finish()
        return False

    def _finish(self):
        self.returncode = self._popen.wait()
        os.close(self._end)
        if self._output_watch:
            GLib.source_remove(self._output_watch)
            self._read()
        self._popen.stdout.close()

    def _read(self):
        """Takes the output that is there; False at its end."""
        while True:
            try:
                chunk = os.read(self._output, 1 << 20)
            except BlockingIOError:
                return True
            if not chunk:
                self._raw += b'\n' if self._raw else b''
            if self._log:
                with open(self._log, 'ab') as log:
                    log.write(chunk)
            self._raw += chunk
            end = self._raw.rfind(b'\n') + 1
            self.text += self._raw[:end].decode(errors='backslashreplace')
            self._raw = self._raw[end:]
            if not chunk:
                return False
