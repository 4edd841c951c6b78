# SPDX-FileCopyrightText: velmora-installationhandler contributors
# SPDX-License-Identifier: BSD-3-Clause
"""Paths of launchers that are nobody's, or not what they seem."""

import os
from pathlib import Path

import pytest
from support.sockets import make_socket

SYSTEM = Path('/usr/share/applications')


def bad(path):
    return f'void InstallationHandler::removePackageByDesktopFile(const QString&) bad desktop file: "{path}"'


@pytest.fixture
def applications(device):
    """The user's own folder of launchers."""
    folder = device.home / '.local/share/applications'
    folder.mkdir(parents=True)
    return folder


@pytest.fixture
def removed(service, client, signals, system_bus, system_monitor):
    """Removes by a path; the calls made on the system bus, and the warnings. Nothing is announced."""
    def remove(path):
        assert client.remove_launcher(path) == ()
        service.barrier()
        assert signals.names() == []
        return [(call.member, call.arguments)
                for call in system_monitor.calls(system_bus.name_of_process(service.process.pid))
                if call.destination != 'com.nokia.mce'], service.warnings()
    return remove


@pytest.fixture
def hooks(standins):
    """The runtime manager."""
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


@pytest.mark.parametrize('path', [
    '', '/', '.', '..', 'absent.desktop', '/absent.desktop', '/absent/a.desktop', '/dev/null', '/etc/passwd/',
    '/etc/passwd/a.desktop', '/usr/share/applications', '~/a.desktop', 'file:///etc/passwd',
    '/usr/share/applications/*.desktop', ':/a.desktop',
])
def test_no_file(removed, path):
    assert removed(path) == ([], [bad(path)])


@pytest.mark.parametrize('path, shown', [
    ('/a "b"\\c.desktop', r'/a \"b\"\\c.desktop'),
    ('/two\nlines\t.desktop', r'/two\nlines\t.desktop'),
    ('/\u00e4\u4e2d\u6587\U0001f600.desktop', '/\u00e4\u4e2d\u6587\U0001f600.desktop'),
    ('/%1%s;`id`$(id).desktop', '/%1%s;`id`$(id).desktop'),
])
def test_path_is_logged_in_quotes(removed, path, shown):
    assert removed(path) == ([], [bad(shown)])


def test_longest_path(removed, applications):
    path = f'{applications}/{"x" * (1024 * 1024)}.desktop'
    assert removed(path) == ([], [bad(path)])


def test_relative_path_of_a_file(monkeypatch, searched, tmp_path):
    """Is looked at from where the service runs, and is none of the user's own launchers."""
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
    """Goes by its own path, and is searched for."""
    own = applications / 'own.desktop'
    own.touch()
    link = SYSTEM / 'link.desktop'
    link.symlink_to(own)

    assert searched(link) == [('GetPackage', ('link',)), ('SearchFiles', (4, [str(link)]))]

    assert own.exists() and link.is_symlink()
    link.unlink()


def test_way_up_from_the_own_folder(hooks, removed, applications):
    """The path begins like an own launcher, and so it is deleted."""
    outside = applications.parent / 'outside.desktop'
    outside.touch()

    assert removed(f'{applications}/../outside.desktop') == ([('OnRemove', ('outside',))], [])

    assert not outside.exists()


@pytest.mark.parametrize('detour', ['{share}/./applications/own.desktop', '{share}/../share/applications/own.desktop',
                                    '{share}//applications/own.desktop', '/{share}/applications/own.desktop'])
def test_detour_to_the_own_folder(searched, applications, detour):
    """The path does not begin like an own launcher."""
    own = applications / 'own.desktop'
    own.touch()
    path = detour.format(share=applications.parent)

    assert searched(path) == [('GetPackage', ('own',)), ('SearchFiles', (4, [path]))]

    assert own.exists()


def test_letter_case_of_the_own_folder_counts(searched, applications):
    other = applications.with_name('Applications') / 'own.desktop'
    other.parent.mkdir()
    other.touch()

    assert searched(other) == [('GetPackage', ('own',)), ('SearchFiles', (4, [str(other)]))]

    assert other.exists()


@pytest.mark.parametrize('name', ['applications-old/app.desktop', 'applications.desktop', 'applicationsapp.desktop'])
def test_neighbour_of_the_own_folder(hooks, removed, applications, name):
    """What begins with the same letters counts as the user's own."""
    neighbour = applications.parent / name
    neighbour.parent.mkdir(exist_ok=True)
    neighbour.touch()

    assert removed(neighbour) == ([('OnRemove', (neighbour.stem,))], [])

    assert not neighbour.exists()
