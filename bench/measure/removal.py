# SPDX-FileCopyrightText: velmora-installationhandler contributors
# SPDX-License-Identifier: BSD-3-Clause
"""Removals by name: through the package manager and through PackageKit."""

import shutil
from pathlib import Path
from statistics import median, quantiles

from harness.busmonitor import BusMonitor

from .figure import Value
from .packages import databases
from .programs import FLOOR, PEERS, PROCESSES, PRODUCT, SESSION, SYSTEM, running, stopwatch
from .requests import Requests

# The benchmark's package manager knows the first one only; the other one is in the RPM database, and has a launcher.
MANAGED = 'bench-removal'
NATIVE = 'native-0050'

ROUNDS = 3
REMOVALS = 3000
MANAGED_LIMIT = 1.25
NATIVE_LIMIT = 1.15
TAIL_LIMIT = 2
PART = 500
CALLS_LIMIT = 3


def figures():
    with running(PEERS):
        managed = Requests(ROUNDS, REMOVALS, 'remove', MANAGED)
        yield managed.time_figure('removal by name: call to removalFinished', MANAGED_LIMIT)
        yield Value('removal by name: 99th percentile', '× median', *map(tail, managed.times),
                    TAIL_LIMIT)
        yield platform_calls()
        yield managed.memory_figure('removals by name')
        yield managed.growth_figure('removals by name')
        native = Requests(ROUNDS, REMOVALS, 'remove', NATIVE, {'HOME': home_with_database()})
        yield native.time_figure('removal through PackageKit: call to removalFinished', NATIVE_LIMIT)
        yield native.memory_figure('removals through PackageKit')
        yield native.growth_figure('removals through PackageKit')


def tail(rounds):
    """The 99th percentile of the calmest part. Other programs disturb some parts; delays of the product show in all."""
    parts = [times[start:start + PART] for times in rounds for start in range(0, len(times), PART)]
    return [min(quantiles(part, n=100)[-1] / median(part) for part in parts)]


def platform_calls():
    """All method calls that leave the process: GetPackage, Remove, updatingFinished."""
    return Value('removal by name: calls of the platform', 'calls', *[[count_calls(one)] for one in (PRODUCT, FLOOR)],
                 CALLS_LIMIT)


def count_calls(program):
    with running(program) as process:
        monitors = [(BusMonitor(bus, PROCESSES), bus.name_of_process(process.pid)) for bus in (SESSION, SYSTEM)]
        stopwatch('requests', 'remove', 1, MANAGED, program.name)
        calls = sum(len(monitor.calls(name)) for monitor, name in monitors)
        for monitor, _ in monitors:
            monitor.close()
        return calls


def home_with_database():
    """A home folder whose owner's RPM uses one of the databases."""
    home = Path('/tmp/home')
    home.mkdir(exist_ok=True)
    shutil.chown(home, 'velmora')
    (home / '.rpmmacros').write_text(f'%_dbpath {databases(100)[0]}\n')
    return str(home)
