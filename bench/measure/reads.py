# SPDX-FileCopyrightText: velmora-installationhandler contributors
# SPDX-License-Identifier: BSD-3-Clause
"""Reading one package file."""

from .environment import package, stopwatch
from .figure import AtMost, Figure

SIZES = {'10 KB': '10K', '1 MB': '1M', '20 MB': '20M', '200 MB': '200M'}
ROUNDS = 301
TIME = AtMost(1.15)
FLAT = AtMost(1.15)

MEMORY_READS = 2000
MEMORY_ROUNDS = 3
MEMORY = AtMost(0.1, of_floor=False)


def figures():
    by_size = {}
    for label, size in SIZES.items():
        run = stopwatch('read', 'time', ROUNDS, package(size))
        by_size[label] = [[value / 1000 for value in samples] for samples in run]
        yield Figure(f'one read, {label}', 'ms', *by_size[label], TIME)
    smallest, *_, largest = by_size
    yield Figure(f'one read, {largest} against {smallest}', 'ms', by_size[largest][0], by_size[smallest][0], FLAT)
    ours, bare = (memory(reader) for reader in (0, 1))
    yield Figure(f'memory gained by a read, {MEMORY_READS:,} reads', 'KiB', ours, bare, MEMORY)


def memory(reader):
    runs = [stopwatch('read', 'memory', MEMORY_READS, package('10K'), reader) for _ in range(MEMORY_ROUNDS)]
    return [samples[0] / 1024 for (samples,) in runs]
