# SPDX-FileCopyrightText: velmora-installationhandler contributors
# SPDX-License-Identifier: BSD-3-Clause
"""The notification of a refused installation."""


class Notification:
    """Takes the place of the one before, as long as that may be on screen."""

    def __init__(self, peers, system_name):
        self._peers = peers
        self._system_name = system_name
        self._number = 0
        self._question = None

    def show(self, text):
        self._question = question = object()

        def answered(reply):
            if question is self._question:
                self._number = reply.value or 0
        self._peers.send('Notify', '', self._number, 'icon-lock-warning', self._system_name, text, [],
                         {'urgency': 2, 'transient': True, 'image-path': 'dialog-warning'}, -1, answered=answered)

    def server_has_left(self):
        self._question = None
        self._number = 0
