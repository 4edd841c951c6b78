# SPDX-FileCopyrightText: velmora-installationhandler contributors
# SPDX-License-Identifier: BSD-3-Clause
"""The count of operations, and the end of a service that has none."""

IDLE = 30


class Count:
    """The operations that are at work. Without any, and with nobody in the queue, the service ends after 30 seconds."""

    def __init__(self, trace, clock):
        self._trace = trace
        self._clock = clock
        self._operations = 0
        self.queue = None
        self.deadline = clock.now + IDLE

    def begin(self):
        self._operations += 1
        self.update()

    def end(self):
        self._operations -= 1
        if self._operations < 0:
            self._trace.warning('Transaction count out of sync!')
            self._operations = 0
        self.update()

    def update(self):
        """Lets the idle time begin anew, or stops it."""
        self.deadline = None if self._operations or self.queue.waiting else self._clock.now + IDLE
