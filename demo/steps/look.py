# SPDX-FileCopyrightText: velmora-installationhandler contributors
# SPDX-License-Identifier: BSD-3-Clause
"""The fonts and colours of the device, so that pictures of it do not depend on the machine's."""

import shutil
import unicodedata
from dataclasses import dataclass
from pathlib import Path

# The files of Debian's packages that have the letters of all languages. The first one has those of most languages.
FAMILY = 'Noto Sans'
NOTO = Path('/usr/share/fonts/truetype/noto')
SCRIPTS = ('', 'Arabic', 'Bengali', 'Devanagari', 'Hebrew', 'Thai')
FONT_FILES = [
    *(NOTO / f'NotoSans{script}-{weight}.ttf' for script in SCRIPTS for weight in ('Regular', 'Bold')),
    Path('/usr/share/fonts/truetype/vlgothic/VL-PGothic-Regular.ttf'),
    Path('/usr/share/fonts-droid-fallback/truetype/DroidSansFallback.ttf')]
FONT_FOLDER = Path('/var/lib/fonts')

FONT_CONFIGURATION = """<?xml version="1.0"?>
<fontconfig>
  <dir>{folder}</dir>
  <cachedir>/var/cache/fontconfig</cachedir>
  <match target="font">
    <edit name="antialias"><bool>true</bool></edit>
    <edit name="hinting"><bool>true</bool></edit>
    <edit name="hintstyle"><const>hintslight</const></edit>
    <edit name="rgba"><const>none</const></edit>
  </match>
</fontconfig>
"""

# A file of a desktop's settings that the toolkit reads by itself.
SETTINGS = Path('/etc/xdg/kdeglobals')
SETTINGS_TEXT = """[General]
font={family},-1,{pixels},5,50,0,0,0,0,0
[Colors:Button]
BackgroundNormal={window}
ForegroundNormal={text}
[Colors:Selection]
BackgroundNormal={highlight}
ForegroundNormal=255,255,255
[Colors:View]
BackgroundNormal={base}
ForegroundNormal={text}
[Colors:Window]
BackgroundNormal={window}
ForegroundNormal={text}
"""

# The variables of a program that reads these settings.
ENVIRONMENT = {'QT_QPA_PLATFORMTHEME': 'kde', 'KDE_SESSION_VERSION': '5'}


@dataclass(frozen=True)
class Palette:
    """The colours of the device, each as red, green and blue."""

    base: tuple
    text: tuple
    window: tuple
    highlight: tuple = (0x3d, 0x8e, 0xe6)

    def highlighted(self, part):
        """The colour of a control that has a part of the highlight colour, which the toolkit rounds to 16 bits."""
        part = int(part * 65535 + 0.5) / 65535
        return bytes(round(below * (1 - part) + above * part) for below, above in zip(self.base, self.highlight))


LIGHT = Palette(base=(0xff, 0xff, 0xff), text=(0x1b, 0x1d, 0x21), window=(0xef, 0xf0, 0xf1))
DARK = Palette(base=(0x26, 0x29, 0x2e), text=(0xf2, 0xf3, 0xf5), window=(0x1b, 0x1d, 0x21))


def give_fonts(processes):
    """Leaves the device no other fonts than those of the pictures."""
    FONT_FOLDER.mkdir()
    for file in FONT_FILES:
        shutil.copy(file, FONT_FOLDER)
    Path('/etc/fonts/fonts.conf').write_text(FONT_CONFIGURATION.format(folder=FONT_FOLDER), encoding='ascii')
    processes.run('fc-cache', ['fc-cache'])


def characters_without_glyph(processes, text):
    """The characters of a text that no font of the device can show, which the toolkit would show as empty boxes."""
    shown = set()
    for fonts in processes.run('fc-list', ['fc-list', '--format', '%{charset}\n']).splitlines():
        for characters in fonts.split():
            first, _, last = characters.partition('-')
            shown.update(range(int(first, 16), int(last or first, 16) + 1))
    # Format characters (Cf) steer the layout and are not painted.
    return sorted(character for character in set(text) if ord(character) not in shown
                  and unicodedata.category(character) != 'Cf')


def give_look(palette, font_pixels):
    """Sets the colours of the device and the size of its font, for programs that start later."""
    colours = {name: ','.join(map(str, colour)) for name, colour in vars(palette).items()}
    SETTINGS.parent.mkdir(exist_ok=True)
    SETTINGS.write_text(SETTINGS_TEXT.format(family=FAMILY, pixels=font_pixels, **colours), encoding='ascii')
