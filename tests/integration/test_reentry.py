# SPDX-FileCopyrightText: velmora-installationhandler contributors
# SPDX-License-Identifier: BSD-3-Clause
"""Requests that end inside their own start."""

import pytest

REFUSING_POLICY = '[Applications]\nInstallationEnabled=false\n'


@pytest.fixture
def sent(service, session_bus, session_monitor):
    """The service's signals and replies to installFiles, in the order of the bus."""
    def in_order():
        calls = [message.serial for message in session_monitor.messages(kind='method-call')
                 if message.member == 'installFiles']
        return [message.member or 'reply'
                for message in session_monitor.messages(session_bus.name_of_process(service.process.pid))
                if message.kind == 'signal' or message.reply_serial in calls]
    return in_order


def test_outcome_of_an_installation_comes_after_the_reply(standins, install_and_wait, device, sent):
    standins.start('package-manager', installs='nothing')
    device.mark_as_emulator()

    install_and_wait(['/absent.rpm'])
    assert sent() == ['reply', 'installFinished']


def test_dialog_comes_before_the_reply_which_does_not_wait_for_its_answer(client, dialog, sent):
    dialog.use('Controlled')

    client.install(['/absent.rpm'])

    dialog.wait_shown()
    assert sent() == ['needConfirm', 'reply']


@pytest.mark.parametrize('policy, outcome', [('', True), (REFUSING_POLICY, False)], ids=['empty', 'refused'])
def test_many_in_a_row_end_one_by_one(service, client, signals, device, sent, policy, outcome):
    """Each outcome comes before the reply. Known behaviour 2."""
    device.set_policy(policy)

    calls = [client.start('installFiles', '(asbb)', [], False, False) for _ in range(20)]

    for call in calls:
        assert call.wait() == ()
    service.barrier()
    assert [success for success, _ in signals.arguments('installFinished')] == [outcome] * 20
    assert sent() == ['installFinished', 'reply'] * 20
    assert service.warnings() == []


def test_nothing_remains_of_them(service, client, signals, announced, device, dialog):
    """The next request is asked about as the first one would have been."""
    dialog.use('Dismissing')
    client.install([])
    device.set_policy(REFUSING_POLICY)
    client.install(['/absent.rpm'])
    device.set_policy(None)

    client.install(['/absent.rpm'])

    assert signals.wait('installFinished', 3) == (False, 'The user cancelled the installation')
    assert announced() == ['installFinished', 'installFinished', 'needConfirm', 'installFinished']
