# SPDX-FileCopyrightText: velmora-installationhandler contributors
# SPDX-License-Identifier: BSD-3-Clause
"""The log of a process."""

import json
import re

LINE = re.compile('(debug|info|warning|critical|fatal) ([^ :]+): (.*)')
SHOWS = re.compile('dialog ([0-9]+) shows (.*)')
GOES = re.compile('dialog ([0-9]+) goes')
# The reason is the system's last error, whatever that was: Known behaviour 47.
UNREADABLE = re.compile('could not read rpm: .*')


class Log:
    """The lines of the service, and the dialogs on screen, which write lines too."""

    def __init__(self, process):
        self._process = process
        self._looked_at = 0
        self._lines = []
        self.screen = {}

    def take(self):
        """The lines since the last call, as Seen has them."""
        written = self._process.lines()
        new, self._looked_at = written[self._looked_at:], len(written)
        for match in filter(None, map(LINE.fullmatch, new)):
            self._look_at(*match.groups())
        lines, self._lines = self._lines, []
        return lines

    def _look_at(self, kind, category, text):
        shows, goes = SHOWS.fullmatch(text), GOES.fullmatch(text)
        if category == 'qml' and shows:
            told = json.loads(shows[2])
            self.screen[int(shows[1])] = (told['name'], told['version'], told['summary'], told['fileName'])
        elif category == 'qml' and goes:
            del self.screen[int(goes[1])]
        elif category == 'default':
            self._lines.append(f'{kind}: {UNREADABLE.sub("could not read rpm:", text)}')
        elif kind != 'debug' and not category.startswith('packagekitqt'):
            self._lines.append(f'{kind} {category}: {text}')
