# SPDX-FileCopyrightText: velmora-installationhandler contributors
# SPDX-License-Identifier: BSD-3-Clause
"""The display's state."""


class Display:
    """The display's state, as far as the service knows. MCE is asked for it when it appears."""

    def __init__(self, peers, dialog):
        self._peers = peers
        self._dialog = dialog
        self._state = 'on'
        self._question = None

    def told(self, state):
        """MCE says it, so an answer that may be older does not count."""
        self._question = None
        yield from self._change(state)

    def mce_has_left(self):
        yield from self.told('on')

    def mce_has_come(self):
        self._question = question = object()

        def answered(reply):
            if question is self._question and isinstance(reply.value, str):
                yield from self._change(reply.value)
        self._peers.send('get_display_status', answered=answered)

    def _change(self, state):
        if state != self._state:
            self._state = state
            if state == 'off':
                yield from self._dialog.display_turned_off()
