# SPDX-FileCopyrightText: velmora-installationhandler contributors
# SPDX-License-Identifier: BSD-3-Clause
"""The charts of the page: which figures of the benchmarks are in which chart."""

from dataclasses import dataclass

from bench.measure.figure import FLOOR, ITSELF, number

from .markdown import counted

PRODUCT, PEER, RATIO, BAR = 'product', 'peer', 'ratio', 'bar'
DIGITS = {PRODUCT: number, FLOOR: number, PEER: number, RATIO: '{:.3f}'.format, BAR: '{:g}'.format}


@dataclass
class Row:
    """One figure: a value for each series of the chart, or None, and the middle half of the measured ratios."""

    label: str
    values: list
    spread: list | None = None


@dataclass
class Chart:
    """Figures with the same unit, one below the other."""

    name: str
    title: str
    axis: str
    is_logarithmic: bool
    series: list
    rows: list

    def texts(self, row):
        """The values of a row as they stand beside it."""
        return ['' if value is None else DIGITS[series](value) for series, value in zip(self.series, row.values)]

    def description(self):
        """Instead of the picture."""
        return f'Chart of {counted(len(self.rows), "figure")}: {", ".join(self.series)}, as in the table below'


def charts(figures):
    """All charts that have at least one figure."""
    rows = [row for group in figures.values() for row in group]
    beside_floor = [row for row in rows if row['beside'] == FLOOR]
    beside_peers = [row for row in rows if row['beside'] not in (FLOOR, ITSELF)]
    made = [
        values('latency', 'Latency', 'milliseconds, logarithmic', beside_floor, 'ms', is_logarithmic=True),
        ratios(rows),
        values('peers', 'Latency beside other clients', 'milliseconds', beside_peers, 'ms', other=PEER),
        values('memory', 'Memory of an idle service', 'MiB', beside_floor, 'MiB'),
        values('growth', 'Memory gained by each request', 'KiB', beside_floor, 'KiB'),
    ]
    return [chart for chart in made if chart.rows]


def values(name, title, axis, rows, unit, is_logarithmic=False, other=FLOOR):
    """The product beside another program."""
    shown = [Row(row['name'], [row['product'], row['compared'], row['limit'] if row['ratio'] is None else None])
             for row in rows if row['unit'] == unit]
    return without_empty_series(Chart(name, title, axis, is_logarithmic, [PRODUCT, other, BAR], shown))


def ratios(rows):
    """All that is held against a bar as a ratio."""
    shown = [Row(row['name'], [row['ratio'], row['limit']], row['spread']) for row in rows
             if row['ratio'] is not None and row['limit'] is not None]
    return Chart('ratios', 'Ratios and their bars', 'ratio to the floor, or to an earlier part of the same run', False,
                 [RATIO, BAR], shown)


def without_empty_series(chart):
    used = [index for index in range(len(chart.series)) if any(row.values[index] is not None for row in chart.rows)]
    chart.series = [chart.series[index] for index in used]
    for row in chart.rows:
        row.values = [row.values[index] for index in used]
    return chart
