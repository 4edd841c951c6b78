# SPDX-FileCopyrightText: velmora-installationhandler contributors
# SPDX-License-Identifier: BSD-3-Clause
"""Draws a chart, with matplotlib. Series differ in colour and in shape; the colours are told apart by everybody."""

import io
import textwrap
from dataclasses import dataclass

import matplotlib
from matplotlib.backends.backend_svg import FigureCanvasSVG
from matplotlib.figure import Figure
from matplotlib.ticker import FuncFormatter, MaxNLocator

from bench.measure.figure import FLOOR

from .charts import BAR, PEER, PRODUCT, RATIO


@dataclass
class Palette:
    """The colours for one background."""

    background: str
    text: str
    lines: str
    product: str
    other: str


PALETTES = {
    'light': Palette('#ffffff', '#1f2328', '#d0d7de', '#0072b2', '#d55e00'),
    'dark': Palette('#0d1117', '#e6edf3', '#30363d', '#56b4e9', '#e69f00'),
}
# The sign of another program is hollow, so that it hides nothing.
OTHER = ('D', 6, 'none')
MARKERS = {PRODUCT: ('o', 5, 'full'), RATIO: ('o', 5, 'full'), FLOOR: OTHER, PEER: OTHER, BAR: ('|', 11, 'full')}

# Inches, and points of letters.
WIDTH, LABELS, PLOT, COLUMN = 9.6, 3.65, 3.4, 0.8
ROW, LINE, TOP, BOTTOM = 0.24, 0.12, 0.34, 0.5
LETTERS, SMALL = 9, 8
LABEL_LENGTH = 48

# The reader's own font shows the texts. No file depends on the time or on chance.
SETTINGS = {'svg.fonttype': 'none', 'svg.hashsalt': 'quality', 'font.family': 'sans-serif',
            'font.sans-serif': ['DejaVu Sans', 'Verdana', 'Arial']}


def svg(chart, palette):
    """The picture as text."""
    with matplotlib.rc_context(SETTINGS):
        output = io.StringIO()
        FigureCanvasSVG(Drawing(chart, palette).figure).print_svg(output, metadata={'Date': None, 'Creator': None})
        return output.getvalue()


class Drawing:
    """One chart in the colours of a palette."""

    def __init__(self, chart, palette):
        self._chart = chart
        self._palette = palette
        self._labels = [wrapped(row.label) for row in chart.rows]
        self._step = ROW + LINE * max(label.count('\n') for label in self._labels)
        self._height = TOP + self._step * len(chart.rows) + BOTTOM
        self.figure = Figure(figsize=(WIDTH, self._height), facecolor=palette.background)
        self._axes = self.figure.add_axes([LABELS / WIDTH, BOTTOM / self._height, PLOT / WIDTH,
                                           self._step * len(chart.rows) / self._height])
        self._set_up_axes()
        for index, series in enumerate(chart.series):
            self._draw_series(index, series)
        for index in range(len(chart.rows)):
            self._draw_row(index)

    def _set_up_axes(self):
        axes, palette = self._axes, self._palette
        axes.set_facecolor(palette.background)
        axes.set_ylim(len(self._chart.rows) - 0.5, -0.5)
        axes.set_yticks([])
        axes.set_xlabel(self._chart.axis, color=palette.text, fontsize=SMALL)
        axes.tick_params(axis='x', which='both', colors=palette.text, labelsize=SMALL, length=0)
        axes.grid(axis='x', color=palette.lines, linewidth=0.6)
        axes.set_axisbelow(True)
        for spine in axes.spines.values():
            spine.set_visible(False)
        if self._chart.is_logarithmic:
            axes.set_xscale('log')
            axes.xaxis.set_major_formatter(FuncFormatter('{:g}'.format))
        else:
            axes.xaxis.set_major_locator(MaxNLocator(6, steps=[1, 2, 5, 10]))
        if RATIO in self._chart.series:
            axes.axvline(1, color=palette.text, linewidth=0.6, zorder=1)
        elif not self._chart.is_logarithmic:
            axes.axvline(0, color=palette.lines, linewidth=0.6, zorder=1)

    def _draw_series(self, index, series):
        """The markers of a series, and its sign over the column of its numbers."""
        marker, size, fill = MARKERS[series]
        color = self._color(series)
        points = [(row.values[index], place) for place, row in enumerate(self._chart.rows)
                  if row.values[index] is not None]
        style = {'color': color, 'marker': marker, 'markersize': size, 'fillstyle': fill, 'markeredgewidth': 1.5,
                 'linestyle': 'none'}
        self._axes.plot(*zip(*points), zorder=3, **style)
        right = self._column(index)
        self.figure.text(right, self._from_top(TOP * 0.6), series, color=color, fontsize=SMALL, ha='right', va='center')
        sign = self.figure.add_axes([right - 0.62 / WIDTH, self._from_top(TOP * 0.6 + 0.1), 0.12 / WIDTH,
                                     0.2 / self._height])
        sign.set_axis_off()
        sign.plot([0], [0], **style)

    def _draw_row(self, index):
        row, palette = self._chart.rows[index], self._palette
        y = self._from_top(TOP + self._step * (index + 0.5))
        style = {'color': palette.text, 'fontsize': LETTERS, 'ha': 'right', 'va': 'center', 'linespacing': 1.1}
        self.figure.text((LABELS - 0.12) / WIDTH, y, self._labels[index], **style)
        for place, text in enumerate(self._chart.texts(row)):
            self.figure.text(self._column(place), y, text, **style)
        measured = row.spread or [value for series, value in zip(self._chart.series, row.values)
                                  if value is not None and series != BAR]
        self._axes.plot([min(measured), max(measured)], [index, index], color=palette.product, linewidth=1.5, zorder=2,
                        alpha=0.6)

    def _color(self, series):
        palette = self._palette
        return {FLOOR: palette.other, PEER: palette.other, BAR: palette.text}.get(series, palette.product)

    def _column(self, index):
        return (LABELS + PLOT + COLUMN * (index + 1)) / WIDTH

    def _from_top(self, inches):
        return 1 - inches / self._height


def wrapped(label):
    """A label in one line, or in two that are about as long."""
    return label if len(label) <= LABEL_LENGTH else textwrap.fill(label, len(label) // 2 + 6)
