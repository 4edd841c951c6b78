# SPDX-FileCopyrightText: velmora-installationhandler contributors
# SPDX-License-Identifier: BSD-3-Clause
"""A display with a keyboard and a pointer, and the service's dialog on it."""

import itertools
import os
import subprocess
import time

from .pauses import check_no_pause
from .pointer import pointer
from .processes import DEADLINE, WaitFailed
from .windowmanager import ask_to_close, cover, take_focus

# The Xvfb options of a phone: 360 by 640 density-independent pixels.
PHONE = ('-screen', '0', '540x960x24', '-dpi', '240')

# The colour of a button that takes a pointer: a fifth of Qt's default highlight colour on white. "Cancel", on the left,
# always has it, and "Install" once it is ready. Nothing else has it.
READY = bytes((214, 232, 244))

# A window that has not been painted yet has one colour; text alone has dozens, from its smooth edges.
COLOURS_OF_A_PAINTED_WINDOW = 16


def points(left, top, right, bottom):
    """Points all over a rectangle, ten in a row."""
    return [(x, y) for y in range(top, bottom, max(1, (bottom - top) // 3))
            for x in range(left, right, max(1, (right - left) // 10))]


class Screen:
    """An X server, and what a user does on it."""

    # The xdotool command that chooses "Install" in the dialog which has the focus: it goes on from "Cancel", which comes
    # first. It names no window, because that one is gone before the second key is lifted. A key that stays down repeats, and
    # would decline the next dialog.
    confirmation = ('key', 'Tab', 'space')

    # The colour of a button that takes a pointer.
    ready = READY

    def __init__(self, processes, display):
        self.display = display
        self._processes = processes
        self.width, self.height = map(int, self._do('getdisplaygeometry').split())

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
        """Chooses "Install" in the dialog."""
        self._do('windowfocus', '--sync', window, *self.confirmation)

    def click(self, x, y, times=1):
        """Clicks at a point of the screen, as fast as one can when more than once."""
        self._do('mousemove', x, y, 'click', '--repeat', times, '--delay', 20, 1)

    def ask_to_close(self, window):
        """Asks a window to close, as a window manager does."""
        ask_to_close(self.display, int(window))

    def take_focus(self):
        """Takes the focus from the dialog, as a window that covers it does, and waits until it takes no pointer."""
        take_focus(self.display)
        self.wait_for_install_to_rest()

    def wait_for_install_to_rest(self):
        """Waits until the dialog's button "Install" takes no pointer any more, or is not in sight."""
        self._look_until(lambda: not self._install_area(), 'button "Install" that takes no pointer')

    def covered(self):
        """A context in which a window lies over the dialog, which keeps the focus."""
        return cover(self.display, self.width, self.height)

    def give_focus(self, window):
        """Gives a window the focus."""
        self._do('windowfocus', '--sync', window)

    def save_picture(self, window, path):
        """Waits until a window has been painted, and saves a picture of it."""
        def is_painted():
            self._run('import', '-window', window, path)
            return int(self._run('identify', '-format', '%k', path)) >= COLOURS_OF_A_PAINTED_WINDOW
        self._look_until(is_painted, f'contents of window {window}')

    def wait_for_install_area(self):
        """Waits until the dialog's button "Install" takes a pointer; its left, top, right and bottom."""
        # A compositor may paint the pointer over the button.
        self._do('mousemove', 0, 0)
        found = []

        def is_ready():
            found[:] = self._install_area()
            return found
        self._look_until(is_ready, 'button "Install" that takes a pointer')
        return found

    def wait_for_install_button(self):
        """Waits until the dialog's button "Install" takes a pointer; a point on it."""
        left, top, right, bottom = self.wait_for_install_area()
        return (left + right) // 2, (top + bottom) // 2

    def wait_for_cancel_button(self):
        """Waits until both buttons take a pointer; a point on "Cancel", at the other side of the middle."""
        x, y = self.wait_for_install_button()
        return self.width - 1 - x, y

    def places_on_buttons(self):
        """Waits until the dialog takes a pointer; points all over "Install" and all over "Cancel"."""
        left, top, right, bottom = self.wait_for_install_area()
        return (points(left, top, right, bottom),
                points(self.width - 1 - right, top, self.width - 1 - left, bottom))

    def tap(self, places, duration, since=None):
        """Clicks 20 times a second, for a number of seconds, at each place in turn; the time of the last click. Raises Paused
        if the dialog may have got ready between two clicks, or between the time `since` and the first one."""
        begun = time.monotonic()
        last = since or begun
        with pointer(self.display) as click:
            for x, y in itertools.cycle(places):
                now = time.monotonic()
                click(x, y)
                check_no_pause(last)
                last = now
                if now > begun + duration:
                    return last
                time.sleep(max(0, now + 0.05 - time.monotonic()))

    def colours(self):
        """The number of colours on the screen."""
        picture = self._picture()
        return len({picture[start:start + 3] for start in range(0, len(picture), 3)})

    def _install_area(self):
        """The left, top, right and bottom of the button "Install" if it takes a pointer. In languages that are written from
        right to left, where it is on the left, that of "Cancel"."""
        picture = self._picture()
        first, last = picture.find(self.ready * 100) // 3, picture.rfind(self.ready * 100) // 3
        row, middle = first - first % self.width, self.width // 2
        left = picture.find(self.ready * 100, 3 * (row + middle)) // 3 - row
        if first < 0 or first - row > middle or not 0 < left < self.width:
            return ()
        return left, row // self.width, last % self.width + 99, last // self.width

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
