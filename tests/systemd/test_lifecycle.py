# SPDX-FileCopyrightText: velmora-installationhandler contributors
# SPDX-License-Identifier: BSD-3-Clause
"""The unit's states from the call that starts it to the end of the service."""

import os
import signal
import time
from pathlib import Path

import pytest
from harness.client import NAME
from harness.usermanager import RUNTIME, SERVICE, write_unit

RUNNING = ('active (running)', 'success')
ENDED = ('inactive (dead)', 'success')
KILLED = ('failed (failed)', 'signal')


@pytest.fixture
def start(client, unit):
    """Starts the service by a call; its process."""
    def call():
        client.install([])
        assert unit.state() == RUNNING
        return unit.main_process()
    return call


def test_call_starts_the_unit(session_bus, unit, start):
    assert unit.state() == ENDED

    process = start()

    assert session_bus.process_of(NAME) == process
    assert os.stat(f'/proc/{process}').st_uid == 100000
    assert Path(f'/proc/{process}/cgroup').read_text(encoding='ascii').endswith(f'/{unit.name}\n')
    assert start() == process


def test_service_works_and_ends_when_it_is_idle(unit, start, client, signals, standins, device):
    """The unit is active during a request, and until the service has been idle for 30 seconds."""
    device.mark_as_emulator()
    standins.start('package-manager', installs='nothing').hang('Install')
    client.install(['/absent.rpm'])
    standins.package_manager.wait_call('Install')
    assert unit.state() == RUNNING
    first = unit.main_process()
    idle = time.monotonic()
    standins.package_manager.release('Install')
    assert signals.wait('installFinished') == (True, '')

    unit.wait_state(*ENDED)

    assert unit.get('InactiveEnterTimestampMonotonic') / 1e6 - idle >= 28
    assert start() != first


def test_unit_can_be_stopped(unit, start):
    first = start()

    unit.stop()

    unit.wait_state(*ENDED)
    assert start() != first


def test_killed_service_starts_again(unit, start):
    first = start()

    os.kill(first, signal.SIGKILL)

    unit.wait_state(*KILLED)
    assert start() != first


@pytest.fixture
def compositor(user_manager):
    """The start of a graphical session, which waits until the function that is returned lets its compositor be ready."""
    ready = RUNTIME / 'compositor-ready'
    os.mkfifo(ready)
    ready.chmod(0o644)
    write_unit('compositor.service', '[Unit]\nBefore=graphical-session.target\n'
               f'[Service]\nType=oneshot\nRemainAfterExit=yes\nExecStart=head --lines=1 {ready}\n')
    write_unit('session.target', '[Unit]\nWants=compositor.service\nBindsTo=graphical-session.target\n')
    # To open a FIFO for reading and writing waits for nobody.
    with ready.open('r+b', buffering=0) as fifo:
        user_manager.start('session.target')
        yield lambda: fifo.write(b'\n')
    ready.unlink()


def test_service_waits_for_the_display(compositor, user_manager, unit, client):
    """A call while the graphical session starts is answered when there is a display."""
    pending = client.start('installFiles', '(as)', [])
    unit.wait_until(lambda: unit.has_job() or unit.state() != ENDED, 'the start of the unit')
    assert unit.state() == ENDED

    compositor()

    pending.wait()
    assert unit.state() == RUNNING
    session = user_manager.unit('graphical-session.target')
    assert session.get('ActiveEnterTimestampMonotonic') <= unit.get('ExecMainStartTimestampMonotonic', SERVICE)
