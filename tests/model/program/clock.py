# SPDX-FileCopyrightText: velmora-installationhandler contributors
# SPDX-License-Identifier: BSD-3-Clause
"""The clock of the program, which stands still but for the steps that let time pass."""

import mmap

from model.device import FOLDER

FILE = FOLDER / 'clock'


class Clock:
    """The monotonic clock of all processes that run in its environment."""

    def __init__(self, library):
        """`library` is the file that stillclock.cpp has been built to."""
        FILE.write_bytes(bytes(8))
        FILE.chmod(0o644)
        with FILE.open('r+b') as file:
            self._seconds = mmap.mmap(file.fileno(), 8)
        self.environment = {'LD_PRELOAD': str(library), 'STILL_CLOCK': str(FILE)}

    def set(self, seconds):
        """The clock then shows this number of seconds more than at the start of the process."""
        self._seconds[:] = seconds.to_bytes(8, 'little')
