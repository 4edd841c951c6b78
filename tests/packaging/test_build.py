# SPDX-FileCopyrightText: velmora-installationhandler contributors
# SPDX-License-Identifier: BSD-3-Clause
"""Builds from a copy of the source, by the commands in the README."""

import shutil

import pytest
from builds import LEFTOVERS, run
from contents import INSTALLED, found, naming

BUILDING = """\
cmake -S . -B build -G Ninja -DCMAKE_BUILD_TYPE=Release
cmake --build build
DESTDIR=stage cmake --install build --prefix /usr
"""


@pytest.fixture
def copy(source, builds):
    """A copy of the source as in a release. Only the build folder is kept, so that just the changes are compiled."""
    folder, kept = builds / 'readme', builds / 'readme.kept'
    if (folder / 'build').exists():
        (folder / 'build').rename(kept)
    shutil.rmtree(folder, ignore_errors=True)
    shutil.copytree(source, folder, ignore=LEFTOVERS)
    if kept.exists():
        kept.rename(folder / 'build')
    return folder


def contents(folder):
    return {path.relative_to(folder): path.read_bytes() for path in folder.rglob('*')
            if path.is_file() and path.relative_to(folder).parts[0] not in ('build', 'stage')}


def test_three_commands_build_and_install(source, build, copy, examples):
    before = contents(copy)
    assert examples('Build and install') == [BUILDING]

    said = run('set -e\n' + BUILDING, copy)

    assert 'warning' not in said.lower()
    assert contents(copy) == before
    assert found(copy / 'stage') == INSTALLED
    assert naming(copy / 'stage', [copy, source]) == []
    # The build that is tested was made of the same files in another folder.
    assert [name for name in INSTALLED
            if (copy / 'stage' / name).read_bytes() != (build / 'stage' / name).read_bytes()] == []
