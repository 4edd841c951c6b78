# SPDX-FileCopyrightText: velmora-installationhandler contributors
# SPDX-License-Identifier: BSD-3-Clause
"""Random histories. A failing one is made as short as it can be."""

from hypothesis import strategies

from . import steps
from .answers import ANSWERED, PEERS
from .device import FILES, LAUNCHER_FILES, NAMES

LONGEST = 80

FLAGS = strategies.sampled_from([None, False, True])
NUMBERS = strategies.integers(0, 3)


def one_of_them(values):
    return strategies.sampled_from(list(values))


def some_of(values, most):
    return strategies.lists(one_of_them(values), max_size=most).map(tuple)


KINDS = {
    'install': strategies.builds(steps.Install, some_of(FILES, 3), FLAGS, FLAGS).map(
        lambda step: step._replace(keep_userdata=None) if step.sdk_mode is None else step),
    'remove': strategies.builds(steps.Remove, some_of(NAMES, 2), FLAGS),
    'remove launcher': strategies.builds(steps.RemoveLauncher, one_of_them(LAUNCHER_FILES)),
    'choose': strategies.builds(steps.Choose, strategies.booleans(), NUMBERS),
    'answer': strategies.builds(steps.Answer, one_of_them(['usual'] * 4 + list(steps.MANNERS)), NUMBERS),
    'report': strategies.builds(steps.Report, one_of_them(['native', 'succeeds', *steps.EVENTS]), NUMBERS),
    'display': strategies.builds(steps.Display, one_of_them(['off', 'on', 'dimmed'])),
    'die': strategies.builds(steps.Die, one_of_them(PEERS)),
    'return': strategies.builds(steps.Return, one_of_them(PEERS)),
    'wait': strategies.just(steps.Wait()),
    'hold': strategies.builds(steps.Hold, one_of_them(ANSWERED)),
    'set': strategies.builds(steps.Set, one_of_them(['policy allows', 'emulator', 'silent installation']),
                             strategies.booleans()),
}

# How often each kind of step comes. Most answers and reports make no sense when their turn comes, and are left out.
WEIGHTS = {'answer': 6, 'report': 8, 'choose': 4, 'install': 4, 'remove': 3, 'remove launcher': 3, 'hold': 2,
           'return': 2, 'wait': 1, 'display': 1, 'die': 1, 'set': 1}

STEPS = one_of_them(kind for kind, weight in WEIGHTS.items() for _ in range(weight)).flatmap(KINDS.get)

# Long histories find more, and are shortened to short ones. At the end of each one time passes, which shows whether the
# service still counts something as work.
HISTORIES = strategies.one_of(strategies.lists(STEPS, min_size=least, max_size=LONGEST) for least in (0, 30, 50)).map(
    lambda history: [*history, steps.Wait()])
