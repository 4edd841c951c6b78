# SPDX-FileCopyrightText: velmora-installationhandler contributors
# SPDX-License-Identifier: BSD-3-Clause
"""Reading one package file."""

from .figure import ITSELF, Ratio, Value
from .packages import package
from .programs import milliseconds, stopwatch

SIZES = {'10 KB': '10K', '1 MB': '1M', '20 MB': '20M', '200 MB': '200M'}
ROUNDS = 301
LIMIT = 1.15

MEMORY_READS = 2000
MEMORY_LIMIT = 0.1


def figures():
    runs = milliseconds(stopwatch('rpm', 'read', ROUNDS, *map(package, SIZES.values())))
    for label, product, floor in zip(SIZES, runs[::2], runs[1::2]):
        yield Ratio(f'one read, {label}', 'ms', product, floor, LIMIT)
    smallest, *_, largest = SIZES
    yield Ratio(f'one read, {largest} against {smallest}', 'ms', runs[-2], runs[0], LIMIT, beside=ITSELF)
    (gained,) = stopwatch('rpm', 'memory', MEMORY_READS, package('10K'))
    yield Value(f'{MEMORY_READS:,} reads: memory gained by each', 'KiB', [gained[0] / 1024], [], MEMORY_LIMIT)
