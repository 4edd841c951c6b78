# SPDX-FileCopyrightText: velmora-installationhandler contributors
# SPDX-License-Identifier: BSD-3-Clause
"""The queue of installations."""


class Queue:
    """Installations wait while a dialog is on screen. The end of any of them starts the next one."""

    def __init__(self, loop, count, dialog):
        self.waiting = []
        self._loop = loop
        self._count = count
        self._dialog = dialog
        self._starting = None

    def add(self, installation):
        self.waiting.append(installation)
        if not self._dialog.on_screen:
            yield from self._start_next()

    def ended(self, installation):
        """An installation that has ended calls this, also one that ends while it is started."""
        self._loop.delete_later(installation)
        self._count.end()
        if installation is self._starting:
            self._starting = None
        else:
            yield from self._start_next()

    def _start_next(self):
        ended = True
        while ended and self.waiting:
            self._starting = installation = self.waiting.pop(0)
            self._count.begin()
            self._dialog.listeners.append(installation)
            yield from installation.start()
            ended = self._starting is None
            self._starting = None
        self._count.update()
