# SPDX-FileCopyrightText: velmora-installationhandler contributors
# SPDX-License-Identifier: BSD-3-Clause
"""A service that waits for its back ends."""

from gi.repository import GLib
from support.idle import IdleTime, pass_time
from support.transactionsignals import finished, package_found

TRANSACTION = 'org.freedesktop.PackageKit.Transaction'


def test_service_stays_until_30_seconds_after_the_last_removal(
        processes, standins, service, session_bus, client, signals):
    """However long they take, and though others end meanwhile: no time-out of the bus library's own comes in between."""
    manager = standins.start('package-manager', installs='nothing')
    packagekit = standins.start('package-kit')
    manager.answer('GetPackage', GLib.Variant('(a{ss})', ({},)), times=1)
    manager.hang('Remove', 1)
    packagekit.script('Resolve', [package_found('b;1;noarch;installed'), finished()], times=1)
    packagekit.script('RemovePackages', [], times=1)
    client.remove(['a', 'b', 'c'])
    assert signals.wait('removalFinished') == (True, '')
    removal = packagekit.wait_call('RemovePackages')

    pass_time(processes, 33)

    service.barrier()
    assert len(signals.all) == 1
    packagekit.emit(removal.path, TRANSACTION, *finished())
    assert signals.wait('removalFinished', 2) == (True, '')
    with IdleTime() as idle:
        manager.release('Remove')
        assert signals.wait('removalFinished', 3) == (True, '')
    assert idle.wait_exit(service, session_bus) == 0
    assert service.warnings() == []
