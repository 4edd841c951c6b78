# SPDX-FileCopyrightText: velmora-installationhandler contributors
# SPDX-License-Identifier: BSD-3-Clause
"""Thousands of requests, to the product and to its floor in turn."""

from statistics import median

from .figure import Ratio, Value
from .programs import FLOOR, PRODUCT, memory, milliseconds, running, stopwatch

SETTLED = 200  # after so many the memory may not grow any more
HUNDRED = 100

MEMORY_LIMIT = 0.1
GROWTH_LIMIT = 1.1


class Requests:
    """The times of the requests of fresh processes, in milliseconds, and the memory gained by each."""

    def __init__(self, count, task, argument, environment=None):
        """task, argument: those of the stopwatch."""
        def send(some):
            return milliseconds(stopwatch('requests', task, some, argument, PRODUCT.name, FLOOR.name))

        with running(PRODUCT, environment) as product, running(FLOOR, environment) as floor:
            first = send(SETTLED)
            before = [memory(process, 'Private_Dirty') for process in (product, floor)]
            rest = send(count - SETTLED)
            after = [memory(process, 'Private_Dirty') for process in (product, floor)]
        self.count = count
        self.product, self.floor = [early + late for early, late in zip(first, rest)]
        self.gained = [(end - start) / (count - SETTLED) for start, end in zip(before, after)]

    def time(self, name, limit):
        """The time of one request."""
        return Ratio(name, 'ms', self.product, self.floor, limit)

    def memory(self, name):
        """The memory gained by each request after the first ones."""
        return Value(f'{self.count:,} {name}: memory gained by each', 'KiB', *[[gained] for gained in self.gained],
                     MEMORY_LIMIT)

    def growth(self, name):
        """The time of the last hundred requests against the first, and how much of that the floor's times show too."""
        growth = [median(times[-HUNDRED:]) / median(times[:HUNDRED]) for times in (self.product, self.floor)]
        return Ratio(f'{self.count:,} {name}: last hundred against the first', '×', *[[value] for value in growth],
                     GROWTH_LIMIT)
