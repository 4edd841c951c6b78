# SPDX-FileCopyrightText: velmora-installationhandler contributors
# SPDX-License-Identifier: BSD-3-Clause
"""The service with nothing to do."""

import time

from .environment import floor, peers, product
from .figure import AtMost, Figure

ROUNDS = 5
PRIVATE = AtMost(1.3)
RESIDENT = AtMost(1.10)
WAKE_UPS = AtMost(0, of_floor=False)
WATCHED = 20  # seconds


def figures():
    with peers():
        rounds = [[memory(subject) for subject in (product(), floor('floor-startup'))] for _ in range(ROUNDS)]
        wake_ups = [[count] for count in count_wake_ups()]
    private, resident = ([[one[field] / 1024 for one in samples] for samples in zip(*rounds)] for field in (0, 1))
    yield Figure('idle: private memory', 'MiB', *private, PRIVATE)
    yield Figure('idle: resident memory', 'MiB', *resident, RESIDENT)
    yield Figure(f'idle: wake-ups in {WATCHED} s', '', *wake_ups, WAKE_UPS)


def memory(subject):
    with subject as service:
        service.settle()
        return service.memory('Private_Dirty'), service.memory('Rss')


def count_wake_ups():
    """Both at the same time; the service ends itself after 30 seconds, which leaves 10 to settle."""
    with product() as ours, floor('floor-startup') as bare:
        services = ours, bare
        for service in services:
            service.settle()
        before = [service.switches() for service in services]
        time.sleep(WATCHED)
        return [service.switches() - count for service, count in zip(services, before)]
