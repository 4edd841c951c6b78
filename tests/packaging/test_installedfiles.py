# SPDX-FileCopyrightText: velmora-installationhandler contributors
# SPDX-License-Identifier: BSD-3-Clause
"""The installed files."""

import stat
import subprocess

import pytest
from contents import INSTALLED, found, naming


@pytest.fixture
def stage(build):
    return build / 'stage'


def test_paths_and_permissions(stage):
    assert found(stage) == INSTALLED


def test_owner_and_folders(stage):
    entries = [path.lstat() for path in stage.rglob('*')]
    assert {(entry.st_uid, entry.st_gid) for entry in entries} == {(0, 0)}
    assert {stat.S_IMODE(entry.st_mode) for entry in entries if stat.S_ISDIR(entry.st_mode)} == {0o755}


def test_no_file_names_the_build_folder(stage, build, source):
    assert naming(stage, [source, build]) == []


def test_libraries_come_from_the_system(stage):
    headers = subprocess.run(['readelf', '--dynamic', stage / 'usr/bin/velmora-installationhandler'], check=True,
                             capture_output=True, text=True).stdout
    assert 'libQt5Core.so.5' in headers
    assert 'PATH)' not in headers


@pytest.mark.parametrize('text', [
    '/etc/velmoraos-emulator',
    '/usr/share/translations',
    '/usr/share/velmora-installationhandler/',
], ids=str)
def test_paths_of_the_system_are_fixed(stage, text):
    program = (stage / 'usr/bin/velmora-installationhandler').read_bytes()
    assert text.encode() in program or text.encode('utf-16-le') in program
