# SPDX-FileCopyrightText: velmora-installationhandler contributors
# SPDX-License-Identifier: BSD-3-Clause
"""Thousands of requests while peers die, hang and come back."""

import re

from ..command import Unmeasured, found, run
from ..markdown import counted, paragraph, table, whole

TITLE = 'Soak'
REQUESTS, TRIAL_REQUESTS = 10000, 200

BUILD = re.compile(r'^The program (.+), seed (\d+):$', re.MULTILINE)
AMOUNTS = r'(\d+) requests of (\d+) clients in (\d+) rounds with (\d+) faults, (\d+) seconds'
OUTCOME = re.compile(r'^((?:installation|removal): (?:success|failure)): (\d+)$', re.MULTILINE)
MEMORY = re.compile(r'^memory: -?\d+ KiB gained after the first \d+ requests, (-?[\d.]+) KiB each$', re.MULTILINE)
SAME = re.compile(r'^([\w ]+): \d+, as at the start$', re.MULTILINE)
EXIT = r'idle exit: after (\d+) seconds, with status 0'


def measure(trial):
    return builds(run('tests/soak/run', '--requests', str(TRIAL_REQUESTS if trial else REQUESTS)))


def builds(output):
    """The figures of each build, with its name."""
    _, *pieces = BUILD.split(output)
    if not pieces:
        raise Unmeasured('no build is named')
    return {name: figures_of(int(seed), text) for name, seed, text in zip(*(pieces[start::3] for start in range(3)))}


def figures_of(seed, text):
    amounts = dict(zip(('requests', 'clients', 'rounds', 'faults', 'seconds'), map(int, found(AMOUNTS, text))))
    memory = MEMORY.search(text)
    return amounts | {'seed': seed, 'outcomes': {name: int(count) for name, count in OUTCOME.findall(text)},
                      'memory': float(memory[1]) if memory else None, 'same': SAME.findall(text),
                      'idle exit': int(found(EXIT, text))}


def headline(figures):
    return '; '.join(f'{counted(build["requests"], "request")} during {counted(build["faults"], "fault")} ({name})'
                     for name, build in figures.items())


def section(figures):
    first = next(iter(figures.values()))
    yield from paragraph(
        f'{first["clients"]} clients at once, while peers die, hang, answer with errors or wrong types, and come back '
        f'(seed {first["seed"]}). Each request has had an outcome that is allowed. After the last one these are as at '
        f'the start: {", ".join(first["same"])}. Then the service has ended by itself.')
    yield from table(['', *figures], [
        ['requests', *(whole(build['requests']) for build in figures.values())],
        ['faults of peers', *(whole(build['faults']) for build in figures.values())],
        *([name, *(whole(build['outcomes'].get(name, 0)) for build in figures.values())] for name in first['outcomes']),
        ['memory gained by each request, KiB',
         *('' if build['memory'] is None else build['memory'] for build in figures.values())],
        ['idle seconds to the end', *(build['idle exit'] for build in figures.values())],
    ])
