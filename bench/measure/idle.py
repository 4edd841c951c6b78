# SPDX-FileCopyrightText: velmora-installationhandler contributors
# SPDX-License-Identifier: BSD-3-Clause
"""The service with nothing to do."""

import time

from .figure import Ratio, Value
from .programs import PEERS, PRODUCT, STARTUP_FLOOR, in_turn, memory, running, settle, switches

ROUNDS = 3
PRIVATE_LIMIT = 1.3
RESIDENT_LIMIT = 1.10
WAKE_UPS_LIMIT = 0
WATCHED = 20  # seconds


def figures():
    with running(PEERS):
        product, floor = in_turn(ROUNDS, memory_at_rest, PRODUCT, STARTUP_FLOOR)
        for name, field, limit in (('private', 0, PRIVATE_LIMIT), ('resident', 1, RESIDENT_LIMIT)):
            yield Ratio(f'idle: {name} memory', 'MiB', [one[field] for one in product], [one[field] for one in floor],
                        limit)
        yield Value(f'idle: wake-ups in {WATCHED} s', 'times', *wake_ups(), WAKE_UPS_LIMIT)


def memory_at_rest(program):
    """Private and resident memory."""
    with running(program) as process:
        settle(process)
        return memory(process, 'Private_Dirty') / 1024, memory(process, 'Rss') / 1024


def wake_ups():
    """Both at the same time; the service ends itself after 30 seconds, which leaves 10 to settle."""
    with running(PRODUCT) as product, running(STARTUP_FLOOR) as floor:
        settle(product, floor)
        before = [switches(process) for process in (product, floor)]
        time.sleep(WATCHED)
        return [[switches(process) - start] for process, start in zip((product, floor), before)]
