# SPDX-FileCopyrightText: velmora-installationhandler contributors
# SPDX-License-Identifier: BSD-3-Clause
"""A launcher model that never answers: the bus library's time-out ends each call."""

import time

from gi.repository import GLib
from support.bustimeout import TIMEOUT


def test_silence_delays_a_removal_and_no_more(standins, service, client, signals, device):
    launcher_model = standins.start('launcher-model')
    manager = standins.start('package-manager', installs='nothing')
    manager.answer('GetPackage', GLib.Variant('(a{ss})', ({},)))
    launcher = device.home / '.local/share/applications/a.desktop'
    launcher.parent.mkdir(parents=True)
    launcher.touch()
    for method in ('updatingStarted', 'updatingFinished'):
        launcher_model.hang(method, 1)
    before = time.monotonic()

    client.start('removePackages', '(as)', ['a']).wait(TIMEOUT + 5)
    removal = time.monotonic()
    assert signals.wait('removalFinished', seconds=TIMEOUT + 5) == (True, '')

    assert TIMEOUT - 1 < removal - before
    assert TIMEOUT - 1 < time.monotonic() - removal
    assert len(manager.calls('Remove')) == 1
    assert service.warnings() == []
    client.remove(['a'])
    assert signals.wait('removalFinished', 2) == (True, '')
