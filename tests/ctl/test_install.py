# SPDX-FileCopyrightText: velmora-installationhandler contributors
# SPDX-License-Identifier: BSD-3-Clause
"""Files to install: their names, the options, and what keeps them from being requested."""

import os
from pathlib import Path
from urllib.parse import quote

import pytest
from harness.client import NAME
from support.sockets import make_socket

ABSENT, IRREGULAR = 'No such file or directory', 'not a regular file'
FOREIGN = 'not a URL of a file on this device'
UNTOLD = 'the path is not UTF-8, so the service cannot be told'

# The names of files, and how lines show them.
NAMES = {
    **{name: name for name in (
        'plain.rpm', 'two  words.rpm', ' blank.rpm', 'blank.rpm ', 'a%20b.rpm', 'a%00b.rpm', '100%.rpm', '%1 %n %ZZ.rpm',
        'größer 文.rpm', 'u\u0308.rpm', 'no-break\xa0', 'wide\u3000', 'a\ufeff.rpm', '\ufdd0.rpm', '\uffff.rpm', '\U0001f600.rpm', 'a?b#c.rpm', '-dash.rpm', '--sdk', '--', 'install', '~', '~root.rpm',
        'back\\slash.rpm', '*', '$HOME`id`;\'".rpm', 'C:\\a.rpm', 'http:a.rpm', 'file:', 'file:a.rpm', 'x' * 251 + '.rpm')},
    'line\nfeed.rpm': 'line\\x0afeed.rpm', 'tab\t.rpm': 'tab\\x09.rpm', '\x1b[31mred.rpm': '\\x1b[31mred.rpm',
    'a\u202egpj.rpm': 'a\\u202egpj.rpm', 'a\u2028b.rpm': 'a\\u2028b.rpm', 'a\x9bb.rpm': 'a\\x9bb.rpm',
}


@pytest.fixture
def silent(device):
    """Nobody is asked."""
    device.mark_as_emulator()


@pytest.fixture
def files(tmp_path):
    """The files of these names, in the folder of the session's user."""
    for name in NAMES:
        (tmp_path / name).touch()
    return tmp_path


@pytest.fixture
def installed(manager):
    """The files that the package manager has been told to install since the last time."""
    def paths():
        calls = manager.calls('Install')
        manager.clear()
        return [call.arguments[0] for call in calls]
    return paths


def test_names(silent, installed, service, ctl, files, signals):
    """Relative ones, absolute ones, and URLs, each file for itself and all in one request."""
    paths = [f'{files}/{name}' for name in NAMES]

    run = ctl('install', '--', *NAMES, folder=files)
    assert (run.status, run.err) == (0, [])
    assert [
        line for line in run.out if line.endswith(': installed')] == [
        f'{shown}: installed' for shown in NAMES.values()]
    assert [line for line in run.out if line.endswith(': reading')] == [f'{shown}: reading' for shown in NAMES.values()]
    assert {line.rpartition(': ')[2] for line in run.out} == {'reading', 'installing', 'installed'}
    assert installed() == paths

    urls = [f'file://{quote(path)}' for path in paths]
    assert ctl('install', '--quiet', *urls) == (0, [], [])
    assert installed() == paths

    run = ctl('install', '--no-wait', '--', *paths)
    requested = [f'{files}/{shown}: requested' for shown in NAMES.values()]
    assert run == (0, [f'{files}/plain.rpm: waiting for the service', *requested], [])
    signals.wait('installFinished', 2 * len(NAMES) + 1)
    assert installed() == paths


def test_spellings(silent, installed, service, ctl, files):
    """A file that is given twice is requested once, but a link is another file. The folder before two dots may be one."""
    (files / 'sub').mkdir()
    (files / 'link').symlink_to(files / 'sub')
    (files / 'sub/inner.rpm').touch()
    (files / 'sub/plain.rpm').symlink_to(files / 'plain.rpm')
    (files / 'hard.rpm').hardlink_to(files / 'plain.rpm')
    plain = f'{files}/plain.rpm'
    spellings = {
        'plain.rpm': plain, './/plain.rpm': None, f'//{files}/./plain.rpm': None, f'file:{plain}': None,
        f'FILE://localhost{plain}': None, f'file:///.{files}/%70lain.rpm': None,
        'sub/../plain.rpm': f'{files}/sub/../plain.rpm', 'link/inner.rpm': f'{files}/link/inner.rpm',
        'sub/plain.rpm': f'{files}/sub/plain.rpm', 'hard.rpm': f'{files}/hard.rpm', f'file://{files}/a%2520b.rpm': f'{files}/a%20b.rpm',
    }

    run = ctl('install', *spellings, folder=files)
    assert run.status == 0
    assert installed() == [path for path in spellings.values() if path]
    assert [line for line in run.out if line.endswith('installed')] == \
        [f'{given}: installed' for given, path in spellings.items() if path]


def problems(folder):
    """The files that are given, and the reasons why they cannot be installed."""
    (folder / 'folder').mkdir()
    os.mkfifo(folder / 'fifo')
    make_socket(folder / 'socket')
    (folder / 'loop').symlink_to('loop')
    (folder / 'broken').symlink_to('absent.rpm')
    (folder / 'secret.rpm').touch(mode=0o600)
    (folder / 'closed').mkdir(mode=0o700)
    bytes_only, more_bytes = os.fsdecode(b'\xff.rpm'), os.fsdecode(b'a\xff.rpm')
    (folder / bytes_only).touch()
    (folder / more_bytes).touch()
    return {
        **dict.fromkeys(['absent.rpm', '', 'broken', '~user/a.rpm', 'http://example.org/a.rpm', 'http:', 'file:///absent.rpm',
                         'file:/absent.rpm', 'FILE://LOCALHOST/absent.rpm', 'file:///tmp%2Fabsent.rpm', 'file://localhost/http:',
                         os.fsdecode(b'absent \xff.rpm')], ABSENT),
        **dict.fromkeys(['folder', 'fifo', 'socket', '/dev/null', '.', 'file:///'], IRREGULAR),
        **dict.fromkeys(['file://host/share/a.rpm', 'file:///tmp/a%00b.rpm', 'file:///tmp/100%.rpm', 'file:///tmp/%Z.rpm',
                         'file:///tmp/a.rpm?b', 'file:///tmp/a.rpm#c', 'file://', 'file://localhost', 'file://localhost:80/tmp/a.rpm',
                         'file:/tmp/%zz.rpm', 'FILE://user@localhost/tmp/a.rpm'], FOREIGN),
        **dict.fromkeys(['secret.rpm', 'closed/a.rpm'], 'Permission denied'),
        'loop': 'Too many levels of symbolic links', **dict.fromkeys(['plain.rpm/a', 'plain.rpm/', 'plain.rpm/.'], 'Not a directory'), 'x' * 256: 'File name too long',
        bytes_only: UNTOLD, 'file:' + quote(os.fsencode(folder / more_bytes)): UNTOLD,
    }


def shown(given):
    """Bytes that are no text are replaced, and nothing is two quotation marks."""
    return os.fsencode(given).decode(errors='replace') or "''"


def test_problems(session_bus, session_monitor, ctl, files):
    """All are reported, and nothing is requested: the service has not even been started."""
    session_bus.allow_activation()
    reasons = problems(files)

    run = ctl('install', 'plain.rpm', *reasons, '--quiet', folder=files)
    assert run.err == [f'{shown(given)}: {reason}' for given, reason in reasons.items()]
    assert (run.status, run.out) == (66, [])
    # In sdk mode the service reads the files by the strings that it is given (Known behaviour 14).
    assert ctl('install', '--sdk', 'plain.rpm', 'blank.rpm ', ' blank.rpm', 'fifo', folder=files) == \
        (66, [], ['blank.rpm : with --sdk a path must not end in a blank', 'fifo: not a regular file'])
    assert ctl('remove', '--launcher', 'absent.desktop', folder=files) == (66, [], ['absent.desktop: ' + ABSENT])
    assert ctl('remove', '--launcher', 'folder', folder=files) == (66, [], ['folder: ' + IRREGULAR])
    assert ctl('remove', '--launcher', '', folder=files) == (66, [], ["'': " + ABSENT])

    run = ctl.start('install', '--json', 'folder', 'plain.rpm', 'absent.rpm', folder=files)
    assert run.wait()[::2] == (66, [f'folder: {IRREGULAR}', f'absent.rpm: {ABSENT}'])
    problem = {'event': 'result', 'count': 3, 'outcome': 'problem', 'reported': False, 'uncertain': False}
    assert run.objects() == [
        {**problem, 'subject': f'{files}/folder', 'position': 1, 'text': IRREGULAR},
        {**problem, 'subject': f'{files}/absent.rpm', 'position': 3, 'text': ABSENT},
        {'event': 'end', 'outcome': 'problem', 'status': 66}]

    assert not session_bus.has_owner(NAME)
    assert not [message for message in session_monitor.messages() if message.destination == NAME]


def test_folders_without_a_path(silent, manager, service, ctl, files):
    """A folder that has been deleted, and one whose path is too long: no file of another folder is taken."""
    there = Path('/plain.rpm')
    there.touch()
    enter = {
        'os.mkdir("gone"); os.chdir("gone"); os.rmdir("../gone")': ABSENT,
        'for _ in range(21): os.mkdir("d" * 200); os.chdir("d" * 200)\nopen("plain.rpm", "w")': 'File name too long',
    }
    for script, reason in enter.items():
        script = f'import os, sys\n{script}\nos.execv(sys.argv[1], sys.argv[1:])'
        assert ctl('install', 'plain.rpm', starter=['/usr/bin/python3', '-c', script], folder=files) == \
            (66, [], [f'plain.rpm: {reason}']), reason
    assert manager.calls('Install') == []
    there.unlink()


def test_options(silent, manager, service, ctl, files, session_monitor):
    """The arguments of the calls that are made."""
    def requested(*arguments):
        before = len(session_monitor.messages())
        assert ctl('install', *arguments).status == 0
        return [(message.signature, message.arguments[1:]) for message in session_monitor.messages()[before:]
                if message.member == 'installFiles']
    file = files / 'plain.rpm'

    assert requested(file) == [('asbb', (False, False))]
    assert requested(file, '--keep-user-data') == [('asbb', (False, True))]
    assert requested('--no-wait', '--sdk', file) == [('asbb', (True, False))]
    assert requested('--keep-user-data', '--no-wait', file, '--sdk', '--json') == [('asbb', (True, True))]


def test_sdk_mode(platform, service, ctl, device, package):
    """The installed package is removed first, and nobody is asked where developer mode allows that."""
    platform.developer_mode.configure('silent-installation', True)
    files = [package('hello', version=str(version)) for version in range(3)]
    stored = device.home / '.local/share/hello/stored'

    assert ctl(
        'install',
        '--sdk',
        files[0]).out == [
        f'{files[0]}: {text}' for text in (
            'reading',
            'installing',
            'installed')]
    stored.touch()
    run = ctl.start('install', '--sdk', '--json', '--keep-user-data', files[1])
    assert run.wait()[::2] == (0, [])
    assert [made.get('state') for made in run.objects()] == ['reading', 'installing', None, None]
    assert stored.exists()
    assert ctl('install', '--sdk', files[2]).status == 0
    assert not stored.exists()
    assert device.packages() == ['hello']


def test_sdk_mode_without_an_installation(platform, program, dialog, ctl, device, package, processes):
    """The removal comes first, so an installation that does not follow leaves nothing of the application."""
    dialog.use('Controlled')
    program.start()
    stored = device.home / '.local/share/hello/stored'
    file = package('hello')

    def install_silently():
        platform.developer_mode.configure('silent-installation', True)
        assert ctl('install', '--sdk', file).status == 0
        platform.developer_mode.configure('silent-installation', False)
        stored.touch()

    def wait_removed(is_stored):
        processes.wait_until(lambda: (device.packages(), stored.exists()) == ([], is_stored), 'the removal')

    install_silently()
    run = ctl.start('install', '--sdk', file)
    dialog.wait_shown(1)
    wait_removed(is_stored=False)
    dialog.answer('dismissed')
    assert run.wait().status == 2
    assert device.packages() == []

    install_silently()
    device.forbid_installing()
    assert ctl('install', '--sdk', '--keep-user-data', file).status == 3
    wait_removed(is_stored=True)
