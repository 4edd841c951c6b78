# SPDX-FileCopyrightText: velmora-installationhandler contributors
# SPDX-License-Identifier: BSD-3-Clause
"""The service does all of its work under the unit's restrictions."""

import shutil
import subprocess
from pathlib import Path

import pytest
from harness.usermanager import SERVICE
from packages import SigningKey
from standin.names import SESSION
from support.packagekit import install

INSTALLED, REMOVED = (True, ''), (True, '')
ABSENT = '/absent.desktop'


def test_restrictions_are_in_force(client, unit):
    client.install([])

    lines = Path(f'/proc/{unit.main_process()}/status').read_text(encoding='utf-8').splitlines()
    status = dict(line.split(':\t', 1) for line in lines)
    assert {name: status[name] for name in ('Umask', 'NoNewPrivs', 'Seccomp')} == {
        'Umask': '0077', 'NoNewPrivs': '1', 'Seccomp': '2'}


@pytest.fixture
def drop_in(examples):
    """Installs the drop-in of the example."""
    comment, _, text = examples[1].partition('\n')
    path = Path(comment.removeprefix('# '))
    path.parent.mkdir(parents=True)
    path.write_text(text, encoding='utf-8')
    yield
    shutil.rmtree(path.parent)


def test_drop_in_allows_more(drop_in, client, unit):
    client.install([])

    assert unit.get('RestrictAddressFamilies', SERVICE) == (True, ['AF_NETLINK', 'AF_UNIX'])


@pytest.fixture
def signed_package(package, tmp_path):
    """A package with a signature of a key that the device knows."""
    file = package('signed')
    with SigningKey('Somebody') as key:
        key.sign(file, legacy=True)
        (tmp_path / 'key.asc').write_text(key.public_key(), encoding='ascii')
    subprocess.run(['rpm', '--import', tmp_path / 'key.asc'], check=True)
    return file


def test_installation_with_the_dialog(platform, provide_display, user_manager, screen, client, signals, unit, device,
                                      signed_package):
    provide_display()

    client.install([signed_package])

    signals.wait('needConfirm')
    screen.confirm(screen.wait_for_window(unit.main_process()))
    assert signals.wait('installFinished') == INSTALLED
    assert 'signed' in device.packages()
    assert f'{signed_package}: digests signatures OK' in user_manager.process.lines()


def test_removal_by_packagekit(packagekit, remove_and_wait, device, package):
    install(package('native'))

    assert remove_and_wait(['native']) == REMOVED
    assert 'native' not in device.packages()


def test_removal_of_a_launcher_of_the_users_own(platform, client, applications):
    launcher = applications / 'own.desktop'
    launcher.touch()

    client.remove_launcher(launcher)

    assert not launcher.exists()
    platform.runtime_manager.wait_call('OnRemove')


@pytest.mark.parametrize('group, status', [('privileged', 0), ('velmora', 1)])
def test_check_of_callers(processes, session_bus, group, status):
    """The restrictions leave the groups of callers visible."""
    caller = processes.start('caller', [
        SESSION, '--group', group, 'gdbus', 'call', '--session', '--dest', 'org.velmoraos.installationhandler',
        '--object-path', '/org/velmoraos/installationhandler',
        '--method', 'org.velmoraos.installationhandler.removePackageByDesktopFile', ABSENT])

    assert processes.wait_end(caller) == status
    assert ('AccessDenied' in caller.text) == (group == 'velmora')
