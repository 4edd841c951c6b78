# SPDX-FileCopyrightText: velmora-installationhandler contributors
# SPDX-License-Identifier: BSD-3-Clause
"""The shell of `./run-demo --shell`."""

import os
import re

ENDED = 'ended with '


class Shell:
    """Prepares this device as `./run-demo --shell` does, and types commands into its shell."""

    def __init__(self, source, folder, processes, environment):
        keyboard = folder / 'keyboard'
        os.mkfifo(keyboard)
        self._keyboard = os.open(keyboard, os.O_RDWR)
        self._processes = processes
        self._read = 0
        self.picture = folder / 'dialog.png'
        command = ['sh', '-c', 'exec "$0" --shell "$1" <"$2"', source / 'demo/run', self.picture, keyboard]
        self._process = processes.start('shell', command, environment)
        self.welcome = self._read_to('  Logs:')

    def hint(self, subject):
        """The command that the welcome suggests for a subject."""
        return re.search(rf'^  {subject}: +((?:.*\\\n)*.*)$', self.welcome, re.MULTILINE)[1]

    def run(self, command):
        """Runs a command, which must succeed, and returns its output."""
        self._type(f'{command.strip()}\necho "{ENDED}$?"')
        said = self._read_to(ENDED)
        assert said.endswith(f'{ENDED}0\n'), f'{command}\n{said}'
        return said.removesuffix(f'{ENDED}0\n')

    def wait_for_line(self, text, file, count=1):
        """Waits until a file has this number of lines with a text."""
        self.run(f'until [ "$(grep --count --fixed-strings "{text}" {file})" -ge {count} ]; do sleep 0.1; done')

    def leave(self, status):
        """Leaves the shell and returns the exit status of the whole program."""
        self._type(f'exit {status}')
        status = self._processes.wait_end(self._process)
        os.close(self._keyboard)
        return status

    def _type(self, line):
        os.write(self._keyboard, f'{line}\n'.encode())

    def _read_to(self, beginning):
        """Waits for a line with this beginning, and returns the output up to its end."""
        def read():
            return re.match(rf'(.*\n)*?{re.escape(beginning)}.*\n', self._process.text[self._read:])
        self._processes.wait_until(read, f'"{beginning}" in the shell', seconds=60)
        said = read()[0]
        self._read += len(said)
        return said
