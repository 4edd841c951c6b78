# SPDX-FileCopyrightText: velmora-installationhandler contributors
# SPDX-License-Identifier: BSD-3-Clause
"""A service whose requests have ended inside their own start."""

from support.idle import IdleTime, pass_time


def test_service_ends_30_seconds_after_the_last_one(processes, service, session_bus, client, signals, device):
    pass_time(processes, 6)

    with IdleTime() as idle:
        for policy in ('', '[Applications]\nInstallationEnabled=false\n', ''):
            device.set_policy(policy)
            for _ in range(5):
                client.install([])
        signals.wait('installFinished', 15)

    assert idle.wait_exit(service, session_bus) == 0
    assert service.log() == []
