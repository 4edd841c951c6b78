# SPDX-FileCopyrightText: velmora-installationhandler contributors
# SPDX-License-Identifier: BSD-3-Clause
"""From exec to the name on the bus."""

import shutil
from contextlib import nullcontext
from pathlib import Path

from .environment import FLOOR_NAME, PRODUCT, PRODUCT_NAME, Service, peers, stopwatch, tool
from .figure import AtMost, Figure, Skipped

INSTRUCTION_ROUNDS = 3
TIME_ROUNDS = 101
INSTRUCTIONS = AtMost(1.10)
TIME = AtMost(1.15)

# The floor that counts loads no more than its own calls need; the other one loads librpm too.
SUBJECTS = [(PRODUCT_NAME, PRODUCT), (FLOOR_NAME, tool('floor-startup')), (FLOOR_NAME, tool('floor-startup-librpm'))]


def figures():
    yield from instructions(nullcontext, 'platform absent')
    yield from instructions(peers, 'platform there')
    with peers():
        times = [[value / 1000 for value in samples]
                 for samples in stopwatch('startup', TIME_ROUNDS, *(word for subject in SUBJECTS for word in subject))]
        yield Figure('start-up: time to name owned', 'ms', times[0], times[1], TIME)
        yield Figure('  against the floor that loads librpm too', 'ms', times[0], times[2])


def instructions(platform, where):
    name = f'start-up: instructions to name owned, {where}'
    if not shutil.which('valgrind'):
        yield Skipped(name, 'valgrind is not installed')
        return
    with platform():
        rounds = [[count(*subject) / 1e6 for subject in SUBJECTS] for _ in range(INSTRUCTION_ROUNDS)]
    ours, bare, bare_with_librpm = zip(*rounds)
    yield Figure(name, 'M', ours, bare, INSTRUCTIONS)
    yield Figure('  against the floor that loads librpm too', 'M', ours, bare_with_librpm)


def count(service, command):
    """Instructions of the whole process until QtDBus has returned from requesting the name."""
    profile = Path('/tmp/callgrind.out')
    dump = Path(f'{profile}.1')
    dump.unlink(missing_ok=True)
    with Service(service, 'valgrind', '--tool=callgrind', f'--callgrind-out-file={profile}',
                 '--dump-after=QDBusConnection::registerService(QString const&)', command) as process:
        process.await_event_loop()
    return next(int(line.split()[1]) for line in dump.read_text().splitlines() if line.startswith('totals:'))
