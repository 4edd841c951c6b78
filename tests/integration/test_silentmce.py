# SPDX-FileCopyrightText: velmora-installationhandler contributors
# SPDX-License-Identifier: BSD-3-Clause
"""An MCE that never answers."""

import time

import pytest
from support.bustimeout import TIMEOUT


@pytest.mark.parametrize('method', ['Introspect', 'notification_begin_req'])
def test_silence_of_mce_ends(standins, service, client, signals, dialog, method):
    """The dialog is shown after all."""
    mce = standins.start('mce')
    standins.start('package-manager', installs='nothing')
    mce.hang(method, 1)
    dialog.use('Confirming')
    before = time.monotonic()

    client.start('installFiles', '(as)', ['/absent.rpm']).wait(TIMEOUT + 5)

    assert TIMEOUT - 1 < time.monotonic() - before
    assert signals.wait('installFinished') == (True, '')
    service.barrier()
    assert signals.names() == ['needConfirm', 'installFinished']
    assert [call.method for call in mce.calls()] == \
        ['get_display_status', 'notification_begin_req', 'notification_end_req']
