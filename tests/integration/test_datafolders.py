# SPDX-FileCopyrightText: velmora-installationhandler contributors
# SPDX-License-Identifier: BSD-3-Clause
"""Launchers in other folders than the usual ones, as XDG_DATA_HOME and XDG_DATA_DIRS say."""

import pytest
from gi.repository import GLib

KNOWN = GLib.Variant('(a{ss})', ({},))


@pytest.fixture
def write(tmp_path):
    """Writes the launcher of a.b below a folder for data."""
    def write_launcher(folder):
        launcher = tmp_path / folder / 'applications/a.b.desktop'
        launcher.parent.mkdir(parents=True)
        launcher.write_text('[Desktop Entry]\n', encoding='ascii')
        return launcher
    return write_launcher


@pytest.fixture
def start(program, tmp_path):
    """Starts the service with another folder for the user's data, and others for everybody's."""
    def start_service(home, *folders):
        folders = ':'.join(str(tmp_path / folder) for folder in folders)
        return program.start(environment={'XDG_DATA_HOME': str(tmp_path / home), 'XDG_DATA_DIRS': folders})
    return start_service


def test_own_launcher_is_below_the_data_home(standins, start, write, client, signals):
    hooks, manager = standins.start('runtime-manager', 'package-manager')
    service = start('data', 'shared')
    launcher = write('data')

    client.remove_launcher(launcher)

    assert not launcher.exists()
    assert [call.arguments for call in hooks.calls('OnRemove')] == [('a',)]
    service.barrier()
    assert manager.calls() == []
    assert (service.log(), signals.all) == ([], [])


@pytest.mark.parametrize('folder', ['home/.local/share', 'shared'], ids=['usual data home', 'data of everybody'])
def test_every_other_launcher_is_one_of_the_system(standins, start, write, client, signals, folder):
    hooks, manager, packagekit = standins.start('runtime-manager', 'package-manager', 'package-kit')
    service = start('data', 'shared')
    launcher = write(folder)

    client.remove_launcher(launcher)

    assert packagekit.wait_call('SearchFiles').arguments == (4, [str(launcher)])
    service.barrier()
    assert [(call.method, call.arguments) for call in manager.calls()] == [('GetPackage', ('a.b',))]
    assert hooks.calls() == []
    assert launcher.exists()
    assert (service.log(), signals.all) == ([], [])


@pytest.mark.parametrize('folders, told', [
    (('shared',), 'shared'),
    (('local', 'shared'), 'local'),
    (('shared', 'data'), 'data'),
    (('home/.local/share',), None),
], ids=['anywhere', 'in order', 'the data home first', 'not in the usual data home'])
def test_home_screen_is_told_of_the_first(standins, start, write, client, signals, folders, told):
    manager, launcher_model = standins.start('package-manager', 'launcher-model')
    manager.configure('installs', 'nothing')
    manager.answer('GetPackage', KNOWN)
    launchers = {folder: str(write(folder)) for folder in folders}
    start('data', 'local', 'shared')

    client.remove(['a.b'])

    assert signals.wait('removalFinished') == (True, '')
    assert [call.arguments for call in launcher_model.calls('updatingStarted')] == (
        [('a.b', '', '', launchers[told])] if told else [])
