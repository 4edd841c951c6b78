# SPDX-FileCopyrightText: velmora-installationhandler contributors
# SPDX-License-Identifier: BSD-3-Clause
"""Peers that never answer, and a service that is to end after all that its peers have done to it."""

import time

from gi.repository import GLib

REFUSING_POLICY = '[Applications]\nInstallationEnabled=false\n'
NO_REPLY = ('Could not fetch developer mode state:  "Did not receive a reply. Possible causes include: the remote '
            'application did not send a reply, the message bus security policy blocked the reply, the reply timeout '
            'expired, or the network connection was broken."')

# The time-out of the bus library, in seconds.
TIMEOUT = 25


def test_silence_of_developer_mode_ends(standins, service, client, signals, dialog):
    """The service blocks meanwhile; others wait for it."""
    developer_mode = standins.start('developer-mode', silent_installation=True)
    standins.start('package-manager', installs='nothing')
    developer_mode.hang('IsSilentInstallationEnabled', 1)
    dialog.use('Confirming')
    before = time.monotonic()

    request = client.start('installFiles', '(asb)', ['/absent.rpm'], True)
    developer_mode.wait_call('IsSilentInstallationEnabled')
    other = client.start('installFiles', '(asb)', ['/other.rpm'], True)

    request.wait(TIMEOUT + 5)
    assert TIMEOUT - 1 < time.monotonic() - before
    signals.wait('installFinished', 2)
    other.wait()
    assert sorted(signals.names()) == ['installFinished', 'installFinished', 'needConfirm']
    assert signals.arguments('installFinished') == [(True, '')] * 2
    service.barrier()
    assert service.warnings() == [NO_REPLY]
    assert sorted(call.arguments[0] for call in standins.package_manager.calls()) == ['/absent.rpm', '/other.rpm']


def test_silence_of_mce_ends(standins, service, client, signals, dialog):
    """The dialog is shown after all."""
    mce = standins.start('mce')
    standins.start('package-manager', installs='nothing')
    mce.hang('notification_begin_req', 1)
    dialog.use('Confirming')
    before = time.monotonic()

    client.start('installFiles', '(as)', ['/absent.rpm']).wait(TIMEOUT + 5)

    assert TIMEOUT - 1 < time.monotonic() - before
    assert signals.wait('installFinished') == (True, '')
    service.barrier()
    assert signals.names() == ['needConfirm', 'installFinished']
    assert [call.method for call in mce.calls()] == ['get_display_status', 'notification_begin_req', 'notification_end_req']


def test_process_ends_after_every_fault(platform, service, client, signals, dialog, device):
    """Thirty seconds after the last of them: no request is still counted."""
    dialog.use('Confirming')
    for fault in (refuse, answer_nonsense, forbid, hang_and_die):
        fault(platform, client, signals, device)
    service.barrier()
    finished = time.monotonic()

    assert service.wait_exit(40) == 0

    assert 28 < time.monotonic() - finished < 32.5
    assert len(signals.arguments('installFinished')) == 7


def request(client, signals, success):
    number = len(signals.arguments('installFinished')) + 1
    client.install(['/absent.rpm'])
    assert signals.wait('installFinished', number)[0] is success


def refuse(platform, client, signals, _device):
    calls = {platform.developer_mode: ['IsSilentInstallationEnabled'], platform.package_manager: ['Install'],
             platform.mce: ['notification_begin_req', 'notification_end_req']}
    for peer, methods in calls.items():
        for method in methods:
            peer.refuse(method, 'a.b.Refused', times=1)
    request(client, signals, success=False)


def answer_nonsense(platform, client, signals, _device):
    for peer, method in ((platform.developer_mode, 'IsSilentInstallationEnabled'), (platform.package_manager, 'Install'),
                         (platform.mce, 'notification_begin_req'), (platform.mce, 'notification_end_req')):
        peer.answer(method, GLib.Variant('(a{sv})', ({},)), times=1)
    request(client, signals, success=True)


def forbid(platform, client, signals, device):
    device.set_policy(REFUSING_POLICY)
    platform.notifications.refuse('Notify', 'a.b.Refused')
    request(client, signals, success=False)
    platform.notifications.exit_on('Notify', 'before')
    request(client, signals, success=False)
    platform.notifications.wait_exit()
    device.set_policy(None)


def hang_and_die(platform, client, signals, _device):
    """One peer after the other, and none comes back."""
    platform.mce.exit_on('notification_end_req', 'before')
    platform.package_manager.answer('Install', GLib.Variant('()', ()))
    request(client, signals, success=True)
    platform.mce.wait_exit()
    platform.package_manager.hang('Install')
    client.install(['/absent.rpm'])
    platform.package_manager.wait_call('Install', 4)
    platform.package_manager.kill()
    signals.wait('installFinished', 6)
    platform.developer_mode.kill()
    request(client, signals, success=False)
