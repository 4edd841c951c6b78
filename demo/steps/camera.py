# SPDX-FileCopyrightText: velmora-installationhandler contributors
# SPDX-License-Identifier: BSD-3-Clause
"""A display whose pictures depend on what it shows alone, not on the time at which they are taken."""

from dataclasses import dataclass

from harness.screen import COLOURS_OF_A_PAINTED_WINDOW, Screen
from PIL import Image


@dataclass(frozen=True)
class Panel:
    """The hardware of a display: its size in pixels, and its pixels per inch."""

    width: int
    height: int
    dpi: int

    def options(self):
        """The options of an Xvfb of its size."""
        return '-screen', '0', f'{self.width}x{self.height}x24', '-dpi', str(self.dpi)


class Camera(Screen):
    """A display that takes pictures of itself while nothing changes, and a finger on it."""

    def __init__(self, processes, display, palette):
        """`palette` has the colours of the programs that it shows."""
        super().__init__(processes, display)
        self.ready = palette.highlighted(0.2)
        self._pressed = palette.highlighted(0.3)

    @classmethod
    def in_memory(cls, processes, panel, palette):
        """A new one, in a new X server."""
        return cls(processes, Screen.in_memory(processes, panel.options()).display, palette)

    def picture(self, unlike=()):
        """The painted screen, when two looks in a row see the same, and none of the pictures that it is not to be like."""
        looks = [None, None]

        def is_still():
            looks[:] = looks[1], Image.frombytes('RGB', (self.width, self.height), self._picture())
            return looks[0] == looks[1] and looks[1] not in unlike \
                and not looks[1].getcolors(COLOURS_OF_A_PAINTED_WINDOW)
        self._look_until(is_still, 'picture that stands still')
        return looks[1]

    def put_finger(self, x, y):
        """Begins to press at a point of the screen."""
        self._do('mousemove', x, y, 'mousedown', 1)

    def wait_until_pressed(self):
        """Waits until "Install" shows that it is pressed."""
        self._look_until(lambda: self._pressed * 100 in self._picture(), 'button "Install" that is pressed')

    def lift_finger(self):
        """Ends the press. Nothing is below the pointer any more."""
        self._do('mouseup', 1, 'mousemove', 0, 0)
