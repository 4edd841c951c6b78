# SPDX-FileCopyrightText: velmora-installationhandler contributors
# SPDX-License-Identifier: BSD-3-Clause
"""The screen reader Orca, and the lines that it speaks."""

import re
import sys
from itertools import groupby

from . import speechserver
from .devicestate import make_own_folder

# Orca would say the pressed keys too, at any time among the other words.
ORCA = ('orca', '--disable', 'key-echo,braille')
# Orca runs its user's own Python file when it starts. The main loop, in which it learns of events, comes last.
RUNS = 'main loop runs'
CUSTOMIZATIONS = f'''
from functools import partial
from gi.repository import GLib
GLib.idle_add(partial(print, '{RUNS}', flush=True))
'''


class Orca:
    """Orca in the session. Its words depend on its version: Debian 12 has 43, Debian 13 has 48."""

    def __init__(self, processes, device, environment):
        """The environment is that of a program on a display."""
        self._processes = processes
        self.version = int(re.search(r'\d+', processes.run('orca --version', ['orca', '--version'], environment))[0])
        self._speech = processes.start_in_session('speech server', [sys.executable, '-B', speechserver.__file__])
        processes.wait_line(self._speech, lambda line: line == speechserver.READY, 'start of the speech server')
        folder = make_own_folder(device.home / '.local/share/orca')
        (folder / 'orca-customizations.py').write_text(CUSTOMIZATIONS, encoding='utf-8')
        self._reader = processes.start_in_session('Orca', ORCA, {**environment, 'GSETTINGS_BACKEND': 'memory'})
        processes.wait_line(self._reader, lambda line: line == RUNS, 'start of Orca')
        self._heard = 0
        self.wait_lines('Screen reader on.')

    def wait_lines(self, *expected):
        """Waits until it has spoken these lines, and no other ones, since the last time."""
        begin, end = self._heard, self._heard + len(expected)
        self._processes.wait_until(lambda: len(self._lines()) >= end, f'{expected} from Orca')
        assert self._lines()[begin:end] == list(expected)
        self._heard = end

    def stop(self):
        """Kills it. It takes notice of other signals only when something happens."""
        self._processes.kill(self._reader)

    def _lines(self):
        # Qt announces every name when it is given first. Orca 48 may handle that after the focus, and says the button
        # that has the focus again then. Of a further dialog it may say the window without its role.
        return [line.removesuffix(' frame') for line, _ in groupby(self._speech.lines()[1:])]
