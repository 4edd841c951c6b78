# SPDX-FileCopyrightText: velmora-installationhandler contributors
# SPDX-License-Identifier: BSD-3-Clause
"""Requests that come while others are at work, that end inside their own start, or that share the user's answers."""

import pytest
from support.devicestate import REFUSING_POLICY

INSTALLED = (True, '')
CANCELLED = (False, 'The user cancelled the installation')


@pytest.fixture(autouse=True)
def package_manager(manager, dialog):
    """The package manager installs nothing; the user answers when told."""
    dialog.use('Controlled')
    return manager


@pytest.fixture
def outcomes(service, signals):
    """The signals so far, in order: True and False for installFinished, "asked" for needConfirm."""
    def so_far():
        service.barrier()
        return ['asked' if signal.name == 'needConfirm' else signal.arguments[0] for signal in signals.all]
    return so_far


def test_requests_wait_while_the_dialog_is_on_screen(service, client, outcomes, signals, dialog, package_manager):
    for file in ('/first.rpm', '/second.rpm', '/third.rpm'):
        client.install([file])

    assert dialog.wait_shown(1)['fileName'] == '/first.rpm'
    assert outcomes() == ['asked']

    dialog.answer('dismissed', number=1)
    assert dialog.wait_shown(2)['fileName'] == '/second.rpm'
    assert outcomes() == ['asked', False, 'asked']

    dialog.answer('requestInstall', number=2)
    assert dialog.wait_shown(3)['fileName'] == '/third.rpm'
    assert outcomes() == ['asked', False, 'asked', True, 'asked']

    dialog.answer('dismissed', number=3)
    signals.wait('installFinished', 3)
    assert outcomes() == ['asked', False, 'asked', True, 'asked', False]
    assert [call.arguments[0] for call in package_manager.calls('Install')] == ['/second.rpm']


def test_answer_during_a_call_counts_after_it(service, client, signals, dialog, package_manager):
    """The service waits for the package manager when the user answers."""
    client.install(['/first.rpm'])
    dialog.wait_shown(1)
    package_manager.hang('GetPackage', 1)
    removal = client.start('removePackages', '(as)', ['a'])
    package_manager.wait_call('GetPackage')

    dialog.answer('requestInstall', number=1)
    package_manager.release('GetPackage')
    removal.wait()

    assert signals.wait('installFinished') == INSTALLED
    assert [call.method for call in package_manager.calls()] == ['GetPackage', 'Install']


def test_request_of_several_files_is_not_interrupted(service, client, outcomes, dialog):
    client.install(['/one.rpm', '/two.rpm'])
    client.install(['/other.rpm'])

    dialog.wait_shown(1)
    dialog.answer('requestInstall', number=1)
    assert dialog.wait_shown(2)['fileName'] == '/two.rpm'
    dialog.answer('dismissed', number=2)
    assert dialog.wait_shown(3)['fileName'] == '/other.rpm'
    assert outcomes() == ['asked', 'asked', False, 'asked']


def test_waiting_request_is_not_started_by_the_dialogs_end(service, client, outcomes, dialog, package_manager):
    """The end of a request starts it."""
    package_manager.hang('Install', 1)
    client.install(['/first.rpm'])
    dialog.wait_shown(1)
    client.install(['/second.rpm'])

    dialog.answer('requestInstall', number=1)
    package_manager.wait_call('Install')
    assert outcomes() == ['asked']

    package_manager.release('Install')
    assert dialog.wait_shown(2)['fileName'] == '/second.rpm'
    assert outcomes() == ['asked', True, 'asked']


def test_new_request_lets_the_oldest_one_go_first(service, client, outcomes, dialog, package_manager):
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
    assert outcomes() == ['asked', 'asked']


def test_requests_install_side_by_side_without_the_dialog(standins, service, client, outcomes, announced, signals,
                                                          package_manager, device):
    """Each ends on its own, whichever began first, and no signal says which. Known behaviour 5."""
    device.mark_as_emulator()
    package_manager.hang('Install')
    client.install(['/first.rpm'])
    client.install(['/second.rpm'])
    assert package_manager.wait_call('Install', 2).arguments[0] == '/second.rpm'
    assert announced() == []

    package_manager.release_refusing('Install', 'a.b.NoSpace', which=1)
    assert signals.wait('installFinished') == (False, 'zarn_installation_error_desc_NoSpace (code: NoSpace)')
    assert outcomes() == [False]

    package_manager.release('Install')
    assert signals.wait('installFinished', 2) == INSTALLED
    assert outcomes() == [False, True]


@pytest.mark.parametrize('disappear', ['hide', 'close'])
def test_dialog_that_disappears_holds_nothing_back(service, client, outcomes, dialog, disappear):
    """Only a dialog on screen makes requests wait. The service does not end with its last window."""
    client.install(['/first.rpm'])
    dialog.wait_shown(1)
    dialog.answer(disappear, number=1)
    service.wait_for_log('dialog 1 hides')
    service.barrier()

    client.install(['/second.rpm'])

    assert dialog.wait_shown(2)['fileName'] == '/second.rpm'
    assert outcomes() == ['asked', 'asked']


def test_empty_request_waits_too(service, client, outcomes, signals, dialog):
    """A request that ends inside its own start lets the next one start."""
    client.install(['/first.rpm'])
    dialog.wait_shown(1)
    for files in ([], [], ['/second.rpm'], []):
        client.install(files)
    assert outcomes() == ['asked']

    dialog.answer('dismissed', number=1)
    assert dialog.wait_shown(2)['fileName'] == '/second.rpm'
    assert outcomes() == ['asked', False, True, True, 'asked']

    dialog.answer('dismissed', number=2)
    signals.wait('installFinished', 5)
    assert outcomes() == ['asked', False, True, True, 'asked', False, True]


def test_policy_is_asked_when_a_request_starts(service, client, outcomes, signals, dialog, device):
    """It is read neither when the request arrives nor later on."""
    client.install(['/first.rpm', '/second.rpm'])
    client.install(['/third.rpm'])
    dialog.wait_shown(1)
    device.forbid_installing()

    dialog.answer('requestInstall', number=1)
    dialog.wait_shown(2)
    dialog.answer('requestInstall', number=2)

    assert signals.wait('installFinished', 1) == INSTALLED
    assert signals.wait('installFinished', 2)[0] is False
    assert outcomes() == ['asked', 'asked', True, False]


@pytest.fixture
def two_requests(standins, manager, service, signals, client, dialog):
    """The first one waits for the package manager, and the second one for the user."""
    manager.hang('Install')
    client.install(['/first.rpm', '/next.rpm'])
    dialog.wait_shown(1)
    dialog.answer('requestInstall', number=1)
    manager.wait_call('Install')
    service.barrier()
    client.install(['/second.rpm'])
    dialog.wait_shown(2)


def handed_over(standins):
    """The files that the package manager got."""
    return [call.arguments[0] for call in standins.package_manager.calls('Install')]


def test_confirming_the_second_hands_the_first_over_again(two_requests, standins, service, dialog, signals):
    """Known behaviour 55."""
    dialog.answer('requestInstall', number=2)

    standins.package_manager.wait_call('Install', 3)
    service.barrier()
    assert handed_over(standins) == ['/first.rpm', '/first.rpm', '/second.rpm']
    assert signals.names() == ['needConfirm', 'needConfirm']


def test_declining_the_second_skips_the_first(two_requests, standins, service, dialog, signals, announced):
    """The first request goes on with its next file, and asks about it. The installation of its first file goes on.
    Known behaviour 56."""
    dialog.answer('dismissed', number=2)

    assert signals.wait('installFinished') == CANCELLED
    assert dialog.wait_shown(3)['fileName'] == '/next.rpm'
    dialog.answer('dismissed', number=3)
    assert signals.wait('installFinished', 2) == CANCELLED
    standins.package_manager.release('Install')
    assert announced() == ['needConfirm', 'needConfirm', 'needConfirm', 'installFinished', 'installFinished']
    assert handed_over(standins) == ['/first.rpm']


def test_first_ends_below_its_own_dialog(two_requests, standins, service, dialog, signals):
    """Nobody receives the answer to that dialog, so its file is not installed. Known behaviour 59."""
    dialog.answer('dismissed', number=2)
    assert signals.wait('installFinished') == CANCELLED
    assert dialog.wait_shown(3)['fileName'] == '/next.rpm'

    standins.package_manager.release('Install')
    assert signals.wait('installFinished', 2) == CANCELLED
    dialog.answer('requestInstall', number=3)
    service.barrier()

    assert handed_over(standins) == ['/first.rpm']
    assert signals.names() == ['needConfirm'] * 3 + ['installFinished'] * 2


def test_next_file_of_the_first_puts_a_dialog_over_that_of_the_second(two_requests, standins, service, dialog,
                                                                      announced):
    """The dialog below has its texts from then on. Known behaviour 57."""
    standins.package_manager.release('Install')

    assert dialog.wait_shown(3)['fileName'] == '/next.rpm'
    service.wait_for_log('dialog 2 turns to /next.rpm')
    assert announced() == ['needConfirm', 'needConfirm', 'needConfirm']
    assert 'dialog 2 hides' not in service.process.text

    dialog.answer('requestInstall', number=3)
    standins.package_manager.wait_call('Install', 3)
    service.barrier()
    assert handed_over(standins) == ['/first.rpm', '/next.rpm', '/second.rpm']


@pytest.fixture
def sent(service, session_monitor, session_messages):
    """The service's signals and replies to installFiles, in the order of the bus."""
    def in_order():
        calls = [message.serial for message in session_monitor.messages(kind='method-call')
                 if message.member == 'installFiles']
        return [message.member or 'reply'
                for message in session_messages() if message.kind == 'signal' or message.reply_serial in calls]
    return in_order


def test_outcome_of_an_installation_comes_after_the_reply(install_and_wait, device, sent):
    device.mark_as_emulator()

    install_and_wait(['/absent.rpm'])
    assert sent() == ['reply', 'installFinished']


def test_dialog_comes_before_the_reply_which_does_not_wait_for_its_answer(client, dialog, sent):
    client.install(['/absent.rpm'])

    dialog.wait_shown()
    assert sent() == ['needConfirm', 'reply']


@pytest.mark.parametrize('allowed', [True, False], ids=['empty', 'refused'])
def test_many_in_a_row_end_one_by_one(service, client, signals, device, sent, allowed):
    """Requests that end inside their own start: each outcome comes before the reply. Known behaviour 2."""
    device.set_policy('' if allowed else REFUSING_POLICY)

    calls = [client.start('installFiles', '(asbb)', [], False, False) for _ in range(20)]

    for call in calls:
        assert call.wait() == ()
    service.barrier()
    assert [success for success, _ in signals.arguments('installFinished')] == [allowed] * 20
    assert sent() == ['installFinished', 'reply'] * 20
    assert service.warnings() == []


def test_nothing_remains_of_them(service, client, signals, announced, device, dialog):
    """The next request is asked about as the first one would have been."""
    dialog.use('Dismissing')
    client.install([])
    device.forbid_installing()
    client.install(['/absent.rpm'])
    device.set_policy(None)

    client.install(['/absent.rpm'])

    assert signals.wait('installFinished', 3) == (False, 'The user cancelled the installation')
    assert announced() == ['installFinished', 'installFinished', 'needConfirm', 'installFinished']
