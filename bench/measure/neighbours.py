# SPDX-FileCopyrightText: velmora-installationhandler contributors
# SPDX-License-Identifier: BSD-3-Clause
"""Programs that happen to be installed and do something alike, beside the product doing it."""

import shutil
import subprocess
import time
from pathlib import Path

import dbus

from .environment import PRODUCT_NAME, Service, folder_of, package, peers, product, stopwatch
from .figure import Neighbour, Skipped

ROUNDS = 11

PACKAGEKITD = '/usr/libexec/packagekitd'
PACKAGEKIT = ('org.freedesktop.PackageKit', PACKAGEKITD, '--backend', 'dummy')

# Other services that live on a bus: the bus, the name, the command.
SERVICES = [
    (dbus.SystemBus, *PACKAGEKIT),
    (dbus.SystemBus, 'org.freedesktop.PolicyKit1', '/usr/lib/polkit-1/polkitd', '--no-debug'),
    (dbus.SessionBus, 'ca.desrt.dconf', '/usr/libexec/dconf-service'),
]


def figures():
    with peers():
        yield from services()
        yield from request()
    yield from read()


def services():
    ours = [start_up(product()) for _ in range(ROUNDS)]
    for bus, name, *command in SERVICES:
        label = Path(command[0]).name
        if not Path(command[0]).exists():
            yield Skipped(label, 'not installed')
            continue
        theirs = [start_up(Service(name, *command, bus=bus())) for _ in range(ROUNDS)]
        for index, (what, unit) in enumerate([('time to name owned', 'ms'), ('private memory when idle', 'MiB')]):
            yield Neighbour(f'{label}, {what}', unit, *([run[index] for run in runs] for runs in (theirs, ours)))


def start_up(subject):
    begun = time.perf_counter()
    with subject as service:
        took = (time.perf_counter() - begun) * 1000
        service.settle()
        return took, service.memory('Private_Dirty') / 1024


def request():
    label = 'pkcon get-details-local, a whole request, against a silent installation'
    if not shutil.which('pkcon') or not Path(PACKAGEKITD).exists():
        yield Skipped(label, 'not installed')
        return
    with product():
        (ours,) = stopwatch('installation', ROUNDS, folder_of(1), PRODUCT_NAME)
    with Service(*PACKAGEKIT, bus=dbus.SystemBus()):
        theirs = [whole_process('pkcon', '--plain', 'get-details-local', package('10K')) for _ in range(ROUNDS)]
    yield Neighbour(label, 'ms', theirs, [value / 1000 for value in ours])


def read():
    label = 'rpm -qp, a whole process, against one read'
    if not shutil.which('rpm'):
        yield Skipped(label, 'not installed')
        return
    ours, _ = stopwatch('read', 'time', ROUNDS, package('10K'))
    theirs = [whole_process('rpm', '-qp', package('10K')) for _ in range(ROUNDS)]
    yield Neighbour(label, 'ms', theirs, [value / 1000 for value in ours])


def whole_process(*command):
    begun = time.perf_counter()
    subprocess.run(command, check=True, stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL)
    return (time.perf_counter() - begun) * 1000
