# SPDX-FileCopyrightText: velmora-installationhandler contributors
# SPDX-License-Identifier: BSD-3-Clause
"""Random histories. A failing one is made as short as it can be."""

from hypothesis import strategies

from . import steps
from .answers import ANSWERED, PEERS
from .device import FILES, LAUNCHER_FILES, NAMES

LONGEST = 160

FLAGS = strategies.sampled_from([None, False, True])
NUMBERS = strategies.integers(0, 3)


def one_of_them(values):
    return strategies.sampled_from(list(values))


def some_of(values, most):
    return strategies.lists(one_of_them(values), max_size=most).map(tuple)


def lists_of_steps(weights, least):
    """So many steps or more, in which each kind comes as often as its weight says."""
    kinds = one_of_them(kind for kind, weight in weights.items() for _ in range(weight))
    return strategies.lists(kinds.flatmap(KINDS.get), min_size=least, max_size=LONGEST)


KINDS = {
    'install': strategies.builds(steps.Install, some_of(FILES, 3), FLAGS, FLAGS).map(
        lambda step: step._replace(keep_userdata=None) if step.sdk_mode is None else step),
    'remove': strategies.builds(steps.Remove, some_of(NAMES, 2), FLAGS),
    'remove launcher': strategies.builds(steps.RemoveLauncher, one_of_them(LAUNCHER_FILES)),
    'choose': strategies.builds(steps.Choose, strategies.booleans(), NUMBERS),
    'answer': strategies.builds(steps.Answer, one_of_them(['usual'] * 8 + list(steps.MANNERS)), NUMBERS),
    'answer late': strategies.builds(steps.AnswerLate, one_of_them(steps.MANNERS), NUMBERS),
    'report': strategies.builds(steps.Report, one_of_them(['native', 'succeeds'] * 2 + list(steps.EVENTS)), NUMBERS),
    'display': strategies.builds(steps.Display, one_of_them(['off', 'on', 'dimmed'])),
    'die': strategies.builds(steps.Die, one_of_them(PEERS)),
    'return': strategies.builds(steps.Return, one_of_them(PEERS)),
    'wait': strategies.just(steps.Wait()),
    'pause': strategies.just(steps.Pause()),
    'hold': strategies.builds(steps.Hold, one_of_them(ANSWERED)),
    'set': strategies.builds(steps.Set, one_of_them(steps.SETTINGS), strategies.booleans()),
}

# How often each kind of step comes. Most answers, reports and returns make no sense when their turn comes, and are left
# out. In one kind of history requests pile up, in the other one most of them end.
WEIGHTS = [
    {'answer': 6, 'answer late': 2, 'report': 6, 'choose': 6, 'install': 6, 'remove': 2, 'remove launcher': 2, 'hold': 2,
     'return': 6, 'wait': 1, 'pause': 1, 'display': 1, 'die': 1, 'set': 1},
    {'answer': 14, 'answer late': 4, 'report': 24, 'choose': 8, 'install': 3, 'remove': 3, 'remove launcher': 3, 'hold': 3,
     'return': 12, 'wait': 1, 'pause': 1, 'display': 1, 'die': 2, 'set': 2},
]

# Every other history ends with answers to most of what still waits.
LAST_ANSWERS = (steps.Answer(), steps.Report('succeeds'), steps.Choose(True)) * 8

# Long histories find more, and are shortened to short ones. At the end of each one time passes, which shows whether the
# service still counts something as work.
HISTORIES = strategies.builds(
    lambda history, last: (*history, *last, steps.Wait()),
    strategies.one_of(lists_of_steps(weights, least) for weights in WEIGHTS for least in (0, 40, 80)),
    one_of_them([(), LAST_ANSWERS]))
