# SPDX-FileCopyrightText: velmora-installationhandler contributors
# SPDX-License-Identifier: BSD-3-Clause
"""The end of the process after all that its peers have done to it."""

import time

from gi.repository import GLib

REFUSING_POLICY = '[Applications]\nInstallationEnabled=false\n'


def test_process_ends_after_every_fault(platform, service, client, signals, dialog, device):
    """Thirty seconds after the last of them: no request is still counted."""
    dialog.use('Confirming')
    for fault in (refuse, answer_nonsense, forbid, hang_and_die):
        fault(platform, client, signals, device)
    finished = time.monotonic()
    service.barrier()

    assert service.wait_exit(40) == 0

    assert 28 < time.monotonic() - finished < 32.5
    assert len(signals.arguments('installFinished')) == 7


def request(client, signals, success):
    number = len(signals.arguments('installFinished')) + 1
    client.install(['/absent.rpm'])
    assert signals.wait('installFinished', number)[0] is success


def calls(platform):
    """Every peer and method of a request that asks the user."""
    return [(platform.developer_mode, 'IsSilentInstallationEnabled'), (platform.mce, 'notification_begin_req'),
            (platform.mce, 'notification_end_req'), (platform.package_manager, 'Install')]


def refuse(platform, client, signals, _device):
    for peer, method in calls(platform):
        peer.refuse(method, 'a.b.Refused', times=1)
    request(client, signals, success=False)


def answer_nonsense(platform, client, signals, _device):
    for peer, method in calls(platform):
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
