# SPDX-FileCopyrightText: velmora-installationhandler contributors
# SPDX-License-Identifier: BSD-3-Clause
"""A terminal for a program, and what it shows."""

import fcntl
import os
import re
import struct
import subprocess
import termios
import unicodedata

from gi.repository import GLib

# The control sequences that the program may use: back to the begin of the line, empty its rest, colours.
COLOUR = re.compile(r'\033\[[0-9;]*m')
SEQUENCE = re.compile(rf'\r|\n|\033\[K|{COLOUR.pattern}')


class Terminal:
    """A pseudo-terminal that a program is started on."""

    def __init__(self, processes, columns=80):
        self._processes = processes
        self._bytes = b''
        self._here, self._there = os.openpty()
        self.resize(columns)
        os.set_blocking(self._here, False)
        self._watch = GLib.io_add_watch(self._here, GLib.PRIORITY_DEFAULT, GLib.IO_IN, self._on_output)
        self.process = None

    def start(self, command, folder='/'):
        """Starts the program, whose terminal this becomes, also for Ctrl-C."""
        popen = subprocess.Popen(command, cwd=folder, stdin=self._there, stdout=self._there, stderr=self._there,
                                 start_new_session=True,
                                 preexec_fn=lambda: fcntl.ioctl(0, termios.TIOCSCTTY, 0))
        popen.stdout = open(os.devnull, 'rb')
        self.process = self._processes.watch('installctl', popen)
        self.process.end_awaited = True

    def resize(self, columns):
        """Gives the window another width."""
        self.columns = columns
        fcntl.ioctl(self._here, termios.TIOCSWINSZ, struct.pack('HHHH', 24, columns, 0, 0))

    def type(self, keys):
        """The user presses these keys."""
        os.write(self._here, keys)

    def text(self):
        """All that has been written."""
        return self._bytes.decode(errors='ignore')

    def wait_text(self, pattern):
        """Waits until the text has a match of the pattern, and returns the match."""
        self._processes.wait_until(lambda: re.search(pattern, self.text()) or not self.process.alive,
                                   f'{pattern} on the terminal')
        match = re.search(pattern, self.text())
        assert match, self.text()
        return match

    def wait_end(self):
        """The exit status, and the lines that stay, without colours."""
        status = self._processes.wait_end(self.process)
        self._read()
        return status, self.lines()

    def lines(self):
        """The lines that are shown."""
        lines, line, position = [], '', 0
        for part in re.split(f'({SEQUENCE.pattern})', self.text()):
            if part == '\n':
                lines.append(line)
                line = ''
            elif part == '\r':
                position = 0
            elif part == '\033[K':
                line = line[:position]
            elif not SEQUENCE.fullmatch(part):
                assert '\033' not in part and part.isprintable(), part
                line = line[:position] + part + line[position + len(part):]
                position += len(part)
        return [*lines, line] if line else lines

    def states(self):
        """All that the changing line has shown, in turn."""
        return [part for part in re.split(r'\r\033\[K|\r?\n', COLOUR.sub('', self.text())) if part]

    def close(self):
        """Takes the terminal away."""
        if self._watch is None:
            return
        GLib.source_remove(self._watch)
        self._watch = None
        os.close(self._here)
        os.close(self._there)

    def _on_output(self, _source, _condition):
        self._read()
        return True

    def _read(self):
        try:
            while True:
                self._bytes += os.read(self._here, 1 << 16)
        except BlockingIOError:
            pass


def width(text):
    """The columns that a text takes."""
    return sum(0 if unicodedata.combining(character) else 2 if unicodedata.east_asian_width(character) in 'WF' else 1
               for character in text)
