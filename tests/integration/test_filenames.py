# SPDX-FileCopyrightText: velmora-installationhandler contributors
# SPDX-License-Identifier: BSD-3-Clause
"""Names of files from callers: paths, URLs, and neither."""

import shutil

import pytest

ALREADY_INSTALLED = 'zarn_installation_error_desc_AlreadyInstalled (code: AlreadyInstalled)'
FILE_NOT_FOUND = 'zarn_installation_error_desc_FileNotFound (code: FileNotFound)'
UNASKED = '"Unable install package without confirm: The installation is not running in sdk mode. "'

# The name in the request, and the path that the package manager gets.
LOCAL = {
    **{path: path for path in (
        '/tmp/two words.rpm', '/tmp/a%20b.rpm', '/tmp/a%00b.rpm', '/tmp/a\\0b.rpm', '/tmp/a\nb.rpm',
        '/tmp/%1 %2 %n %s.rpm', '/tmp/a?b#c.rpm', '/tmp/http://example.org/a.rpm', '/tmp/*.rpm',
        '/tmp/$HOME/`id`;\'".rpm', '/tmp/\x1b[31m\u202egpj.rpm', '/tmp/größer 文 \U0001f600.rpm',
        '/tmp/../absent/./a.rpm', '//host/share/a.rpm', '/tmp/', '/', '/absent' * 40_000)},
    # Blanks around a path: Known behaviour 8.
    ' /tmp/a.rpm': '/tmp/a.rpm', '/tmp/a.rpm \n': '/tmp/a.rpm',
    # URLs of files
    'file:///tmp/two words.rpm': '/tmp/two words.rpm', 'file:///tmp/a%20b.rpm': '/tmp/a b.rpm',
    'file:///tmp/a%0Ab.rpm': '/tmp/a\nb.rpm', 'file:///tmp/%251.rpm': '/tmp/%1.rpm',
    'file:///tmp/100%.rpm': '/tmp/100%.rpm', 'file:///tmp/%ZZ.rpm': '/tmp/%ZZ.rpm',
    'file:///tmp/gr%C3%B6%C3%9Fer.rpm': '/tmp/größer.rpm', 'file:///tmp/gr\u00f6\u00dfer.rpm': '/tmp/größer.rpm',
    'file:///tmp/%FF.rpm': '/tmp/\ufffd.rpm', 'file:///tmp/a.rpm?b#c': '/tmp/a.rpm',
    'file:///tmp/%2e%2e/absent/a.rpm': '/tmp/../absent/a.rpm', 'file:/tmp/a.rpm': '/tmp/a.rpm',
    'FILE:///tmp/A.rpm': '/tmp/A.rpm', 'file://host/share/a.rpm': '//host/share/a.rpm', 'file:///': '/',
    # Known behaviour 8.
    'file:a.rpm': 'a.rpm', 'file:///tmp/a%00b.rpm': '/tmp/a',
}

# Names of no file of this device, which count as an empty path.
FOREIGN = [
    '', ' ', '\n', '.', '..', 'a.rpm', './a.rpm', '../tmp/a.rpm', 'tmp/a.rpm', '~', '~/a.rpm', '~root/a.rpm', '-',
    '--help', '%1', '\\0', '\U0001f600', 'C:\\a.rpm', 'http://example.org/a.rpm', 'HTTP://example.org/tmp/a.rpm',
    'https://example.org/file:///tmp/a.rpm', 'ftp://example.org/a.rpm', 'http:///tmp/a.rpm', 'example.org/a.rpm',
    'localhost:80/a.rpm', 'qrc:/a.rpm', 'data:,a', 'javascript:1', 'file:', 'file://',
]


@pytest.fixture
def silent(standins, device):
    """Nobody is asked."""
    device.mark_as_emulator()
    standins.start('developer-mode', silent_installation=True)


def test_names_become_paths(silent, standins, service, install_and_wait):
    """Known behaviour 7, 8."""
    package_manager = standins.start('package-manager', installs='nothing')
    names = [*LOCAL, *FOREIGN]

    assert install_and_wait(names) == (True, '')
    paths = [call.arguments[0] for call in package_manager.calls('Install')]
    assert dict(zip(names, paths)) == {**LOCAL, **dict.fromkeys(FOREIGN, '')}
    assert len(paths) == len(names)
    assert service.warnings() == [UNASKED] * len(names)


def test_names_of_nothing_fail_one_by_one(silent, standins, service, install_and_wait, device):
    standins.start('package-manager')
    names = [name for name, path in LOCAL.items() if path not in ('/', '/tmp/')] + FOREIGN

    assert install_and_wait(names) == (False, '\n'.join([FILE_NOT_FOUND] * len(names)))
    service.barrier()
    assert service.log() == ['warning default: ' + UNASKED] * len(names)
    assert device.packages() == []


@pytest.fixture
def named_files(package, tmp_path):
    """Package files of odd names. They are made before the service runs, which would have nothing to do meanwhile."""
    names = ['two words', 'a%20b', 'a%00b', '\\0', 'line\nfeed', '%1 %n', 'a?b#c', '*', '-', '--force', "';`id`\"",
             'größer 文', '\x1b[31m', '\u202egpj', '\U0001f600', 'x' * 251]
    return [shutil.move(package(f'named{number}'), tmp_path / f'{name}.rpm') for number, name in enumerate(names)]


def test_any_name_can_be_installed(silent, named_files, standins, service, install_and_wait, device):
    standins.start('package-manager')

    assert install_and_wait(named_files[::2]) == (True, '')
    assert install_and_wait([file.as_uri() for file in named_files[1::2]]) == (True, '')

    assert sorted(device.packages()) == sorted(f'named{number}' for number in range(len(named_files)))


def test_dialog_shows_the_name_as_it_is(standins, service, client, signals, dialog, package, tmp_path):
    standins.start('package-manager')
    dialog.use('Dismissing')
    file = shutil.move(package('odd'), tmp_path / 'a%20b\n%1 <b>ü\u202e.rpm')

    client.install([file, '/absent/%1.rpm', 'http://example.org/a.rpm'])

    details = {'name': 'odd', 'version': '1.0', 'summary': 'The application odd'}
    assert dialog.wait_shown(1) == {**details, 'fileName': str(file)}
    # Nothing is known about these two, and what was known before stays.
    assert dialog.wait_shown(2) == {**details, 'fileName': '/absent/%1.rpm'}
    assert dialog.wait_shown(3) == {**details, 'fileName': ''}
    assert signals.wait('installFinished')[0] is False


def test_same_file_twice_is_installed_once(silent, standins, service, install_and_wait, device, package):
    package_manager = standins.start('package-manager')
    file = package('once')

    assert install_and_wait([file, file.as_uri()]) == (False, ALREADY_INSTALLED)
    assert [call.arguments[0] for call in package_manager.calls('Install')] == [str(file), str(file)]
    assert device.packages() == ['once']
