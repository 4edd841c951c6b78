# SPDX-FileCopyrightText: velmora-installationhandler contributors
# SPDX-License-Identifier: BSD-3-Clause
"""A display with a keyboard and a pointer, and the service's dialog on it."""

import os
import subprocess
import time

from .processes import DEADLINE, WaitFailed
from .windowmanager import ask_to_close

# The Xvfb options of a phone: 360 by 640 density-independent pixels.
PHONE = ('-screen', '0', '540x960x24', '-dpi', '240')

# Qt's default highlight colour. The button "Install" is the only large area that has it.
HIGHLIGHT = bytes((48, 140, 198))

# A window that has not been painted yet has one colour; text alone has dozens, from its smooth edges.
COLOURS_OF_A_PAINTED_WINDOW = 16


class Screen:
    """An X server, and what a user does on it."""

    # The options by which xdotool finds the window of the dialog.
    window_search = ('--onlyvisible', '--class', 'velmora-installationhandler')

    def __init__(self, processes, display):
        self.display = display
        self._processes = processes
        self._width = int(self._do('getdisplaygeometry').split()[0])

    @classmethod
    def in_memory(cls, processes, options=('-screen', '0', '1280x720x24')):
        """A new one, without a window manager."""
        server = processes.start('X server', ['Xvfb', '-displayfd', '1', *options, '-nolisten', 'tcp', '-noreset'])
        number = processes.wait_line(server, str.isdigit, 'start of the X server')
        return cls(processes, f':{number}')

    def environment(self):
        """The variables that a program needs to appear on this screen."""
        return {'DISPLAY': self.display, 'QT_QPA_PLATFORM': 'xcb'}

    def wait_for_window(self, pid, after=None):
        """Waits for a visible window of a process, other than the one before, and returns its identifier."""
        found = []

        def appears():
            windows = self._do('search', '--sync', '--onlyvisible', '--pid', pid).split()
            found.extend(window for window in windows if window != after)
            return found
        self._look_until(appears, f'window of process {pid}')
        return found[0]

    def title(self, window):
        """The title of a window."""
        return self._do('getwindowname', window).strip()

    def press_keys(self, window, *keys):
        """Gives a window the focus and presses keys, by the names of X keysyms."""
        self._do('windowfocus', window, 'key', *keys)

    def confirm(self, window):
        """Chooses "Install" in the dialog: goes on from "Cancel", which comes first. Only this window gets the keys."""
        self._do('windowfocus', '--sync', window)
        self._do('key', '--window', window, 'Tab', 'space')

    def click(self, x, y, times=1):
        """Clicks at a point of the screen, as fast as one can when more than once."""
        self._do('mousemove', x, y, 'click', '--repeat', times, '--delay', 20, 1)

    def ask_to_close(self, window):
        """Asks a window to close, as a window manager does."""
        ask_to_close(self.display, int(window))

    def save_picture(self, window, path):
        """Waits until a window has been painted, and saves a picture of it."""
        def is_painted():
            self._run('import', '-window', window, path)
            return int(self._run('identify', '-format', '%k', path)) >= COLOURS_OF_A_PAINTED_WINDOW
        self._look_until(is_painted, f'contents of window {window}')

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

    def colours(self):
        """The number of colours on the screen."""
        picture = self._picture()
        return len({picture[start:start + 3] for start in range(0, len(picture), 3)})

    def _picture(self):
        """All pixels from left to right and top to bottom, three bytes each."""
        return self._run('import', '-window', 'root', '-depth', '8', 'rgb:-')

    def _run(self, *command):
        return subprocess.run([str(word) for word in command], check=True, capture_output=True, timeout=DEADLINE,
                              env={**os.environ, 'DISPLAY': self.display}).stdout

    def _look_until(self, condition, what):
        """Looks again and again: nothing announces that something has been painted."""
        end = time.monotonic() + DEADLINE
        while not condition():
            if time.monotonic() > end:
                raise WaitFailed(f'not within {DEADLINE} s: {what}')
            self._processes.run_pending()
            time.sleep(0.05)

    def _do(self, *arguments):
        words = [str(argument) for argument in arguments]
        return self._processes.run('xdotool ' + words[0], ['xdotool', *words], {'DISPLAY': self.display})
