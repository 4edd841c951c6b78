# SPDX-FileCopyrightText: velmora-installationhandler contributors
# SPDX-License-Identifier: BSD-3-Clause
"""The installed program against the model of it."""

from ..command import found, run
from ..markdown import counted, paragraph

TITLE = 'The model'
STEPS, TRIAL_STEPS = 10000, 100

SUMMARY = r'(\d+) steps in (\d+) histories, from seed (\d+), (\d+) s: the program does what the model says\.'


def measure(trial):
    run('cmake', '--preset', 'dev')
    run('cmake', '--build', '--preset', 'dev')
    run('ctest', '--preset', 'dev', '-R', '^stage$')
    return figures_of(run('tests/model/run', '--steps', str(TRIAL_STEPS if trial else STEPS)))


def figures_of(output):
    return dict(zip(('steps', 'histories', 'seed', 'seconds'), map(int, found(SUMMARY, output))))


def headline(figures):
    return f'{counted(figures["steps"], "step")} without a disagreement'


def section(figures):
    histories = counted(figures['histories'], 'history', 'histories')
    yield from paragraph(
        f'{counted(figures["steps"], "random step")} in {histories} (seed {figures["seed"]}): after each one the calls '
        'on both buses, the signals, the log and the dialog of the installed program are those that the '
        '[model](../tests/model/README.md) says.')
