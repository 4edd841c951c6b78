# SPDX-FileCopyrightText: velmora-installationhandler contributors
# SPDX-License-Identifier: BSD-3-Clause
"""A service that waits for the package manager."""

from support.idle import IdleTime, pass_time


def test_service_stays_until_30_seconds_after_the_installation(processes, standins, service, session_bus, client,
                                                               signals, device):
    """Other requests that end meanwhile do not change that."""
    package_manager = standins.start('package-manager', installs='nothing')
    package_manager.hang('Install', 1)
    device.mark_as_emulator()
    client.install(['/slow.rpm'])
    package_manager.wait_call('Install')
    client.install([])
    client.install(['/quick.rpm'])
    signals.wait('installFinished', 2)

    pass_time(processes, 33)

    service.barrier()
    assert len(signals.all) == 2
    with IdleTime() as idle:
        package_manager.release('Install')
        assert signals.wait('installFinished', 3) == (True, '')
    assert idle.wait_exit(service, session_bus) == 0
