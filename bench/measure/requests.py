# SPDX-FileCopyrightText: velmora-installationhandler contributors
# SPDX-License-Identifier: BSD-3-Clause
"""Thousands of requests, to the product and to its floor in turn."""

from itertools import chain
from statistics import median

from .figure import Ratio, Value, quotients
from .programs import FLOOR, PRODUCT, memory, milliseconds, running, stopwatch

SETTLED = 1000  # so many may still make the allocator take more memory
HUNDRED = 100

MEMORY_LIMIT = 0.1
GROWTH_LIMIT = 1.1


class Requests:
    """The times of requests to processes that are fresh in each round, in milliseconds, and the memory gained by each.

    Product and floor each have a list, with an entry for each round.
    """

    def __init__(self, rounds, count, task, argument, environment=None):
        """task, argument: those of the stopwatch."""
        self.count = count
        self.times = [], []
        self.gained = [], []
        for _ in range(rounds):
            self._run(task, argument, environment)

    def _run(self, task, argument, environment):
        def send(count):
            return milliseconds(stopwatch('requests', task, count, argument, PRODUCT.name, FLOOR.name))

        with running(PRODUCT, environment) as product, running(FLOOR, environment) as floor:
            first = send(SETTLED)
            before = [memory(process, 'Private_Dirty') for process in (product, floor)]
            rest = send(self.count - SETTLED)
            after = [memory(process, 'Private_Dirty') for process in (product, floor)]
        for times, early, late in zip(self.times, first, rest):
            times.append(early + late)
        for gained, start, end in zip(self.gained, before, after):
            gained.append((end - start) / (self.count - SETTLED))

    def time_figure(self, name, limit):
        """The time of one request."""
        return Ratio(name, 'ms', *[list(chain(*times)) for times in self.times], limit)

    def memory_figure(self, name):
        """The memory gained by each request after the first ones."""
        return Value(f'{self.count:,} {name}: memory gained by each', 'KiB', *self.gained, MEMORY_LIMIT)

    def growth_figure(self, name):
        """The time of the last hundred requests against the first.

        Each request is compared with the floor's beside it, which has been slowed down as much by other programs. The
        columns show the growth of product and floor alone.
        """
        alone = [[growth(times) for times in rounds] for rounds in self.times]
        paired = [growth(quotients(product, floor)) for product, floor in zip(*self.times)]
        return Ratio(f'{self.count:,} {name}: last hundred against the first', '×', *alone, GROWTH_LIMIT, paired)


def growth(values):
    return median(values[-HUNDRED:]) / median(values[:HUNDRED])
