# SPDX-FileCopyrightText: velmora-installationhandler contributors
# SPDX-License-Identifier: BSD-3-Clause
"""From exec to the name on the bus."""

from pathlib import Path

from .figure import Ratio
from .programs import (PEERS, PRODUCT, STARTUP_FLOOR, in_turn, milliseconds, running, stopwatch,
                       wait_for_event_loop)

INSTRUCTION_ROUNDS = 2
TIME_ROUNDS = 101
INSTRUCTIONS_LIMIT = 1.10
TIME_LIMIT = 1.15

PROFILE = '/tmp/callgrind.out'
CALLGRIND = ['valgrind', '--tool=callgrind', f'--callgrind-out-file={PROFILE}',
             '--dump-after=QDBusConnection::registerService(QString const&)']


def figures():
    yield instructions('platform absent')
    with running(PEERS):
        yield instructions('platform there')
        subjects = [word for name, command in (PRODUCT, STARTUP_FLOOR) for word in (name, *command)]
        yield Ratio('start-up: time to name owned', 'ms',
                    *milliseconds(stopwatch('startup', TIME_ROUNDS, *subjects)), TIME_LIMIT)


def instructions(where):
    return Ratio(f'start-up: instructions to name owned, {where}', 'M',
                 *in_turn(INSTRUCTION_ROUNDS, count, PRODUCT, STARTUP_FLOOR), INSTRUCTIONS_LIMIT)


def count(program):
    """Millions of instructions of the whole process until QtDBus has returned from requesting the name."""
    dump = Path(f'{PROFILE}.1')
    dump.unlink(missing_ok=True)
    with running(program, prefix=CALLGRIND):
        wait_for_event_loop(program)
    totals = next(line for line in dump.read_text().splitlines() if line.startswith('totals:'))
    return int(totals.split()[1]) / 1e6
