# SPDX-FileCopyrightText: velmora-installationhandler contributors
# SPDX-License-Identifier: BSD-3-Clause
"""A PackageKit whose methods never answer: the bus library's time-out ends what was asked."""

from pathlib import Path

from support.bustimeout import TIMEOUT
from support.transactionsignals import finished, package_found

LAUNCHER = Path('/usr/share/applications/foo.desktop')
SILENCE = '"Did not receive a reply. '


def reports(service, name):
    """How a removal was reported, one or more times."""
    return [line.replace(f'"{name}"', '').partition(SILENCE)[0].split() for line in service.debugs()
            if line.startswith(('Uninstalled', 'Failed to uninstall')) and f'"{name}"' in line]


def test_silence_ends(standins, service, client, signals):
    """Four requests at once, each with a method of its own that does not answer."""
    packagekit = standins.start('package-kit')
    packagekit.hang('CreateTransaction', 1)
    client.remove(['asked'])
    packagekit.wait_call('CreateTransaction')
    packagekit.hang('Resolve', 1)
    client.remove(['resolved'])
    packagekit.wait_call('Resolve')
    packagekit.script('Resolve', [package_found('removed;1-1;noarch;installed'), finished()], times=1)
    packagekit.hang('RemovePackages', 1)
    client.remove(['removed'])
    packagekit.wait_call('RemovePackages')
    packagekit.hang('SearchFiles', 1)
    LAUNCHER.write_text('[Desktop Entry]\n', encoding='utf-8')
    client.remove_launcher(LAUNCHER)
    packagekit.wait_call('SearchFiles')

    signals.wait('removalFinished', 5, seconds=TIMEOUT + 10)
    service.wait_for_log('Error on resolving desktop file owner', seconds=TIMEOUT + 10)
    service.barrier()

    failed, succeeded = ['Failed', 'to', 'uninstall'], ['Uninstalled']
    assert reports(service, 'asked') == [failed, succeeded]
    assert reports(service, 'resolved') == [failed, succeeded]
    assert reports(service, 'removed') == [failed]
    assert [line.partition(SILENCE)[0].rstrip() for line in service.warnings()] == [
        'Transaction count out of sync!',
        'Error on resolving desktop file owner PackageKit::Transaction::ErrorInternalError']

    client.remove(['next'])
    assert signals.wait('removalFinished', 6) == (True, '')
