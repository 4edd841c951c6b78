# SPDX-FileCopyrightText: velmora-installationhandler contributors
# SPDX-License-Identifier: BSD-3-Clause
"""Compares the program with the model in random histories, on a device in a sandbox. `run` starts it there."""

import argparse
import sys
import time
from pathlib import Path

from hypothesis import HealthCheck, Phase, Verbosity, given, seed, settings

from .history import Disagreement, compare, count, without_useless
from .program.surroundings import Surroundings
from .randomhistories import HISTORIES

# The histories that Hypothesis makes of one seed. It then begins again with the next.
ROUND = 50
ATTEMPTS = 3


class Exploration:
    """Random histories, until a number of steps has been done."""

    def __init__(self, surroundings, steps):
        self._surroundings = surroundings
        self._wanted = steps
        self._done = {}  # the histories, each with its disagreement, or None
        self.passing = []
        self.steps = 0
        self.histories = 0

    @property
    def is_over(self):
        return self.steps >= self._wanted

    @property
    def _has_failed(self):
        return any(self._done.values())

    def run_round(self, number):
        """The histories of one seed. Raises Disagreement with the shortest history that has been found."""
        @seed(number)
        @settings(max_examples=ROUND, database=None, deadline=None, phases=[Phase.generate, Phase.shrink],
                  report_multiple_bugs=False, suppress_health_check=list(HealthCheck), verbosity=Verbosity.quiet)
        @given(HISTORIES)
        def check(steps):
            self._check(tuple(without_useless(steps)))

        check()

    def _check(self, history):
        """Does a history once. Hypothesis repeats one that has failed, and different ones may be the same without useless
        steps."""
        if history not in self._done:
            if not self._has_failed:
                if self.is_over:
                    return
                self.steps += count(history)
                self.histories += 1
            self._done[history] = self._disagreement(history)
        if self._done[history]:
            raise self._done[history]

    def _disagreement(self, history):
        """A disagreement counts if it comes each time, since the scheduler decides on the order of a few events."""
        disagreement = None
        for _ in range(1 if self._has_failed else ATTEMPTS):
            try:
                compare(self._surroundings, history)
            except Disagreement as again:
                disagreement = again
            else:
                break
        else:
            return disagreement
        if disagreement:
            self.passing.append(disagreement)
        return None


def explore(surroundings, steps, first_seed):
    """Compares until a number of steps has been done, and prints how many there were. Raises Disagreement."""
    began = time.monotonic()
    exploration = Exploration(surroundings, steps)
    number = first_seed
    try:
        while not exploration.is_over:
            exploration.run_round(number)
            number += 1
    except Disagreement as disagreement:
        raise Disagreement(f'The program and the model disagree, from seed {first_seed} within {exploration.steps} '
                           f'steps:\n\n{disagreement}') from None
    for disagreement in exploration.passing:
        print(f'This has not come again:\n\n{disagreement}\n')
    print(f'{exploration.steps} steps in {exploration.histories} histories, from seed {first_seed}, '
          f'{time.monotonic() - began:.0f} s: the program does what the model says.')


def main():
    parser = argparse.ArgumentParser()
    parser.add_argument('--steps', type=int)
    parser.add_argument('--seed', type=int)
    parser.add_argument('--clock', type=Path)
    arguments = parser.parse_args()
    surroundings = Surroundings(arguments.clock)
    try:
        explore(surroundings, arguments.steps, arguments.seed)
    except Disagreement as disagreement:
        sys.exit(str(disagreement))
    finally:
        surroundings.close()


if __name__ == '__main__':
    main()
