# SPDX-FileCopyrightText: velmora-installationhandler contributors
# SPDX-License-Identifier: BSD-3-Clause
"""The display that the dialog appears on."""

import os

from steps.program import Companion, run
from steps.progress import Failure

# A phone: 360 by 640 density-independent pixels.
SCREEN = ('-screen', '0', '540x960x24', '-dpi', '240')


class Display:
    """The display of the person who watches, where there is one; else one in memory, which nobody can tap."""

    def __init__(self):
        self.watched = 'DISPLAY' in os.environ and answers()
        if not self.watched:
            os.environ['DISPLAY'] = in_memory()

    @property
    def environment(self):
        """What a program needs to appear on it. The picture is made without graphics hardware: a device may have none."""
        names = ('DISPLAY', 'XAUTHORITY', 'QT_X11_NO_MITSHM')
        return {**{name: os.environ[name] for name in names if name in os.environ},
                'QT_QPA_PLATFORM': 'xcb', 'QT_QUICK_BACKEND': 'software'}


def answers():
    try:
        run('xdotool', 'getdisplaygeometry')
    except Failure:
        return False
    return True


def in_memory():
    server = Companion('/var/log/display.log', 'Xvfb', '-displayfd', '1', *SCREEN)
    return ':' + server.await_line(str.isdigit)
