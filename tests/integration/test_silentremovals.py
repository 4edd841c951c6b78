# SPDX-FileCopyrightText: velmora-installationhandler contributors
# SPDX-License-Identifier: BSD-3-Clause
"""Peers that never answer a removal by launcher: the bus library's time-out ends it."""

import time
from pathlib import Path

from support.bustimeout import TIMEOUT

LAUNCHER = Path('/usr/share/applications/foo.desktop')


def test_silence_of_the_hook_ends(standins, service, client, signals, device):
    hooks = standins.start('runtime-manager')
    hooks.hang('OnRemove', 1)
    launcher = device.home / '.local/share/applications/foo.desktop'
    launcher.parent.mkdir(parents=True)
    launcher.touch()
    before = time.monotonic()

    client.start('removePackageByDesktopFile', '(s)', str(launcher)).wait(TIMEOUT + 5)

    assert TIMEOUT - 1 < time.monotonic() - before
    (warning,) = service.warnings()
    assert warning.startswith("Failed to call ZARN hook 'OnRemove' for Runtime Manager service:  "
                              '"Did not receive a reply. ')
    assert not launcher.exists()
    launcher.touch()
    client.remove_launcher(launcher)
    service.barrier()
    assert len(service.warnings()) == 1
    assert signals.names() == []


def test_silence_of_android_support_ends(standins, service, client, signals):
    android, _ = standins.start('android-support', 'package-kit')
    android.hang('removeFile', 1)
    LAUNCHER.write_text('[Desktop Entry]\nX-zindro-apkfile=/foo.apk\n', encoding='utf-8')

    client.remove_launcher(LAUNCHER)
    android.wait_call('removeFile')
    before = time.monotonic()
    service.wait_for_log('failed to remove android app', seconds=TIMEOUT + 5)

    assert TIMEOUT - 1 < time.monotonic() - before
    assert service.log() == ['warning default: InstallationHandler::removePackageByDesktopFile(const QString&)::'
                             '<lambda(const QString&, const QString&)> '
                             f'failed to remove android app: "{LAUNCHER}"']
    assert LAUNCHER.exists()
    client.remove_launcher(LAUNCHER)
    android.wait_call('removeFile', 2)
    service.barrier()
    assert not LAUNCHER.exists()
    assert signals.names() == []
