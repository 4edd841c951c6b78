# SPDX-FileCopyrightText: velmora-installationhandler contributors
# SPDX-License-Identifier: BSD-3-Clause
"""The record of the model."""

from model.seen import Seen


class Trace:
    """All that can be seen of the service, as the model says."""

    def __init__(self):
        self.exit_status = None
        self.screen = {}
        self._session_bus, self._system_bus, self._log = [], [], []

    def signal(self, name, *arguments):
        self._session_bus.append(('signal', name, *arguments))

    def reply(self, request):
        self._session_bus.append(('reply', request))

    def call(self, bus, method, arguments):
        (self._session_bus if bus == 'session' else self._system_bus).append(('call', method, *arguments))

    def debug(self, text):
        self._log.append(f'debug: {text}')

    def warning(self, text):
        self._log.append(f'warning: {text}')

    def take(self):
        """All that can be seen since the last call."""
        seen = Seen(self._session_bus, self._system_bus, self._log, list(self.screen.items()), self.exit_status)
        self._session_bus, self._system_bus, self._log = [], [], []
        return seen


def quoted(*texts):
    """Texts as the log shows them."""
    return ' '.join('"' + text.replace('\\', '\\\\').replace('"', '\\"').replace('\n', '\\n') + '"' for text in texts)
