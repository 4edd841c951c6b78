# SPDX-FileCopyrightText: velmora-installationhandler contributors
# SPDX-License-Identifier: BSD-3-Clause
"""What a window manager does, on a display that has none."""

import ctypes
from contextlib import contextmanager

CLIENT_MESSAGE = 33


class ClientMessage(ctypes.Structure):
    """An event of Xlib that carries a message to a window."""

    _fields_ = [('type', ctypes.c_int), ('serial', ctypes.c_ulong), ('send_event', ctypes.c_int),
                ('display', ctypes.c_void_p), ('window', ctypes.c_ulong), ('message_type', ctypes.c_ulong),
                ('format', ctypes.c_int), ('data', ctypes.c_long * 5)]


class Event(ctypes.Union):
    """Xlib's event, which has room for more than any of its kinds needs."""

    _fields_ = [('message', ClientMessage), ('room', ctypes.c_long * 24)]


def connect(display):
    """Xlib, and a connection to a display."""
    xlib = ctypes.CDLL('libX11.so.6')
    xlib.XOpenDisplay.restype = ctypes.c_void_p
    xlib.XInternAtom.restype = ctypes.c_ulong
    return xlib, ctypes.c_void_p(xlib.XOpenDisplay(display.encode()))


def take_focus(display):
    """Leaves no window of a display the focus."""
    xlib, connection = connect(display)
    xlib.XSetInputFocus(connection, ctypes.c_ulong(0), 0, ctypes.c_ulong(0))
    xlib.XCloseDisplay(connection)


def flicker(display, window, hides=False):
    """Takes the focus from a window, and may hide it, and gives it back at once, without a pause in between."""
    xlib, connection = connect(display)
    if hides:
        xlib.XUnmapWindow(connection, ctypes.c_ulong(window))
        xlib.XMapWindow(connection, ctypes.c_ulong(window))
    else:
        xlib.XSetInputFocus(connection, ctypes.c_ulong(0), 0, ctypes.c_ulong(0))
    xlib.XSetInputFocus(connection, ctypes.c_ulong(window), 0, ctypes.c_ulong(0))
    xlib.XCloseDisplay(connection)


@contextmanager
def cover(display, width, height):
    """A context in which a window lies over all others of a display that has no window manager, without the focus."""
    xlib, connection = connect(display)
    xlib.XDefaultRootWindow.restype = ctypes.c_ulong
    xlib.XCreateSimpleWindow.restype = ctypes.c_ulong
    black = ctypes.c_ulong(0)
    window = xlib.XCreateSimpleWindow(connection, ctypes.c_ulong(xlib.XDefaultRootWindow(connection)), 0, 0, width, height,
                                      0, black, black)
    xlib.XMapRaised(connection, ctypes.c_ulong(window))
    xlib.XSync(connection, False)
    yield
    xlib.XUnmapWindow(connection, ctypes.c_ulong(window))
    xlib.XSync(connection, False)
    xlib.XCloseDisplay(connection)


def ask_to_close(display, window):
    """Asks a window to close itself, as the button in its title bar would."""
    xlib, connection = connect(display)
    atoms = [xlib.XInternAtom(connection, name, False) for name in (b'WM_PROTOCOLS', b'WM_DELETE_WINDOW')]
    event = Event(ClientMessage(type=CLIENT_MESSAGE, window=window, message_type=atoms[0], format=32))
    event.message.data[0] = atoms[1]
    assert xlib.XSendEvent(connection, ctypes.c_ulong(window), False, ctypes.c_long(0), ctypes.byref(event))
    xlib.XCloseDisplay(connection)
