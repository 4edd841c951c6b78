# SPDX-FileCopyrightText: velmora-installationhandler contributors
# SPDX-License-Identifier: BSD-3-Clause
"""A package's scriptlet that holds its removal up."""

import os
import select
from pathlib import Path

from harness.processes import DEADLINE

PID, GO = Path('/tmp/scriptlet-pid'), Path('/tmp/scriptlet-go')


class WaitingScriptlet:
    """A scriptlet that waits, and the run of rpm around it."""

    commands = f'echo $PPID > {PID}; read line < {GO}'

    def __init__(self, processes):
        self._processes = processes
        self._rpm = None
        for fifo in (PID, GO):
            fifo.unlink(missing_ok=True)
            os.mkfifo(fifo)

    def wait_running(self):
        """Waits until the scriptlet runs."""
        reader = self._processes.start('reader', ['cat', PID])
        self._processes.wait_end(reader)
        self._rpm = os.pidfd_open(int(reader.text))

    def finish(self):
        """Lets the scriptlet end, and waits until rpm has ended too."""
        if self._rpm is None:
            return
        with GO.open('r+b', buffering=0) as go:
            go.write(b'\n')
            ended, _, _ = select.select([self._rpm], [], [], DEADLINE)
        os.close(self._rpm)
        self._rpm = None
        assert ended, 'rpm has not ended in time'
