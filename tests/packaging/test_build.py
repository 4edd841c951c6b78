# SPDX-FileCopyrightText: velmora-installationhandler contributors
# SPDX-License-Identifier: BSD-3-Clause
"""Builds from a fresh copy of the source, by the commands in the README."""

import os
import shutil
import subprocess

import pytest
from contents import INSTALLED, found, naming

LEFTOVERS = shutil.ignore_patterns('.git', '.pytest_cache', '__pycache__', 'build', 'stage')
BUILDING = """\
cmake -S . -B build -G Ninja -DCMAKE_BUILD_TYPE=Release
cmake --build build
DESTDIR=stage cmake --install build --prefix /usr
"""


@pytest.fixture
def copy(source, tmp_path):
    """A copy of the source without build folders, like in a release."""
    return shutil.copytree(source, tmp_path / 'copy', ignore=LEFTOVERS)


def run(command, folder, **variables):
    done = subprocess.run(command, shell=True, cwd=folder, env={**os.environ, **variables}, stdout=subprocess.PIPE,
                          stderr=subprocess.STDOUT, text=True, timeout=500, check=False)
    assert done.returncode == 0, done.stdout
    return done.stdout


def contents(folder):
    return {path.relative_to(folder): path.read_bytes() for path in folder.rglob('*')
            if path.is_file() and path.relative_to(folder).parts[0] not in ('build', 'stage')}


def test_three_commands_build_and_install(source, copy, examples):
    before = contents(copy)
    assert examples('Build and install') == [BUILDING]

    said = run('set -e\n' + BUILDING, copy)

    assert 'warning' not in said.lower()
    assert contents(copy) == before
    assert found(copy / 'stage') == INSTALLED
    assert naming(copy / 'stage', [copy, source]) == []


CLASSES = {
    'MDeclarativeCache': 'mdeclarativecache5',
    'AccessPolicy': 'velmorapolicy',
    'Notification': 'orrinnotifications-qt5',
    'AboutSettings': 'systemsettings',
    'MceDisplay': 'mce-qt5',
    'MDesktopEntry': 'mlite5',
}


@pytest.fixture
def install_library(tmp_path):
    """Installs a library of the platform for builds, and returns the folder of its pkg-config file."""
    def install(library):
        subprocess.run(['c++', '-shared', '-o', tmp_path / f'lib{library}.so', '-x', 'c++', '/dev/null'], check=True)
        (tmp_path / f'{library}.pc').write_text(f'Name: {library}\nDescription: of the platform\nVersion: 1.2\n'
                                                f'Libs: -L{tmp_path} -l{library}\n', encoding='utf-8')
        return str(tmp_path)
    return install


def configure(copy, **variables):
    """Configures a build: the messages about the platform's classes, and the command that links the program."""
    said = run('cmake -S . -B build -G Ninja', copy, **variables)
    linking = run('ninja -C build -t commands velmora-installationhandler', copy).splitlines()[-1]
    return [line.removeprefix('-- Platform::') for line in said.splitlines() if 'Platform::' in line], linking


def test_absent_libraries_are_replaced(copy):
    said, linking = configure(copy)

    assert said == [f'{name}: portable implementation, {library} is absent' for name, library in CLASSES.items()]
    for library in CLASSES.values():
        assert f'platform/{library}/lib{library}.a' in linking


@pytest.mark.parametrize('name', CLASSES)
def test_library_of_the_platform_is_preferred(copy, install_library, name):
    library = CLASSES[name]

    said, linking = configure(copy, PKG_CONFIG_PATH=install_library(library))

    assert f'{name}: {library} 1.2 of this machine' in said
    assert len([line for line in said if 'portable implementation' in line]) == len(CLASSES) - 1
    assert f' -l{library} ' in linking
    assert f'lib{library}.a' not in linking
