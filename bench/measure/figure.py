# SPDX-FileCopyrightText: velmora-installationhandler contributors
# SPDX-License-Identifier: BSD-3-Clause
"""Figures, their bars, and the table of all of them."""

from dataclasses import dataclass
from statistics import median


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

    def cells(self):
        ratios = self.ratios or quotients(self.samples, self.compared)
        ratio = median(ratios)
        return [f'{self.name}, {self.unit}', number(median(self.samples)), number(median(self.compared)),
                f'{ratio:.3f}', middle_half(ratios), bar(self.limit, ' ×'), verdict(ratio, self.limit)]


@dataclass
class Value:
    """Samples that speak for themselves; those of the floor are there to be looked at."""

    name: str
    unit: str
    samples: list
    floor: list
    limit: float

    def cells(self):
        value = median(self.samples)
        return [f'{self.name}, {self.unit}', number(value), number(median(self.floor)) if self.floor else '', '',
                middle_half(self.samples), bar(self.limit), verdict(value, self.limit)]


def quotients(samples, others):
    return [sample / other for sample, other in zip(samples, others)]


def bar(limit, unit=''):
    return '' if limit is None else f'≤ {limit:g}{unit}'


def verdict(value, limit):
    if limit is None:
        return ''
    return 'met' if value <= limit else 'MISSED'


def middle_half(samples):
    """The range between the quartiles; of fewer than four samples the whole range."""
    ordered = sorted(samples)
    rest = len(ordered) // 4
    return f'{number(ordered[rest])}–{number(ordered[-1 - rest])}' if len(ordered) > 1 else ''


def number(value):
    return f'{value:,.0f}' if abs(value) >= 1000 else f'{value:.3g}'


HEADER = ['figure', 'product', 'compared', 'ratio', 'spread', 'bar', '']


def table(rows):
    """The rows as one text, a line each, columns aligned."""
    cells = [HEADER] + [row.cells() for row in rows]
    widths = [max(len(line[column]) for line in cells) for column in range(len(HEADER))]
    lines = []
    for line in cells:
        first, *others = (cell.ljust(width) if index == 0 else cell.rjust(width)
                          for index, (cell, width) in enumerate(zip(line, widths)))
        lines.append('  '.join([first, *others]).rstrip())
    lines.insert(1, '-' * (sum(widths) + 2 * (len(widths) - 1)))
    return '\n'.join(lines)
