# SPDX-FileCopyrightText: velmora-installationhandler contributors
# SPDX-License-Identifier: BSD-3-Clause
"""A service that has removed by name, with every outcome."""

from gi.repository import GLib
from support.idle import IdleTime, pass_time
from support.transactionsignals import error_code, finished, package_found

FOUND = package_found('a;1;noarch;installed')


def test_service_ends_30_seconds_after_the_last(processes, standins, service, session_bus, client, signals):
    """No request is still counted, also none that ended twice or before its beginning was counted."""
    manager = standins.start('package-manager', installs='nothing')
    packagekit = standins.start('package-kit')
    pass_time(processes, 6)
    manager.answer('GetPackage', GLib.Variant('(a{ss})', ({},)), times=2)
    manager.refuse('Remove', 'a.b.Busy', 'in use', times=1)
    packagekit.script('Resolve', [error_code('No.')], times=1)
    packagekit.script('Resolve', [FOUND, finished()], times=2)
    packagekit.script('RemovePackages', [error_code('No.')], times=1)

    client.remove(['1', '2', '3', '4', '5', '6'])
    signals.wait('removalFinished', 6)
    packagekit.kill()
    with IdleTime() as idle:
        client.remove(['7'])
        signals.wait('removalFinished', 8)

    assert idle.wait_exit(service, session_bus) == 0
    assert sorted(signals.arguments('removalFinished')[:6]) == \
        [(False, 'No.'), (False, 'No.'), (False, 'in use')] + [(True, '')] * 3
