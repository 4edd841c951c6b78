# SPDX-FileCopyrightText: velmora-installationhandler contributors
# SPDX-License-Identifier: BSD-3-Clause
"""The companion program."""

from contextlib import contextmanager
from pathlib import Path

from .figure import Ratio
from .packages import folder_of
from .programs import PEERS, PRODUCT, milliseconds, running, stopwatch, tool

ROUNDS = 201
TIME_LIMIT = 1.25
COMPANION = ('/usr/bin/velmora-installctl', 'install', '--no-wait')

# Programs for everybody that make the same call.
CALL = 'org.velmoraos.installationhandler', '/org/velmoraos/installationhandler'
METHOD = f'{CALL[0]}.installFiles'
GDBUS = ('/usr/bin/gdbus', 'call', '--session', '--dest', CALL[0], '--object-path', CALL[1], '--method', METHOD)
DBUS_SEND = ('/usr/bin/dbus-send', '--session', '--print-reply', f'--dest={CALL[0]}', CALL[1], METHOD)


def figures():
    package = folder_of(1) / '0000.rpm'
    commands = [(*COMPANION, package), (tool('floor-submission'), package), (*GDBUS, f'[\'{package}\']'),
                (*DBUS_SEND, f'array:string:{package}')]
    first, *others = commands
    with emulator(), running(PEERS), running(PRODUCT):
        runs = stopwatch('runs', ROUNDS, *first, *(word for command in others for word in ('--', *command)))
    product, floor, gdbus, dbus_send = milliseconds(runs)
    name = 'velmora-installctl install --no-wait'
    yield Ratio(f'{name}: start to exit', 'ms', product, floor, TIME_LIMIT)
    for peer, samples in (('gdbus call', gdbus), ('dbus-send', dbus_send)):
        yield Ratio(f'{name}, beside {peer}: start to exit', 'ms', product, samples, None, beside=peer)


@contextmanager
def emulator():
    """No dialog comes up."""
    marker = Path('/etc/velmoraos-emulator')
    marker.touch()
    yield
    marker.unlink()
