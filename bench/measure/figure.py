# SPDX-FileCopyrightText: velmora-installationhandler contributors
# SPDX-License-Identifier: BSD-3-Clause
"""Figures, their bars, and the table of all of them."""

from dataclasses import dataclass
from statistics import median


@dataclass(frozen=True)
class AtMost:
    """A bar: the ratio of product to floor, or the product's value itself."""

    limit: float
    of_floor: bool = True

    def __str__(self):
        return f'≤ {self.limit:g}' + (' ×' if self.of_floor else '')

    def is_met(self, ours, bare):
        return (ours / bare if self.of_floor else ours) <= self.limit


@dataclass(frozen=True)
class AtMostMore(AtMost):
    """A bar: by how much the product's value is above the floor's."""

    def __str__(self):
        return f'≤ floor + {self.limit:g}'

    def is_met(self, ours, bare):
        return ours - bare <= self.limit


@dataclass
class Figure:
    """Samples of the product, and those of its floor taken in turn with them."""

    name: str
    unit: str
    product: list
    floor: list
    bar: AtMost = None

    def ratios(self):
        return [ours / bare for ours, bare in zip(self.product, self.floor)]

    def ratio(self):
        """None where the bar is for the product's value itself: such values may well be 0."""
        if self.bar and not self.bar.of_floor:
            return None
        return median(self.product) / median(self.floor)

    def spread(self):
        values = self.ratios() if self.ratio() is not None else self.product
        return f'{number(min(values))}–{number(max(values))}'

    def verdict(self):
        if self.bar is None:
            return ''
        return 'met' if self.bar.is_met(median(self.product), median(self.floor)) else 'MISSED'

    def cells(self):
        ratio = self.ratio()
        return [
            f'{self.name}, {self.unit}' if self.unit else self.name,
            number(median(self.product)),
            number(median(self.floor)),
            f'{ratio:.3f}' if ratio is not None else '',
            self.spread(),
            str(self.bar or ''),
            self.verdict(),
        ]


@dataclass
class Neighbour:
    """A program of the machine that does something alike, measured beside a figure of the product."""

    name: str
    unit: str
    samples: list
    product: list

    def cells(self):
        ratio = median(self.samples) / median(self.product)
        return [f'  beside it: {self.name}, {self.unit}', number(median(self.samples)), '',
                f'{ratio:.2f} × ours', f'{number(min(self.samples))}–{number(max(self.samples))}', '', '']


@dataclass
class Skipped:
    """What could not be measured here, and why."""

    name: str
    reason: str

    def cells(self):
        return [f'  skipped: {self.name} ({self.reason})', '', '', '', '', '', '']


def number(value):
    return f'{value:,.0f}' if abs(value) >= 1000 else f'{value:.3g}'


HEADER = ['figure', 'product', 'floor', 'ratio', 'spread', 'bar', '']


def table(rows):
    """The rows as one text, a line each, columns aligned."""
    cells = [HEADER] + [row.cells() for row in rows]
    widths = [max(len(line[column]) for line in cells if line[1]) for column in range(len(HEADER))]
    lines = []
    for line in cells:
        first, *others = (cell.ljust(width) if index == 0 else cell.rjust(width)
                          for index, (cell, width) in enumerate(zip(line, widths)))
        lines.append('  '.join([first, *others]).rstrip())
    lines.insert(1, '-' * (sum(widths) + 2 * (len(widths) - 1)))
    return '\n'.join(lines)
