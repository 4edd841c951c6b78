# SPDX-FileCopyrightText: velmora-installationhandler contributors
# SPDX-License-Identifier: BSD-3-Clause
"""Paths of launchers, usual and odd ones."""

import os
from pathlib import Path

import pytest
from support.devicestate import make_own_folder
from support.removalrequests import KNOWN
from support.sockets import make_socket

SYSTEM = Path('/usr/share/applications')
USUAL_DATA_HOME = '/home/velmora/.local/share'


def bad(path):
    return f'void InstallationHandler::removePackageByDesktopFile(const QString&) bad desktop file: "{path}"'


@pytest.fixture
def removed(service, client, signals, system_calls):
    """Removes by a path; the calls made on the system bus, and the warnings. Nothing is announced."""
    def remove(path):
        assert client.remove_launcher(path) == ()
        service.barrier()
        assert signals.names() == []
        calls = [call for call in system_calls() if call.destination != 'com.nokia.mce']
        return [(call.member, call.arguments) for call in calls], service.warnings()
    return remove


@pytest.fixture
def hooks(standins):
    return standins.start('runtime-manager')


@pytest.fixture
def searched(standins, program, client, signals):
    """Removes by a path; what is asked of the package manager and of PackageKit, neither of which knows anything."""
    manager, packagekit = standins.start('package-manager', 'package-kit')

    def remove(path):
        program.start()
        client.remove_launcher(path)
        search = packagekit.wait_call('SearchFiles')
        program.barrier()
        assert (program.log(), signals.names()) == ([], [])
        return [(call.method, call.arguments) for call in [*manager.calls(), search]]
    return remove


MAKERS = {
    'folder': Path.mkdir,
    'FIFO': os.mkfifo,
    'socket': make_socket,
    'character device': lambda path: os.mknod(path, 0o20666, os.makedev(1, 3)),
    'block device': lambda path: os.mknod(path, 0o60666, os.makedev(7, 0)),
    'dangling link': lambda path: path.symlink_to('/absent.desktop'),
    'link to itself': lambda path: path.symlink_to(path),
    'link to a folder': lambda path: path.symlink_to('/usr'),
    'link to a device': lambda path: path.symlink_to('/dev/null'),
}


@pytest.mark.parametrize('kind', MAKERS)
@pytest.mark.parametrize('own', [True, False], ids=['own folder', "the system's folder"])
def test_no_regular_file(removed, applications, kind, own):
    path = (applications if own else SYSTEM) / 'odd.desktop'
    MAKERS[kind](path)
    try:
        assert removed(path) == ([], [bad(path)])
        assert os.path.lexists(path)
    finally:
        if not own:
            path.rmdir() if kind == 'folder' else path.unlink()


@pytest.mark.parametrize('path, shown', [
    *((path, path) for path in (
        '', '/', '.', '..', 'absent.desktop', '/absent.desktop', '/absent/a.desktop', '/dev/null', '/etc/passwd/',
        '/etc/passwd/a.desktop', '/usr/share/applications', '~/a.desktop', 'file:///etc/passwd',
        '/usr/share/applications/*.desktop', ':/a.desktop', '/\u00e4\u4e2d\u6587\U0001f600.desktop',
        '/%1%s;`id`$(id).desktop')),
    ('/a "b"\\c.desktop', r'/a \"b\"\\c.desktop'), ('/two\nlines\t.desktop', r'/two\nlines\t.desktop'),
], ids=lambda path: ascii(path)[:40])
def test_no_file(removed, path, shown):
    """The path is logged in quotes."""
    assert removed(path) == ([], [bad(shown)])


def test_longest_path(removed, applications):
    path = f'{applications}/{"x" * (1024 * 1024)}.desktop'
    assert removed(path) == ([], [bad(path)])


def test_relative_path_of_a_file(monkeypatch, searched, tmp_path):
    """A relative path counts from the folder that the service runs in. Its file is none of the user's own launchers."""
    monkeypatch.chdir(tmp_path)
    Path('relative.desktop').touch()

    assert searched('relative.desktop') == [('GetPackage', ('relative',)), ('SearchFiles', (4, ['relative.desktop']))]

    assert Path('relative.desktop').exists()


@pytest.mark.parametrize('target', ['system file', 'system launcher'])
def test_own_link_to_a_file_of_the_system(hooks, removed, applications, tmp_path, target):
    """The link goes, and the file stays."""
    file = tmp_path / 'precious' if target == 'system file' else SYSTEM / 'precious.desktop'
    file.write_text('precious', encoding='ascii')
    link = applications / 'org.example.Link.desktop'
    link.symlink_to(file)

    assert removed(link) == ([('OnRemove', ('org',))], [])

    assert not link.is_symlink()
    assert file.read_text(encoding='ascii') == 'precious'
    file.unlink()


def test_system_link_to_an_own_launcher(searched, applications):
    """The path of the link counts, so its owner is searched for."""
    own = applications / 'own.desktop'
    own.touch()
    link = SYSTEM / 'link.desktop'
    link.symlink_to(own)

    assert searched(link) == [('GetPackage', ('link',)), ('SearchFiles', (4, [str(link)]))]

    assert own.exists() and link.is_symlink()
    link.unlink()


@pytest.mark.parametrize('detour', ['{share}/./applications/own.desktop', '{share}/../share/applications/own.desktop',
                                    '{share}//applications/own.desktop', '/{share}/applications/own.desktop',
                                    '{share}/Applications/own.desktop'])
def test_detour_to_the_own_folder(searched, applications, detour):
    """The path does not begin like an own launcher, so its owner is searched for. Letter case counts."""
    path = detour.format(share=applications.parent)
    own = Path(path)
    own.parent.mkdir(exist_ok=True)
    own.touch()

    assert searched(path) == [('GetPackage', ('own',)), ('SearchFiles', (4, [path]))]

    assert own.exists()


@pytest.mark.parametrize('name', ['applications-old/app.desktop', 'applications.desktop', 'applicationsapp.desktop',
                                  'applications/../outside.desktop'])
def test_neighbour_of_the_own_folder(hooks, removed, applications, name):
    """A path that begins like an own launcher is deleted as one. Known behaviour 38, 39."""
    neighbour = applications.parent / name
    make_own_folder(neighbour.parent)
    neighbour.touch()

    assert removed(neighbour) == ([('OnRemove', (neighbour.stem,))], [])

    assert not neighbour.exists()


@pytest.fixture
def write(tmp_path):
    """Writes the launcher of a.b below a folder for data, which may be an absolute path."""
    def write_launcher(folder):
        launcher = make_own_folder(tmp_path / folder / 'applications') / 'a.b.desktop'
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


@pytest.mark.parametrize('folder', [USUAL_DATA_HOME, 'shared'], ids=['usual data home', 'data of everybody'])
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
    (('shared',), 'shared'), (('local', 'shared'), 'local'), (('shared', 'data'), 'data'),
    ((USUAL_DATA_HOME,), None),
], ids=['anywhere', 'in order', 'the data home first', 'not in the usual data home'])
def test_home_screen_is_told_of_the_first(manager, launcher_model, start, write, remove_and_wait, folders, told):
    manager.answer('GetPackage', KNOWN)
    launchers = {folder: str(write(folder)) for folder in folders}
    start('data', 'local', 'shared')

    assert remove_and_wait(['a.b']) == (True, '')
    assert [call.arguments for call in launcher_model.calls('updatingStarted')] == (
        [('a.b', '', '', launchers[told])] if told else [])
