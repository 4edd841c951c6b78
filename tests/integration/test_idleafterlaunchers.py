# SPDX-FileCopyrightText: velmora-installationhandler contributors
# SPDX-License-Identifier: BSD-3-Clause
"""A service that has removed by launcher in every way."""

from pathlib import Path

from gi.repository import GLib
from support.idle import IdleTime, pass_time
from support.transactionsignals import finished, package_found

FOLDER = Path('/usr/share/applications')


def test_service_ends_30_seconds_after_the_last(processes, standins, service, session_bus, client, signals, device):
    """No way leaves the count raised."""
    manager = standins.start('package-manager', installs='nothing')
    android, packagekit, _ = standins.start('android-support', 'package-kit', 'runtime-manager')
    own = device.home / '.local/share/applications/own.desktop'
    own.parent.mkdir(parents=True)
    own.touch()
    for name, text in (('known', ''), ('native', ''), ('android', '[Desktop Entry]\nX-zindro-apkfile=/a.apk\n')):
        (FOLDER / f'{name}.desktop').write_text(text, encoding='utf-8')
    manager.answer('GetPackage', GLib.Variant('(a{ss})', ({},)), times=2)
    pass_time(processes, 6)

    client.remove_launcher(own)
    client.remove_launcher(FOLDER / 'known.desktop')
    assert signals.wait('removalFinished') == (True, '')
    packagekit.script('SearchFiles', [package_found('native;1-1;noarch;installed'), finished()], times=1)
    client.remove_launcher(FOLDER / 'native.desktop')
    assert signals.wait('removalFinished', 2) == (True, '')
    with IdleTime() as idle:
        client.remove_launcher(FOLDER / 'android.desktop')
        android.wait_call('removeFile')
        service.barrier()

    assert idle.wait_exit(service, session_bus) == 0
    assert service.warnings() == []
