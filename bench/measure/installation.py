# SPDX-FileCopyrightText: velmora-installationhandler contributors
# SPDX-License-Identifier: BSD-3-Clause
"""Silent installations: thousands of transactions, and one of a thousand files."""

from statistics import median

from harness.client import Client

from .figure import ITSELF, Ratio
from .packages import folder_of
from .programs import PEERS, PRODUCT, PROCESSES, SYSTEM, running, stopwatch
from .requests import GROWTH_LIMIT, HUNDRED, Requests

TRANSACTIONS = 5000
TIME_LIMIT = 1.25
FILES = 1000
ROUNDS = 6


def figures():
    with running(PEERS):
        requests = Requests(1, TRANSACTIONS, 'install', folder_of(1))
        yield requests.time_figure('silent installation: call to installFinished', TIME_LIMIT)
        yield requests.memory_figure('transactions')
        yield thousand_files()


def thousand_files():
    """Each transaction's last hundred files are compared with the first hundred before and after them."""
    with running(PRODUCT):
        transactions = [first_and_last() for _ in range(ROUNDS)]
    firsts, lasts = zip(*transactions)
    return Ratio(f'{FILES:,} files: last hundred against the first', 'ms', [*lasts, *lasts[:-1]],
                 [*firsts, *firsts[1:]], GROWTH_LIMIT, beside=ITSELF)


def first_and_last():
    """Milliseconds of one file among the first and among the last hundred of a transaction."""
    take_stamps()
    stopwatch('requests', 'install', 1, folder_of(FILES), PRODUCT.name)
    stamps = take_stamps()
    each = [(after - before) / 1000 for before, after in zip(stamps, stamps[1:])]
    return median(each[:HUNDRED]), median(each[-HUNDRED:])


def take_stamps():
    """Microseconds of the package manager's clock, for each file since the last time."""
    manager = 'ru.quon.ZARN'
    return Client(SYSTEM.connection, PROCESSES).call('TakeStamps', name=manager, path='/ru/quon/ZARN',
                                                     interface=manager)[0]
