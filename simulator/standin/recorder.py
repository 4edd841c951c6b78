# SPDX-FileCopyrightText: velmora-installationhandler contributors
# SPDX-License-Identifier: BSD-3-Clause
"""The record of a stand-in: the calls that it has received, and the unexpected ones."""

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
        """Remembers a mistake of the service or of a test."""
        self.unexpected.append(text)
        self.log('UNEXPECTED ' + text)

    def clear(self):
        """Forgets the calls, but not what was unexpected."""
        self.calls.clear()

    @staticmethod
    def log(text):
        """Prints one line, stamped with CLOCK_MONOTONIC in seconds."""
        print(f'{time.monotonic():.6f} {text}', flush=True)
