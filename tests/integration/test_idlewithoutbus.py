# SPDX-FileCopyrightText: velmora-installationhandler contributors
# SPDX-License-Identifier: BSD-3-Clause
"""A service that has lost its session bus, and with it its name."""

from support.idle import IdleTime


def test_service_goes_on_and_ends_30_seconds_after_its_work(processes, standins, service, session_bus, client, device):
    package_manager = standins.start('package-manager', installs='nothing')
    package_manager.hang('Install', 1)
    device.mark_as_emulator()
    client.install(['/first.rpm', '/second.rpm'])
    package_manager.wait_call('Install')
    processes.kill(session_bus.process)

    with IdleTime() as idle:
        package_manager.release('Install')
        package_manager.wait_call('Install', 2)

    assert idle.wait_exit_without_bus(service) == 0
    assert [call.arguments[0] for call in package_manager.calls('Install')] == ['/first.rpm', '/second.rpm']
