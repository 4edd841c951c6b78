# SPDX-FileCopyrightText: velmora-installationhandler contributors
# SPDX-License-Identifier: BSD-3-Clause
"""How long the program waits. All cases wait at the same time."""

import time
from pathlib import Path

import pytest
from harness.bus import ACTIVATION_FOLDER, SERVICE_FILE
from harness.client import NAME

pytestmark = pytest.mark.side_by_side

LAUNCHER = Path('/usr/share/applications/app.desktop')
UNREQUESTED = 'velmora-installctl: not requested: 1 of 2'


@pytest.fixture
def file(tmp_path):
    """A package file."""
    path = tmp_path / 'file.rpm'
    path.touch()
    return path


def test_call_that_is_answered_late(standins, manager, service, ctl):
    """The service has 25 seconds, or as many as it is given. Known behaviour 3."""
    standins.start('package-kit')
    manager.hang('GetPackage', 1)
    runs = [ctl.start('remove', '--quiet', *option, 'app') for option in ([], ['--timeout', '0'], ['--timeout=200'])]
    before = time.monotonic()

    assert runs[0].wait() == (124, [], ['app: timeout: no answer within 25 s; the service may go on'])
    assert time.monotonic() - before >= 24
    manager.release('GetPackage')
    # One that sees the request of another one in time is not certain.
    for run in runs[1:]:
        assert run.wait() in [(0, [], []), (4, [], ['app: removed (may be the outcome of another request)'])]


def test_people_have_all_the_time(manager, service, dialog, ctl, file):
    """There is no limit while the user is asked and the package is installed."""
    dialog.use('Controlled')
    run = ctl.start('install', file)
    dialog.wait_shown(1)
    monitor = ctl.start('monitor', '--json', '--timeout', '26')
    assert monitor.wait()[::2] == (0, [])
    assert monitor.objects()[-1] == {'event': 'end', 'outcome': 'done', 'status': 0}
    dialog.answer('requestInstall')

    assert run.wait()[::2] == (0, [])


def test_limit(manager, service, dialog, ctl, file, signals):
    """It is for all requests together, and the service goes on."""
    dialog.use('Controlled')
    run = ctl.start('install', '--timeout', '15', file, '/etc/os-release')
    dialog.wait_shown(1)

    assert run.wait()[::2] == (124, [f'{file}: timeout: no outcome within 15 s; the service goes on', UNREQUESTED])
    dialog.answer('requestInstall')
    assert signals.wait('installFinished') == (True, '')


def test_service_that_does_not_start(session_bus, ctl, file):
    """It has been started and does not take its name."""
    session_bus.allow_activation()
    started = ACTIVATION_FOLDER / SERVICE_FILE.name
    started.unlink()
    started.write_text(f'[D-BUS Service]\nName={NAME}\nExec=/usr/bin/sleep 100\n', encoding='ascii')
    session_bus.ask('ReloadConfig', '()')

    assert ctl('install', '--quiet', '--timeout', '10', file, '/etc/os-release') == \
        (69, [], ['velmora-installctl: the service is not available: it has not started within 10 s', UNREQUESTED])


def test_launcher_that_stays(standins, manager, service, ctl):
    """Nobody owns it, and the service does not report that (Known behaviour 21). The user may not read it."""
    standins.start('package-kit')
    LAUNCHER.touch()
    LAUNCHER.chmod(0)
    before = time.monotonic()

    assert ctl('remove', '--launcher', LAUNCHER, '--quiet', group='privileged') == \
        (4, [], [f'{LAUNCHER}: unclear: the service has reported nothing, and the launcher is still there'])
    assert time.monotonic() - before >= 59


def test_launcher_that_goes(standins, manager, service, ctl):
    """An Android application goes without a report (Known behaviour 21)."""
    standins.start('package-kit', 'android-support')
    LAUNCHER.write_text('[Desktop Entry]\nX-zindro-apkfile=/data/app.apk\n', encoding='ascii')

    run = ctl('remove', '--launcher', LAUNCHER, group='privileged')
    assert (run.status, run.err) == (0, [])
    assert run.out[-1] == f'{LAUNCHER}: removed: the launcher is gone, and the service has reported nothing'
    assert not LAUNCHER.exists()
