# SPDX-FileCopyrightText: velmora-installationhandler contributors
# SPDX-License-Identifier: BSD-3-Clause
"""A service that has searched for the owner of a launcher, and found none."""

from pathlib import Path

from support.idle import pass_time

LAUNCHER = Path('/usr/share/applications/nobodys.desktop')


def test_service_stays(processes, standins, service, client, signals):
    """Other removals that end do not change that."""
    packagekit = standins.start('package-kit')
    LAUNCHER.touch()
    client.remove_launcher(LAUNCHER)
    packagekit.wait_call('SearchFiles')
    client.remove(['absent'])
    assert signals.wait('removalFinished') == (True, '')

    pass_time(processes, 33)

    service.barrier()
    assert signals.names() == ['removalFinished']
    assert service.warnings() == []
