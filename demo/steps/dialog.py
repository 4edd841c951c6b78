# SPDX-FileCopyrightText: velmora-installationhandler contributors
# SPDX-License-Identifier: BSD-3-Clause
"""The confirmation dialog, as a person sees and taps it: through the display."""

import time

from steps.program import DEADLINE, run
from steps.progress import Failure

CLASS = 'velmora-installationhandler'

# A window that has not been painted yet has one colour; text alone has dozens, from its smooth edges.
COLOURS_OF_A_PAINTED_WINDOW = 16


class Dialog:
    """The dialog's window; waits until it is on the display."""

    def __init__(self):
        self._window = run('timeout', str(DEADLINE), 'xdotool', 'search', '--sync', '--onlyvisible', '--class',
                           CLASS).split()[-1]

    @property
    def title(self):
        return run('xdotool', 'getwindowname', self._window).strip()

    def take_picture(self, path):
        """Saves a picture of the dialog when it has been painted. Nothing announces that, so look until it has."""
        end = time.monotonic() + DEADLINE
        while time.monotonic() < end:
            run('import', '-window', self._window, str(path))
            if int(run('identify', '-format', '%k', str(path))) >= COLOURS_OF_A_PAINTED_WINDOW:
                return
        raise Failure(f'the dialog stayed empty for {DEADLINE} seconds')

    def confirm(self):
        """Goes on from "Cancel", which comes first, to "Install", and chooses it; by keys sent to this window alone."""
        run('xdotool', 'windowfocus', '--sync', self._window)
        run('xdotool', 'key', '--window', self._window, 'Tab', 'space')
