# SPDX-FileCopyrightText: velmora-installationhandler contributors
# SPDX-License-Identifier: BSD-3-Clause
"""The dialog that asks the user."""

CONFIRMED, REFUSED, DISPLAY_OFF = 3000000, 1000000, 0
KEPT_ON = 30000


class Dialog:
    """Asks about one file at a time. A dialog that is shown over another one makes the service forget the first."""

    def __init__(self, loop, peers, trace):
        self._loop = loop
        self._peers = peers
        self._trace = trace
        self.listeners = []
        self._package_name = ''
        self._window = None
        self._number = 0

    @property
    def on_screen(self):
        return self._window is not None

    def show(self, file):
        self._package_name = file.header.name
        self._trace.signal('needConfirm')
        self._number += 1
        self._window = self._number
        yield from self._peers.ask('notification_begin_req', self._package_name, KEPT_ON, KEPT_ON)
        self._trace.screen[self._window] = (*file.header, file.path)

    def confirmed(self):
        """All who listen hand their files over before the dialog goes."""
        for installation in self._present_listeners():
            installation.hand_over()
        yield from self._end_notification(CONFIRMED)
        self._close()

    def refused(self, linger=REFUSED):
        """The dialog goes before all who listen hear of it."""
        yield from self._end_notification(linger)
        self._close()
        for installation in self._present_listeners():
            yield from installation.cancelled()

    def display_turned_off(self):
        if self._window is not None:
            yield from self.refused(DISPLAY_OFF)

    def _present_listeners(self):
        self.listeners = [listener for listener in self.listeners if not self._loop.is_deleted(listener)]
        return list(self.listeners)

    def _end_notification(self, linger):
        yield from self._peers.ask('notification_end_req', self._package_name, linger)

    def _close(self):
        if self._window is not None:
            number, self._window = self._window, None
            self._loop.delete_later(object(), lambda: self._trace.screen.pop(number))
