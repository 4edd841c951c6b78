# SPDX-FileCopyrightText: velmora-installationhandler contributors
# SPDX-License-Identifier: BSD-3-Clause
"""A service that nobody needs."""

from harness.client import NAME
from support.idle import IdleTime, pass_time


def test_service_ends_after_30_seconds(processes, program, session_bus, client, signals):
    """A look at it does not count; the next request finds a new one."""
    session_bus.allow_activation()
    with IdleTime() as idle:
        program.start()
    pass_time(processes, 5)
    program.barrier()

    assert idle.wait_exit(program, session_bus) == 0

    assert program.log() == []
    client.install([])
    assert signals.wait('installFinished') == (True, '')
    assert session_bus.has_owner(NAME)
