# SPDX-FileCopyrightText: velmora-installationhandler contributors
# SPDX-License-Identifier: BSD-3-Clause
"""A display for the real dialog, with a keyboard and a pointer."""

import os
import subprocess
import time

from .processes import DEADLINE_S, WaitFailed
from .windowmanager import ask_to_close

# Where no theme says otherwise, the toolkit's colour of what stands out: of all large areas, the button "Install".
HIGHLIGHT = bytes((48, 140, 198))


class Screen:
    """An X server without a window manager, and what a user does on it."""

    def __init__(self, processes, size='1280x720'):
        self._processes = processes
        self._width = int(size.partition('x')[0])
        server = processes.start('X server', ['Xvfb', '-displayfd', '1', '-screen', '0', f'{size}x24',
                                              '-nolisten', 'tcp'])
        processes.wait_until(lambda: any(line.isdigit() for line in server.lines()), 'start of the X server')
        self.display = ':' + next(line for line in server.lines() if line.isdigit())

    def environment(self):
        """What a program needs to appear on this screen."""
        return {'DISPLAY': self.display, 'QT_QPA_PLATFORM': 'xcb'}

    def wait_for_window(self, process, after=None):
        """Waits for a visible window of a process, other than the one before, and returns its identifier."""
        found = []

        def appears():
            windows = self._do('search', '--sync', '--onlyvisible', '--pid', process.pid).split()
            found.extend(window for window in windows if window != after)
            return found
        self._look_until(appears, f'window of {process.name}')
        return found[0]

    def press_keys(self, window, *keys):
        """Gives a window the focus and presses keys, by the names of X keysyms."""
        self._do('windowfocus', window, 'key', *keys)

    def click(self, x, y, times=1):
        """Clicks at a point of the screen, as fast as one can when more than once."""
        self._do('mousemove', x, y, 'click', '--repeat', times, '--delay', 20, 1)

    def ask_to_close(self, window):
        """Asks a window to close, as a window manager does."""
        ask_to_close(self.display, int(window))

    def wait_for_install_button(self):
        """Waits until the dialog's button "Install" has been painted; a point on it."""
        # A button below the pointer has another colour.
        self._do('mousemove', 0, 0)
        found = []

        def is_painted():
            start = self._picture().find(HIGHLIGHT * 100)
            found[:] = [] if start < 0 else [start // 3]
            return found
        self._look_until(is_painted, 'button "Install"')
        return found[0] % self._width + 50, found[0] // self._width + 20

    def wait_for_cancel_button(self):
        """Waits until the buttons have been painted; a point on "Cancel", at the other side of the middle."""
        x, y = self.wait_for_install_button()
        return self._width - x, y

    def _picture(self):
        """All pixels from left to right and top to bottom, three bytes each."""
        return subprocess.run(['import', '-window', 'root', '-depth', '8', 'rgb:-'], check=True, capture_output=True,
                              timeout=DEADLINE_S, env={**os.environ, 'DISPLAY': self.display}).stdout

    def _look_until(self, condition, what):
        """Looks again and again: nothing announces that something has been painted."""
        end = time.monotonic() + DEADLINE_S
        while not condition():
            if time.monotonic() > end:
                raise WaitFailed(f'not within {DEADLINE_S} s: {what}')
            self._processes.run_pending()

    def _do(self, *arguments):
        words = [str(argument) for argument in arguments]
        process = self._processes.start('xdotool ' + words[0], ['xdotool', *words], {'DISPLAY': self.display})
        assert self._processes.wait_end(process, DEADLINE_S) == 0, f'xdotool {words}: {process.text}'
        return process.text
