# SPDX-FileCopyrightText: velmora-installationhandler contributors
# SPDX-License-Identifier: BSD-3-Clause
"""Silent installations: one, a thousand files, thousands of transactions."""

from statistics import median

import dbus

from .environment import FLOOR_NAME, PRODUCT_NAME, floor, folder_of, peers, product, stopwatch
from .figure import AtMost, Figure

SINGLE_ROUNDS = 401
SINGLE = AtMost(1.25)

FILES = 1000
FILES_ROUNDS = 5
LAST_HUNDRED = AtMost(1.1, of_floor=False)

SETTLED = 500
TRANSACTIONS = 5000
TRANSACTION_ROUNDS = 3
MEMORY = AtMost(0.1, of_floor=False)


def figures():
    with peers():
        yield single()
        yield thousand_files()
        yield thousands_of_transactions()


def single():
    with product(), floor('floor-installation'):
        run = stopwatch('installation', SINGLE_ROUNDS, folder_of(1), PRODUCT_NAME, FLOOR_NAME)
    ours, bare = ([value / 1000 for value in samples] for samples in run)
    return Figure('silent installation: call to installFinished', 'ms', ours, bare, SINGLE)


def thousand_files():
    subjects = [(product, PRODUCT_NAME), (lambda: floor('floor-installation'), FLOOR_NAME)]
    rounds = [[last_to_first_hundred(*subject) for subject in subjects] for _ in range(FILES_ROUNDS)]
    ours, bare = zip(*rounds)
    return Figure(f'{FILES:,} files: one of the last hundred', '× one of the first', ours, bare, LAST_HUNDRED)


def last_to_first_hundred(start, name):
    take_stamps()
    with start():
        stopwatch('installation', 1, folder_of(FILES), name)
    stamps = take_stamps()
    each = [after - before for before, after in zip(stamps, stamps[1:])]
    return median(each[-100:]) / median(each[:100])


def take_stamps():
    return dbus.SystemBus().call_blocking('ru.quon.ZARN', '/ru/quon/ZARN', 'ru.quon.ZARN', 'TakeStamps', '', ())


def thousands_of_transactions():
    rounds = [memory_gained() for _ in range(TRANSACTION_ROUNDS)]
    ours, bare = zip(*rounds)
    return Figure(f'{TRANSACTIONS:,} transactions: memory gained by each', 'KiB', ours, bare, MEMORY)


def memory_gained():
    with product() as ours, floor('floor-installation') as bare:
        services = ours, bare
        stopwatch('installation', SETTLED, folder_of(1), PRODUCT_NAME, FLOOR_NAME)
        before = [service.memory('Private_Dirty') for service in services]
        count = TRANSACTIONS - SETTLED
        stopwatch('installation', count, folder_of(1), PRODUCT_NAME, FLOOR_NAME)
        return [(service.memory('Private_Dirty') - start) / count for service, start in zip(services, before)]
