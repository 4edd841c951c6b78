# SPDX-FileCopyrightText: velmora-installationhandler contributors
# SPDX-License-Identifier: BSD-3-Clause
"""The pointer of a display. It needs no process for each click, whose start a busy machine could delay."""

import ctypes
from contextlib import contextmanager

from .windowmanager import connect

# A finger rests on the glass for so many milliseconds.
TOUCH = 12

CURRENT_SCREEN = -1
BUTTON = 1


@contextmanager
def pointer(display):
    """A function that clicks at a point of the screen, and returns when the X server has handed the click out."""
    xlib, connection = connect(display)
    # xdotool has the same library.
    xtest = ctypes.CDLL('libXtst.so.6')

    def click(x, y):
        xtest.XTestFakeMotionEvent(connection, CURRENT_SCREEN, x, y, ctypes.c_ulong(0))
        for pressed, delay in ((True, 0), (False, TOUCH)):
            xtest.XTestFakeButtonEvent(connection, BUTTON, pressed, ctypes.c_ulong(delay))
        xlib.XSync(connection, False)
    try:
        yield click
    finally:
        xlib.XCloseDisplay(connection)
