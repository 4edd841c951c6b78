# SPDX-FileCopyrightText: velmora-installationhandler contributors
# SPDX-License-Identifier: BSD-3-Clause
"""The memory of a stand-in: the calls it has seen, and what it did not expect."""

import time


class Recorder:
    """Remembers calls and unexpected events, and prints both to the stand-in's log."""

    def __init__(self):
        self.calls = []
        self.unexpected = []
        self.call_seen = lambda call: None

    def add(self, call):
        """Remembers a call and announces it."""
        self.calls.append(call)
        self.log(str(call))
        self.call_seen(call)

    def add_unexpected(self, text):
        """Remembers something that a correct peer, or a correct test, does not do."""
        self.unexpected.append(text)
        self.log('UNEXPECTED ' + text)

    def clear(self):
        """Forgets the calls seen; what was unexpected stays known."""
        self.calls.clear()

    @staticmethod
    def log(text):
        """One line on standard output, stamped with CLOCK_MONOTONIC in seconds."""
        print(f'{time.monotonic():.6f} {text}', flush=True)
