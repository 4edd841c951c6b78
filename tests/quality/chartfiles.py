# SPDX-FileCopyrightText: velmora-installationhandler contributors
# SPDX-License-Identifier: BSD-3-Clause
"""The files of the charts. Each has the sum of what it has been drawn from, so that a test can tell when it is old."""

import hashlib
import json
import re
from dataclasses import asdict
from pathlib import Path

from .results import LICENSE

COLOURS = ('light', 'dark')
DRAWING = Path(__file__).with_name('drawing.py')


def digest(chart):
    """The sum of what is drawn, and of the code that draws."""
    drawn = json.dumps(asdict(chart), sort_keys=True).encode() + DRAWING.read_bytes()
    return hashlib.sha256(drawn).hexdigest()


def names(charts):
    return {f'{chart.name}-{colours}.svg': chart for chart in charts for colours in COLOURS}


def write(folder, charts):
    """Draws all charts, and removes the files of others."""
    from .drawing import PALETTES, svg
    folder.mkdir(exist_ok=True)
    for file in set(folder.glob('*.svg')) - {folder / name for name in names(charts)}:
        file.unlink()
    for chart in charts:
        for colours in COLOURS:
            text = with_comment(svg(chart, PALETTES[colours]), chart)
            (folder / f'{chart.name}-{colours}.svg').write_text(text, encoding='utf-8')


def with_comment(svg, chart):
    """The picture with its license and with the sum, without blanks at the ends of lines."""
    declaration, rest = svg.split('\n', 1)
    comment = '\n'.join(['<!--', *LICENSE, f'sha256: {digest(chart)}', '-->'])
    return re.sub(r'[ \t]+$', '', f'{declaration}\n{comment}\n{rest}', flags=re.MULTILINE)


def recorded_digest(text):
    """The sum in a file of a chart."""
    return re.search(r'^sha256: (\w+)$', text, re.MULTILINE)[1]
