# SPDX-FileCopyrightText: velmora-installationhandler contributors
# SPDX-License-Identifier: BSD-3-Clause
"""Figures, their bars, and the table of all of them."""

from dataclasses import dataclass
from statistics import median

MET = 'met'

# What a figure stands beside, unless it is the name of another program.
FLOOR = 'floor'
ITSELF = 'itself'


@dataclass
class Summary:
    """Medians of samples, for a line of the table and for other programs."""

    name: str
    unit: str
    product: float
    compared: float | None
    ratio: float | None  # without one the verdict is about the product's own value
    spread: tuple | None
    limit: float | None
    beside: str

    @property
    def verdict(self):
        if self.limit is None:
            return ''
        return MET if (self.product if self.ratio is None else self.ratio) <= self.limit else 'MISSED'

    def cells(self):
        compared = '' if self.compared is None else number(self.compared)
        ratio = '' if self.ratio is None else f'{self.ratio:.3f}'
        spread = '–'.join(map(number, self.spread or ()))
        return [f'{self.name}, {self.unit}', number(self.product), compared, ratio, spread, self._bar(), self.verdict]

    def _bar(self):
        return '' if self.limit is None else f'≤ {self.limit:g}{"" if self.ratio is None else " ×"}'


@dataclass
class Ratio:
    """Samples, each taken beside one of what they are compared with. The verdict is about the median ratio of a pair; without
    a limit there is none."""

    name: str
    unit: str
    samples: list
    compared: list
    limit: float | None
    ratios: list = None  # unless they are just those of the samples
    beside: str = FLOOR

    def summary(self):
        ratios = self.ratios or quotients(self.samples, self.compared)
        return Summary(self.name, self.unit, median(self.samples), median(self.compared), median(ratios),
                       middle_half(ratios), self.limit, self.beside)


@dataclass
class Value:
    """Samples that speak for themselves; those of the floor are there to be looked at."""

    name: str
    unit: str
    samples: list
    floor: list
    limit: float

    def summary(self):
        return Summary(self.name, self.unit, median(self.samples), median(self.floor) if self.floor else None, None,
                       middle_half(self.samples), self.limit, FLOOR)


def quotients(samples, others):
    return [sample / other for sample, other in zip(samples, others)]


def middle_half(samples):
    """The quartiles; of fewer than four samples the ends of the whole range."""
    ordered = sorted(samples)
    rest = len(ordered) // 4
    return (ordered[rest], ordered[-1 - rest]) if len(ordered) > 1 else None


def number(value):
    return f'{value:,.0f}' if abs(value) >= 1000 else f'{value:.3g}'


HEADER = ['figure', 'product', 'compared', 'ratio', 'spread', 'bar', '']


def table(summaries):
    """The summaries as one text, a line each, columns aligned."""
    cells = [HEADER] + [summary.cells() for summary in summaries]
    widths = [max(len(line[column]) for line in cells) for column in range(len(HEADER))]
    lines = []
    for line in cells:
        first, *others = (cell.ljust(width) if index == 0 else cell.rjust(width)
                          for index, (cell, width) in enumerate(zip(line, widths)))
        lines.append('  '.join([first, *others]).rstrip())
    lines.insert(1, '-' * (sum(widths) + 2 * (len(widths) - 1)))
    return '\n'.join(lines)
