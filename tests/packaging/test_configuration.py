# SPDX-FileCopyrightText: velmora-installationhandler contributors
# SPDX-License-Identifier: BSD-3-Clause
"""Where the files are installed, as far as a packager may choose it."""

import pytest
from builds import attempt, configuring, run
from contents import found

MANUAL = 'man1/velmora-installationhandler.1'


def test_prefix_is_usr(source, tmp_path):
    run(configuring(source, tmp_path))

    assert 'CMAKE_INSTALL_PREFIX:PATH=/usr\n' in (tmp_path / 'CMakeCache.txt').read_text(encoding='utf-8')


def test_other_prefix_stops_the_configuration(source, tmp_path):
    done = attempt(configuring(source, tmp_path, '-DCMAKE_INSTALL_PREFIX=/usr/local'))

    assert done.returncode == 1
    assert 'CMAKE_INSTALL_PREFIX is "/usr/local". It has to be /usr, because the paths of the installed files are fixed' \
        in ' '.join(done.stdout.split())


@pytest.mark.parametrize('option, folder', [
    ('CMAKE_INSTALL_PREFIX=/usr/', 'usr/share/man'),
    ('CMAKE_INSTALL_MANDIR=share/manuals', 'usr/share/manuals'),
    ('CMAKE_INSTALL_MANDIR=/opt/manuals', 'opt/manuals'),
])
def test_folder_of_the_manual(source, tmp_path, option, folder):
    """Nothing needs to be compiled for the files of this folder."""
    run(configuring(source, tmp_path / 'build', f'-D{option}'))
    run(['cmake', '--build', tmp_path / 'build', '--target', 'manual'])
    run(['cmake', '-P', tmp_path / 'build/packaging/cmake_install.cmake'], DESTDIR=str(tmp_path / 'stage'))

    assert {path for path in found(tmp_path / 'stage') if 'man1' in path} == {f'{folder}/{MANUAL}'}
    assert 'usr/lib/systemd/user/velmora-installationhandler.service' in found(tmp_path / 'stage')
