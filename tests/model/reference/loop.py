# SPDX-FileCopyrightText: velmora-installationhandler contributors
# SPDX-License-Identifier: BSD-3-Clause
"""The service's only thread."""

from collections import deque


class Loop:
    """Handles one event after the other. A call that blocks makes all other events wait.

    The handler of an event is a generator if it may block. It yields only while it waits.
    """

    def __init__(self):
        self._events = deque()
        self._under_way = deque()
        self._handler = None
        self._deleted = set()
        self.is_certain = True

    @property
    def blocked(self):
        """Whether a call blocks the thread."""
        return self._handler is not None

    def post(self, handler, owner=None):
        """Appends an event. It is dropped if its owner has been deleted by then."""
        self._events.append((handler, owner))

    def post_later(self, handler, in_two=False):
        """Sends an event that takes its time on the bus. It is certain to have arrived when the thread waits. The order
        of events is not certain any more if the thread has others to handle meanwhile.

        With `in_two` the event leads to another one, which is the one that counts. That one is not certain to have arrived
        while the thread is blocked.
        """
        self._under_way.append((handler, in_two))

    def delete_later(self, owner, last=lambda: None):
        """Deletes an object after the events that wait already. `last` is called then."""
        def delete():
            self._deleted.add(owner)
            last()
        self.post(delete, owner)

    def is_deleted(self, owner):
        return owner in self._deleted

    def run(self):
        """Handles the events until one blocks."""
        self._handle_events()
        while self._under_way and not self.blocked:
            self.post(self._under_way.popleft()[0])
            self._handle_events()
        for handler, in_two in self._under_way:
            if not in_two:
                self.post(handler)
        self._under_way = deque((handler, True) for handler, in_two in self._under_way if in_two)

    def resume(self, reply):
        """Goes on with the handler that has been blocked."""
        handler, self._handler = self._handler, None
        if handler is None:
            return
        try:
            handler.send(reply)
            self._handler = handler
        except StopIteration:
            pass

    def _handle_events(self):
        while self._events and not self.blocked:
            self.is_certain = self.is_certain and not self._under_way
            handler, owner = self._events.popleft()
            if owner is None or not self.is_deleted(owner):
                self._handler = handler()
                self.resume(None)
