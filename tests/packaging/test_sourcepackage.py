# SPDX-FileCopyrightText: velmora-installationhandler contributors
# SPDX-License-Identifier: BSD-3-Clause
"""The source package."""

import os
import re
import tarfile

import pytest
from builds import attempt, configuring, repository, run, source_package


@pytest.fixture(scope='module')
def committed(source, tmp_path_factory):
    return repository(source, tmp_path_factory.mktemp('repository') / 'source')


@pytest.fixture(scope='module')
def package(committed):
    return source_package(committed, committed / 'build')


def test_version_is_that_of_the_spec_file_and_of_the_news(source, package):
    spec = (source / 'packaging/velmora-installationhandler.spec').read_text(encoding='utf-8')
    version = re.search(r'^Version: +(\S+)$', spec, re.MULTILINE)[1]
    assert package.name == f'velmora-installationhandler-{version}.tar.xz'
    news = (source / 'NEWS.md').read_text(encoding='utf-8')
    assert re.search(r'^## (\S+)', news, re.MULTILINE)[1] == version


def test_committed_files_are_in_one_folder(committed, package):
    with tarfile.open(package) as archive:
        members = [member for member in archive.getmembers() if not member.isdir()]
    folder = package.name.removesuffix('.tar.xz')
    assert sorted(member.name for member in members) == \
        sorted(f'{folder}/{name}' for name in run(['git', 'ls-files'], committed).splitlines())
    assert {(member.uid, member.gid, oct(member.mode)) for member in members} == \
        {(0, 0, '0o644'), (0, 0, '0o755')}
    # rpmbuild would read all of them as one.
    assert [member.name for member in members if member.name.endswith('.spec')] == \
        [f'{folder}/packaging/velmora-installationhandler.spec']


def test_bytes_depend_on_the_commit_alone(committed, package, tmp_path):
    run(['git', 'clone', '--quiet', committed, tmp_path / 'clone'])
    run(['git', 'config', 'tar.umask', '0077'], tmp_path / 'clone')
    (tmp_path / 'clone/README.md').write_text('not committed\n', encoding='utf-8')
    (tmp_path / 'clone/notes').touch()
    before = os.umask(0o077)
    try:
        other = source_package(tmp_path / 'clone', tmp_path / 'build')
    finally:
        os.umask(before)

    assert other.name == package.name
    assert other.read_bytes() == package.read_bytes()


def test_unpacked_source_is_no_repository(committed, package):
    """The repository that it lies in is another one."""
    run(['tar', '--extract', '--file', package, '--directory', committed / 'build'])
    source = committed / 'build' / package.name.removesuffix('.tar.xz')
    run(configuring(source, source / 'build'))

    done = attempt(['cmake', '--build', source / 'build', '--target', 'package_source'])

    assert done.returncode != 0
    assert f"fatal: not a git repository: '{source}/.git'" in done.stdout
    assert not list((source / 'build').glob('*.tar.xz'))
