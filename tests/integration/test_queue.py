# SPDX-FileCopyrightText: velmora-installationhandler contributors
# SPDX-License-Identifier: BSD-3-Clause
"""Requests that come while others are at work."""

import pytest

INSTALLED = (True, '')


@pytest.fixture(autouse=True)
def package_manager(standins, dialog):
    """Installs nothing; the user answers when told."""
    dialog.use('Controlled')
    return standins.start('package-manager', installs='nothing')


def outcomes(signals):
    """The signals in order: True and False for installFinished, "asked" for needConfirm."""
    return ['asked' if signal.name == 'needConfirm' else signal.arguments[0] for signal in signals.all]


def test_requests_wait_while_the_dialog_is_on_screen(service, client, signals, dialog, package_manager):
    for file in ('/first.rpm', '/second.rpm', '/third.rpm'):
        client.install([file])

    assert dialog.wait_shown(1)['fileName'] == '/first.rpm'
    service.barrier()
    assert outcomes(signals) == ['asked']

    dialog.answer('dismissed', number=1)
    assert dialog.wait_shown(2)['fileName'] == '/second.rpm'
    service.barrier()
    assert outcomes(signals) == ['asked', False, 'asked']

    dialog.answer('requestInstall', number=2)
    assert dialog.wait_shown(3)['fileName'] == '/third.rpm'
    service.barrier()
    assert outcomes(signals) == ['asked', False, 'asked', True, 'asked']

    dialog.answer('dismissed', number=3)
    signals.wait('installFinished', 3)
    service.barrier()
    assert outcomes(signals) == ['asked', False, 'asked', True, 'asked', False]
    assert [call.arguments[0] for call in package_manager.calls('Install')] == ['/second.rpm']


def test_request_of_several_files_is_not_interrupted(service, client, signals, dialog):
    client.install(['/one.rpm', '/two.rpm'])
    client.install(['/other.rpm'])

    dialog.wait_shown(1)
    dialog.answer('requestInstall', number=1)
    assert dialog.wait_shown(2)['fileName'] == '/two.rpm'
    dialog.answer('dismissed', number=2)
    assert dialog.wait_shown(3)['fileName'] == '/other.rpm'
    service.barrier()
    assert outcomes(signals) == ['asked', 'asked', False, 'asked']


def test_waiting_request_is_not_started_by_the_dialogs_end(service, client, signals, dialog, package_manager):
    """The end of a request starts it."""
    package_manager.hang('Install', 1)
    client.install(['/first.rpm'])
    dialog.wait_shown(1)
    client.install(['/second.rpm'])

    dialog.answer('requestInstall', number=1)
    package_manager.wait_call('Install')
    service.barrier()
    assert outcomes(signals) == ['asked']

    package_manager.release('Install')
    assert dialog.wait_shown(2)['fileName'] == '/second.rpm'
    service.barrier()
    assert outcomes(signals) == ['asked', True, 'asked']


def test_new_request_lets_the_oldest_one_go_first(service, client, signals, dialog, package_manager):
    """A request waits for a dialog, but not for an installation. Known behaviour 54."""
    package_manager.hang('Install', 1)
    client.install(['/first.rpm'])
    dialog.wait_shown(1)
    client.install(['/second.rpm'])
    dialog.answer('requestInstall', number=1)
    package_manager.wait_call('Install')
    service.barrier()

    client.install(['/third.rpm'])

    assert dialog.wait_shown(2)['fileName'] == '/second.rpm'
    service.barrier()
    assert outcomes(signals) == ['asked', 'asked']


def test_requests_install_side_by_side_without_the_dialog(standins, service, client, signals, package_manager,
                                                          device):
    """Each ends on its own, whichever began first, and no signal says which. Known behaviour 5."""
    device.mark_as_emulator()
    package_manager.hang('Install')
    client.install(['/first.rpm'])
    client.install(['/second.rpm'])
    assert package_manager.wait_call('Install', 2).arguments[0] == '/second.rpm'
    service.barrier()
    assert signals.all == []

    package_manager.release_refusing('Install', 'a.b.NoSpace', which=1)
    assert signals.wait('installFinished') == (False, 'zarn_installation_error_desc_NoSpace (code: NoSpace)')
    service.barrier()
    assert outcomes(signals) == [False]

    package_manager.release('Install')
    assert signals.wait('installFinished', 2) == INSTALLED
    service.barrier()
    assert outcomes(signals) == [False, True]


@pytest.mark.parametrize('disappear', ['hide', 'close'])
def test_dialog_that_disappears_holds_nothing_back(service, client, signals, dialog, disappear):
    """Only a dialog on screen makes requests wait. The service does not end with its last window."""
    client.install(['/first.rpm'])
    dialog.wait_shown(1)
    dialog.answer(disappear, number=1)
    service.wait_for_log('dialog 1 hides')
    service.barrier()

    client.install(['/second.rpm'])

    assert dialog.wait_shown(2)['fileName'] == '/second.rpm'
    service.barrier()
    assert outcomes(signals) == ['asked', 'asked']


def test_empty_request_waits_too(service, client, signals, dialog):
    """A request that ends inside its own start lets the next one start."""
    client.install(['/first.rpm'])
    dialog.wait_shown(1)
    for files in ([], [], ['/second.rpm'], []):
        client.install(files)
    service.barrier()
    assert outcomes(signals) == ['asked']

    dialog.answer('dismissed', number=1)
    assert dialog.wait_shown(2)['fileName'] == '/second.rpm'
    service.barrier()
    assert outcomes(signals) == ['asked', False, True, True, 'asked']

    dialog.answer('dismissed', number=2)
    signals.wait('installFinished', 5)
    assert outcomes(signals) == ['asked', False, True, True, 'asked', False, True]


def test_policy_is_asked_when_a_request_starts(service, client, signals, dialog, device):
    """It is read neither when the request arrives nor later on."""
    client.install(['/first.rpm', '/second.rpm'])
    client.install(['/third.rpm'])
    dialog.wait_shown(1)
    device.set_policy('[Applications]\nInstallationEnabled=false\n')

    dialog.answer('requestInstall', number=1)
    dialog.wait_shown(2)
    dialog.answer('requestInstall', number=2)

    assert signals.wait('installFinished', 1) == INSTALLED
    assert signals.wait('installFinished', 2)[0] is False
    assert outcomes(signals) == ['asked', 'asked', True, False]
