# SPDX-FileCopyrightText: velmora-installationhandler contributors
# SPDX-License-Identifier: BSD-3-Clause
"""Hostile inputs."""

import re

from ..command import Unmeasured, run
from ..markdown import counted, paragraph, table, whole

TITLE = 'Fuzzing'
SECONDS, TRIAL_SECONDS = 600, 5

# | target | executions | a second | edges covered | of | result |
ROW = re.compile(r'^\| (\w+) \| (\d+) \| \d+ \| (\d+) \| (\d+) \| nothing found \|$', re.MULTILINE)


def measure(trial):
    seconds = TRIAL_SECONDS if trial else SECONDS
    return {'seconds': seconds, 'targets': targets(run('tests/fuzz/run', str(seconds)))}


def targets(output):
    """Executions and edges of each target in the table that is printed."""
    result = {name: {'executions': int(executions), 'edges': int(edges), 'all edges': int(all_edges)}
              for name, executions, edges, all_edges in ROW.findall(output)}
    if not result:
        raise Unmeasured('there is no table of targets')
    return result


def headline(figures):
    targets_ = figures['targets'].values()
    return (f'{counted(sum(target["executions"] for target in targets_), "execution")} of '
            f'{counted(len(targets_), "target")}, nothing found')


def section(figures):
    yield from paragraph(f'{counted(figures["seconds"], "second")} for each target, with the address, leak and '
                         'undefined-behaviour sanitizers: no crash, no leak, no input that takes more than a second. '
                         'All edges are those of the classes that are linked, of which a target uses one or a few.')
    yield from table(['target', 'executions', 'edges covered', 'of'],
                     [[name, *map(whole, target.values())] for name, target in figures['targets'].items()])
