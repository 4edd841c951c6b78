# SPDX-FileCopyrightText: velmora-installationhandler contributors
# SPDX-License-Identifier: BSD-3-Clause
"""The packages that other tests use, checked by rpm itself."""

import subprocess
from pathlib import Path

import pytest

from . import SigningKey, build_package, damage, handmade


def rpm(*arguments):
    done = subprocess.run(['rpm', *map(str, arguments)], capture_output=True, text=True, timeout=60, check=False)
    return done.returncode, (done.stdout + done.stderr).strip()


def tag(path, name):
    return rpm('--query', '--package', '--queryformat', f'[%{{{name}}}|]', path)[1]


def test_same_arguments_give_the_same_bytes(tmp_path):
    arguments = {'summary': '100 %{percent}', 'summaries': {'de': 'Grüßt'}, 'scripts': {'pre': 'echo 5%'}}
    first = build_package(tmp_path / 'one', 'same', **arguments)
    second = build_package(tmp_path / 'two', 'same', **arguments)
    assert first != second
    assert first.read_bytes() == second.read_bytes()


def test_header_holds_the_arguments(tmp_path):
    path = build_package(tmp_path, 'hello', version='2.1', release='3', summary='100 %{percent}',
                         requires=['absent >= 3'], conflicts=['other'], provides=['greeter = 1'], scripts={'preun': 'echo 5%'})
    assert path == tmp_path / 'hello-2.1-3.noarch.rpm'
    assert tag(path, 'SUMMARY') == '100 %{percent}|'
    assert 'absent|' in tag(path, 'REQUIRES')
    assert tag(path, 'CONFLICTS') == 'other|'
    assert 'greeter|' in tag(path, 'PROVIDES')
    assert tag(path, 'PREUN') == 'echo 5%|'
    assert tag(path, 'FILENAMES') == '/usr/share/applications/hello.desktop|'


def test_files_are_installed_with_their_contents(tmp_path):
    path = build_package(tmp_path, 'files', files={'/opt/a b/ü': 'text', '/opt/data': b'\0\xff'})
    assert rpm('--install', '--nodeps', path)[0] == 0
    assert Path('/opt/a b/ü').read_text(encoding='utf-8') == 'text'
    assert Path('/opt/data').read_bytes() == b'\0\xff'


def test_refusal_of_rpmbuild_is_an_error(tmp_path):
    with pytest.raises(subprocess.CalledProcessError):
        build_package(tmp_path, 'wrong', version='1-0')


def test_signatures_are_valid_with_the_key(tmp_path):
    path = build_package(tmp_path, 'signed')
    with SigningKey('Somebody') as key:
        home = Path(key.home.name)
        key.sign(path, legacy=True)
        (tmp_path / 'key.asc').write_text(key.public_key(), encoding='ascii')
    assert not home.exists()
    assert tag(path, 'SIGPGP')
    assert rpm('--checksig', path)[0] == 1
    assert rpm('--import', tmp_path / 'key.asc') == (0, '')
    assert rpm('--checksig', path)[0] == 0


@pytest.mark.parametrize('payload', [b'', b'x' * 100])
def test_handmade_header_is_read(tmp_path, payload):
    tags = {handmade.NAME: (handmade.Type.STRING, 'made'), handmade.VERSION: None}
    path = handmade.write(tmp_path / 'made.rpm', tags, payload)
    assert tag(path, 'NAME') == 'made|'
    assert tag(path, 'VERSION') == ''
    assert tag(path, 'SUMMARY') == 'Made by hand|'


def test_damage_is_noticed(tmp_path):
    package = build_package(tmp_path, 'whole').read_bytes()
    broken = tmp_path / 'broken.rpm'

    broken.write_bytes(damage.payload(package))
    assert tag(broken, 'NAME') == 'whole|'
    assert rpm('--checksig', broken)[0] == 1

    broken.write_bytes(damage.text(package, 'The application', 'THE APPLICATION'))
    assert 'BAD' in rpm('--query', '--package', broken)[1]

    broken.write_bytes(damage.claiming(package, 0x10000, 16))
    assert 'out of range' in rpm('--query', '--package', broken)[1]
