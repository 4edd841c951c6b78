# SPDX-FileCopyrightText: velmora-installationhandler contributors
# SPDX-License-Identifier: BSD-3-Clause
"""The product, its floors and the platform's services as processes, and the stopwatches."""

import os
import subprocess
import time
from contextlib import contextmanager
from pathlib import Path
from typing import NamedTuple

from harness.bus import Bus
from harness.client import Client
from harness.processes import Processes
from standin import names

SOURCE = Path(__file__).resolve().parent.parent
BUILD = Path(os.environ['VELMORA_BENCH_BUILD'])

PROCESSES = Processes()
SESSION = Bus.device_session(PROCESSES)
SYSTEM = Bus.device_system(PROCESSES)
CLIENT = Client(SESSION.connection, PROCESSES)

MILLISECOND = 1000  # microseconds


class Program(NamedTuple):
    """A program that takes a name on the session bus."""

    name: str
    command: tuple


def tool(name):
    """A program of the benchmark's own build."""
    return BUILD / 'bench' / name


FLOOR_NAME = 'org.velmoraos.installationfloor'
PRODUCT = Program('org.velmoraos.installationhandler', ('/usr/bin/velmora-installationhandler',))
FLOOR = Program(FLOOR_NAME, (tool('floor-service'), SOURCE / 'floors/PlainPage.qml'))
STARTUP_FLOOR = Program(FLOOR_NAME, (tool('floor-startup'),))
PEERS = Program('org.orrinmobile.rozzle', (tool('bench-peers'),))

# Reading the output of a program would take time from it.
UNHEARD = ('sh', '-c', 'exec "$@" >/dev/null 2>&1', 'sh')


@contextmanager
def running(program, environment=None, prefix=UNHEARD):
    """Runs a program of the session from when it has its name until the end of the block; the prefix is a command that
    starts it."""
    process = PROCESSES.start_in_session(program.name, [*prefix, *program.command], environment)
    SESSION.wait_owner(program.name)
    yield process
    process.stop()
    SESSION.wait_owner(program.name, owned=False)


def wait_for_event_loop(program):
    """Returns when the program has handled all that was sent to it before."""
    CLIENT.call('Introspect', name=program.name, interface='org.freedesktop.DBus.Introspectable')


def in_turn(rounds, function, *programs):
    """The results of the function for each program, in alternating order; a list for each program."""
    results = [[] for _ in programs]
    order = list(zip(results, programs))
    for _ in range(rounds):
        for result, program in order:
            result.append(function(program))
        order.reverse()
    return results


def stopwatch(name, *arguments):
    """Runs a stopwatch in the session; a list of its results for each of its subjects."""
    done = subprocess.run([names.SESSION, tool(f'stopwatch-{name}'),
                          *map(str, arguments)], capture_output=True, text=True)
    if done.returncode != 0:
        raise RuntimeError(f'stopwatch-{name}: {done.stderr[-2000:]}')
    return [list(results) for results in zip(*(map(float, line.split()) for line in done.stdout.splitlines()))]


def milliseconds(runs):
    """The lists of a stopwatch that counts microseconds."""
    return [[value / MILLISECOND for value in samples] for samples in runs]


def memory(process, field):
    """One field of the process's memory, in KiB."""
    for line in Path(f'/proc/{process.pid}/smaps_rollup').read_text().splitlines():
        if line.startswith(field + ':'):
            return int(line.split()[1])
    raise KeyError(field)


def switches(process):
    """How often all threads of the process have been put on and taken off a processor."""
    total = 0
    for status in Path(f'/proc/{process.pid}/task').glob('*/status'):
        total += sum(int(line.split()[1]) for line in status.read_text().splitlines() if 'ctxt_switches' in line)
    return total


def settle(*processes):
    """Returns when nothing has happened in the processes for half a second."""
    before = None
    while before != (before := [switches(process) for process in processes]):
        PROCESSES.check_alive('rest')
        time.sleep(0.5)
