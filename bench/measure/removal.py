# SPDX-FileCopyrightText: velmora-installationhandler contributors
# SPDX-License-Identifier: BSD-3-Clause
"""Removals by name: through the package manager, through PackageKit, thousands of them."""

from pathlib import Path
from statistics import median, quantiles

from .calls import calls
from .environment import FLOOR_NAME, PRODUCT_NAME, floor, packagekit, peers, product, stopwatch
from .figure import AtMost, AtMostMore, Figure

# The benchmark's package manager knows the first one, and not the other one.
MANAGED = 'bench-removal'
NATIVE = 'native-removal'
LAUNCHER = Path(f'/usr/share/applications/{MANAGED}.desktop')

ROUNDS = 5
REMOVALS = 1001  # each round
MANAGED_TIME = AtMost(1.25)
TAIL = AtMost(2, of_floor=False)

NATIVE_REMOVALS = 401
NATIVE_TIME = AtMostMore(1.2)

SETTLED = 200
MANY = 2000
MANY_ROUNDS = 3
MEMORY = AtMost(0.1, of_floor=False)
LAST_HUNDRED = AtMost(1.1, of_floor=False)


def figures():
    with peers(), packagekit():
        yield from managed()
        yield from platform_calls()
        yield native()
        yield from many('package manager', 'floor-removal', MANAGED)
        yield from many('PackageKit', 'floor-packagekitremoval', NATIVE)


def remove(count, package, *names):
    """Milliseconds of each removal, for each of the services."""
    return [[value / 1000 for value in samples] for samples in stopwatch('removal', count, package, *names)]


def managed():
    with product(), floor('floor-removal'):
        rounds = [remove(REMOVALS, MANAGED, PRODUCT_NAME, FLOOR_NAME) for _ in range(ROUNDS)]
    times = [[value for samples in runs for value in samples] for runs in zip(*rounds)]
    tails = [[quantiles(samples, n=100)[-1] / median(samples) for samples in runs] for runs in zip(*rounds)]
    yield Figure('removal by name: call to removalFinished', 'ms', *times, MANAGED_TIME)
    yield Figure('removal by name: 99th percentile', '× median', *tails, TAIL)


def platform_calls():
    """GetPackage, Remove, updatingFinished; and updatingStarted where there is a launcher."""
    yield count_calls('removal by name: calls of the platform', AtMost(3, of_floor=False))
    LAUNCHER.touch()
    yield count_calls('removal by name: the same with a launcher', AtMost(4, of_floor=False))
    LAUNCHER.unlink()


def count_calls(label, bar):
    counts = []
    for subject in product(), floor('floor-removal'):
        with subject as service:
            counts.append([len(calls(service, lambda: remove(1, MANAGED, service.name)))])
    return Figure(label, '', *counts, bar)


def native():
    with product(), floor('floor-packagekitremoval'):
        return Figure('removal through PackageKit: call to removalFinished', 'ms',
                      *remove(NATIVE_REMOVALS, NATIVE, PRODUCT_NAME, FLOOR_NAME), NATIVE_TIME)


def many(backend, bare, package):
    rounds = [remove_many(bare, package) for _ in range(MANY_ROUNDS)]
    gained, slower = ([[one[field] for one in both] for both in zip(*rounds)] for field in (0, 1))
    yield Figure(f'{MANY:,} removals, {backend}: memory gained by each', 'KiB', *gained, MEMORY)
    yield Figure(f'{MANY:,} removals, {backend}: one of the last hundred', '× one of the first', *slower, LAST_HUNDRED)


def remove_many(bare, package):
    """Memory gained by each removal after the first, and time of the last hundred to the first; ours and bare."""
    with product() as ours, floor(bare) as theirs:
        services = ours, theirs
        first = remove(SETTLED, package, PRODUCT_NAME, FLOOR_NAME)
        before = [service.memory('Private_Dirty') for service in services]
        count = MANY - SETTLED
        others = remove(count, package, PRODUCT_NAME, FLOOR_NAME)
        gained = [(service.memory('Private_Dirty') - start) / count for service, start in zip(services, before)]
        slower = [median(late[-100:]) / median(early[:100]) for early, late in zip(first, others)]
        return list(zip(gained, slower))
