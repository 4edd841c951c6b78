# SPDX-FileCopyrightText: velmora-installationhandler contributors
# SPDX-License-Identifier: BSD-3-Clause
"""Two requests at work: both hear each answer of the user."""

import pytest

ABORTED = (False, 'The user cancelled the installation')


@pytest.fixture(autouse=True)
def two_requests(standins, service, signals, client, dialog):
    """The first one waits for the package manager, and the second one for the user."""
    package_manager = standins.start('package-manager', installs='nothing')
    package_manager.hang('Install')
    dialog.use('Controlled')
    client.install(['/first.rpm', '/next.rpm'])
    dialog.wait_shown(1)
    dialog.answer('requestInstall', number=1)
    package_manager.wait_call('Install')
    service.barrier()
    client.install(['/second.rpm'])
    dialog.wait_shown(2)


def handed_over(standins):
    """The files that the package manager got."""
    return [call.arguments[0] for call in standins.package_manager.calls('Install')]


def test_confirming_the_second_hands_the_first_over_again(standins, service, dialog, signals):
    """Known behaviour 55."""
    dialog.answer('requestInstall', number=2)

    standins.package_manager.wait_call('Install', 3)
    service.barrier()
    assert handed_over(standins) == ['/first.rpm', '/first.rpm', '/second.rpm']
    assert signals.names() == ['needConfirm', 'needConfirm']


def test_declining_the_second_skips_the_first(standins, service, dialog, signals):
    """The first request goes on with its next file, and asks about it. The installation of its first file goes on.
    Known behaviour 56."""
    dialog.answer('dismissed', number=2)

    assert signals.wait('installFinished') == ABORTED
    assert dialog.wait_shown(3)['fileName'] == '/next.rpm'
    dialog.answer('dismissed', number=3)
    assert signals.wait('installFinished', 2) == ABORTED
    standins.package_manager.release('Install')
    service.barrier()
    assert signals.names() == ['needConfirm', 'needConfirm', 'needConfirm', 'installFinished', 'installFinished']
    assert handed_over(standins) == ['/first.rpm']


def test_first_ends_below_its_own_dialog(standins, service, dialog, signals):
    """Nobody receives the answer to that dialog, so its file is not installed. Known behaviour 59."""
    dialog.answer('dismissed', number=2)
    assert signals.wait('installFinished') == ABORTED
    assert dialog.wait_shown(3)['fileName'] == '/next.rpm'

    standins.package_manager.release('Install')
    assert signals.wait('installFinished', 2) == ABORTED
    dialog.answer('requestInstall', number=3)
    service.barrier()

    assert handed_over(standins) == ['/first.rpm']
    assert signals.names() == ['needConfirm'] * 3 + ['installFinished'] * 2


def test_next_file_of_the_first_puts_a_dialog_over_that_of_the_second(standins, service, dialog, signals):
    """Known behaviour 57."""
    standins.package_manager.release('Install')

    assert dialog.wait_shown(3)['fileName'] == '/next.rpm'
    service.barrier()
    assert signals.names() == ['needConfirm', 'needConfirm', 'needConfirm']
    assert 'dialog 2 hides' not in service.process.text

    dialog.answer('requestInstall', number=3)
    standins.package_manager.wait_call('Install', 3)
    service.barrier()
    assert handed_over(standins) == ['/first.rpm', '/next.rpm', '/second.rpm']
