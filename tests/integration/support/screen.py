# SPDX-FileCopyrightText: velmora-installationhandler contributors
# SPDX-License-Identifier: BSD-3-Clause
"""A display for the real dialog, with a keyboard and a pointer."""

from .processes import DEADLINE_S


class Screen:
    """An X server without a window manager, and what a user does on it."""

    def __init__(self, processes, size='1280x720'):
        self._processes = processes
        server = processes.start('X server', ['Xvfb', '-displayfd', '1', '-screen', '0', f'{size}x24',
                                              '-nolisten', 'tcp'])
        processes.wait_until(lambda: any(line.isdigit() for line in server.lines()), 'start of the X server')
        self.display = ':' + next(line for line in server.lines() if line.isdigit())

    def environment(self):
        """What a program needs to appear on this screen."""
        return {'DISPLAY': self.display, 'QT_QPA_PLATFORM': 'xcb'}

    def wait_for_window(self, process):
        """Waits for a visible window of a process and returns its identifier."""
        return self._do('search', '--sync', '--onlyvisible', '--pid', process.pid).split()[0]

    def press_keys(self, window, *keys):
        """Gives a window the focus and presses keys, by the names of X keysyms."""
        self._do('windowfocus', window, 'key', *keys)

    def click(self, x, y):
        """Clicks at a point of the screen."""
        self._do('mousemove', x, y, 'click', 1)

    def _do(self, *arguments):
        words = [str(argument) for argument in arguments]
        process = self._processes.start('xdotool ' + words[0], ['xdotool', *words], {'DISPLAY': self.display})
        assert self._processes.wait_end(process, DEADLINE_S) == 0, f'xdotool {words}: {process.text}'
        return process.text
