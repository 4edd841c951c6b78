# SPDX-FileCopyrightText: velmora-installationhandler contributors
# SPDX-License-Identifier: BSD-3-Clause
"""A service that has done its work."""

from support.idle import IdleTime, pass_time


def test_service_ends_30_seconds_after_the_installation(processes, platform, service, session_bus, client, signals,
                                                        dialog, package):
    """Not after its start."""
    dialog.use('Confirming')
    file = package('last')
    pass_time(processes, 6)

    with IdleTime() as idle:
        client.install([file])
        assert signals.wait('installFinished') == (True, '')

    assert idle.wait_exit(service, session_bus) == 0
    assert [line for line in service.log() if ' qml: ' not in line] == [
        'debug default: RPM Package info: "last" "1.0" "The application last"',
        'warning default: "Unable install package without confirm: The installation is not running in sdk mode. '
        'Silent software instalation is not allowed"']
