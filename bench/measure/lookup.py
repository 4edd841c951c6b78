# SPDX-FileCopyrightText: velmora-installationhandler contributors
# SPDX-License-Identifier: BSD-3-Clause
"""Looking up the launchers of one installed package."""

from .figure import ITSELF, Ratio
from .packages import databases
from .programs import milliseconds, stopwatch

SIZES = [100, 1000, 3000]
PACKAGE = 'native-0050'
ROUNDS = 501
LIMIT = 1.15


def figures():
    runs = milliseconds(stopwatch('rpm', 'lookup', ROUNDS, PACKAGE, *databases(*SIZES)))
    for size, product, floor in zip(SIZES, runs[::2], runs[1::2]):
        yield Ratio(f'launcher lookup, {size:,} packages', 'ms', product, floor, LIMIT)
    yield Ratio(f'launcher lookup, {SIZES[-1]:,} packages against {SIZES[0]:,}', 'ms', runs[-2], runs[0], LIMIT,
                beside=ITSELF)
