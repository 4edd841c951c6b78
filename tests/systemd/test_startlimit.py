# SPDX-FileCopyrightText: velmora-installationhandler contributors
# SPDX-License-Identifier: BSD-3-Clause
"""A service that crashes again and again, and systemd's limit of starts."""

import os
import signal

import pytest
from harness.usermanager import write_unit
from standin.remoteerror import RemoteError

KILLED = ('failed (failed)', 'signal')


@pytest.fixture(autouse=True)
def limit():
    """One start, in the place of systemd's five in 10 seconds, which a slow machine may not reach. The bus waits longer."""
    write_unit('velmora-installationhandler.service.d/limit.conf',
               '[Unit]\nStartLimitBurst=1\nStartLimitIntervalSec=20\n')


def test_call_beyond_the_limit_fails(client, unit):
    """The bus gives up after 25 seconds, since systemd does not tell it that it does not start the service."""
    client.install([])
    os.kill(unit.main_process(), signal.SIGKILL)
    unit.wait_state(*KILLED)

    with pytest.raises(RemoteError) as failure:
        client.install([])

    assert failure.value.name == 'org.freedesktop.DBus.Error.TimedOut'
    assert unit.state() == KILLED
    client.install([])
    assert unit.state() == ('active (running)', 'success')
