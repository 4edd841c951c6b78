# SPDX-FileCopyrightText: velmora-installationhandler contributors
# SPDX-License-Identifier: BSD-3-Clause
"""A developer mode that never answers."""

import time

from support.bustimeout import TIMEOUT

NO_REPLY = ('Could not fetch developer mode state:  "Did not receive a reply. Possible causes include: the remote '
            'application did not send a reply, the message bus security policy blocked the reply, the reply timeout '
            'expired, or the network connection was broken."')


def test_silence_of_developer_mode_ends(standins, service, client, signals, dialog):
    """The service blocks meanwhile; others wait for it."""
    developer_mode = standins.start('developer-mode', silent_installation=True)
    standins.start('package-manager', installs='nothing')
    standins.start('package-kit')
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
    assert sorted(set(signals.names())) == ['installFinished', 'needConfirm', 'removalFinished']
    assert signals.arguments('installFinished') == [(True, '')] * 2
    service.barrier()
    assert service.warnings() == [NO_REPLY]
    assert sorted(call.arguments[0]
                  for call in standins.package_manager.calls('Install')) == ['/absent.rpm', '/other.rpm']
