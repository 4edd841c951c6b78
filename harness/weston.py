# SPDX-FileCopyrightText: velmora-installationhandler contributors
# SPDX-License-Identifier: BSD-3-Clause
"""A Wayland compositor with a keyboard and a pointer, and the service's dialog on it."""

import os
import tempfile
from dataclasses import dataclass

from .screen import COLOURS_OF_A_PAINTED_WINDOW, Screen

SOCKET = 'wayland-0'

# Every part of the picture stands still.
CONFIGURATION = """
[core]
idle-time=0
[shell]
background-color=0xff{background}
clock-format=none
startup-animation=none
close-animation=none
locking=false
[output]
name=X1
mode={width}x{height}
scale={scale}
transform={transform}
"""

# The focus of an X server without a window manager: the window below the pointer gets the keys.
POINTER_ROOT = '1'

# The height of the pointer's picture at scale 1.
POINTER_HEIGHT = 48

# A colour that the dialog does not have.
BACKGROUND = bytes((32, 64, 96))


@dataclass(frozen=True)
class Panel:
    """A display's hardware: its size in units of `scale` pixels, and how it is turned ("rotate-90") to the user."""

    width: int
    height: int
    scale: int = 1
    transform: str = 'normal'

    def options(self):
        """The options of an Xvfb of its size."""
        return '-screen', '0', f'{self.width * self.scale}x{self.height * self.scale}x24'

    def configuration(self):
        """The text of a configuration file of Weston."""
        return CONFIGURATION.format(background=BACKGROUND.hex(), width=self.width, height=self.height,
                                    scale=self.scale, transform=self.transform)


class WestonScreen(Screen):
    """Weston, whose only output is a window on an X server, and what a user does there."""

    def __init__(self, processes, display, panel):
        super().__init__(processes, display)
        self._panel = panel
        with tempfile.NamedTemporaryFile('w', suffix='.ini') as file:
            file.write(panel.configuration())
            file.flush()
            os.chmod(file.name, 0o644)
            processes.start_in_session('Weston', ['weston', f'--config={file.name}', f'--socket={SOCKET}', *renderer()],
                                       {'DISPLAY': display})
            self._window = self._do('search', '--sync', '--class', 'weston').split()[0]
            self._look_until(self.shows_desktop, "Weston's desktop")
            # Weston counts all places from the first one that the pointer has.
            self._do('mousemove', 0, 0)

    @classmethod
    def in_memory(cls, processes, panel):
        """A new one, in a new X server that it fills."""
        return cls(processes, Screen.in_memory(processes, panel.options()).display, panel)

    def environment(self):
        return {**super().environment(), 'WAYLAND_DISPLAY': SOCKET, 'QT_QPA_PLATFORM': 'wayland'}

    def wait_for_window(self, pid, after=None):
        """Waits until a painted window covers the whole screen, and returns Weston's own, which gets its keys."""
        self._look_until(lambda: not self.shows_desktop() and self.colours() >= COLOURS_OF_A_PAINTED_WINDOW,
                         'window that covers the screen')
        return self._window

    def title(self, window):
        """Only Weston knows the titles of its clients' windows."""
        return None

    def confirm(self, window):
        # A change of the X server's focus can cost Weston some keys, and its clients their focus.
        if self._do('getwindowfocus', '-f').strip() in (POINTER_ROOT, window):
            self._do(*self.confirmation)
        else:
            super().confirm(window)

    def type(self, *keys):
        """Presses keys, by the names of X keysyms. The window that has the focus in Weston gets them."""
        self._do('key', *keys)

    def shows_desktop(self):
        """Whether some of the background can be seen."""
        return BACKGROUND * 20 in self.picture()

    def wait_for_picture(self, picture):
        """Waits until the screen looks like that but for the pointer, which comes and goes with the windows below it."""
        line = 3 * self._panel.width * self._panel.scale

        def different_lines():
            now = self.picture()
            return sum(now[start:start + line] != picture[start:start + line] for start in range(0, len(picture), line))
        self._look_until(lambda: different_lines() <= POINTER_HEIGHT * self._panel.scale, 'the picture of before')

    def picture(self):
        """All pixels from left to right and top to bottom, three bytes each."""
        return self._run('import', '-window', self._window, '-depth', '8', 'rgb:-')


def renderer():
    """Weston paints by software, into memory that it shares with the X server if that can reach it."""
    return [] if 'QT_X11_NO_MITSHM' in os.environ else ['--use-pixman']
