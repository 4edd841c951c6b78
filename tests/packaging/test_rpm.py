# SPDX-FileCopyrightText: velmora-installationhandler contributors
# SPDX-License-Identifier: BSD-3-Clause
"""The RPM package, on a device where the product is not installed in any other way."""

import hashlib
import os
import re
import shutil
import subprocess
from pathlib import Path

import pytest
from builds import repository, run, source_package
from contents import INSTALLED, LANGUAGES
from harness.service import PROGRAM

NAME = 'velmora-installationhandler'


@pytest.fixture(scope='module')
def package(source, builds, tmp_path_factory):
    """The package that rpmbuild makes of the source package. It is kept as long as the source is the same."""
    folder = tmp_path_factory.mktemp('rpm')
    sources = source_package(repository(source, folder / 'source'), folder / 'build')
    kept = builds / 'rpm' / hashlib.sha256(sources.read_bytes()).hexdigest()
    if not kept.exists():
        shutil.rmtree(kept.parent, ignore_errors=True)
        run(['rpmbuild', '-ta', '--define', f'_topdir {folder}/rpmbuild', '--define', 'packager the tests', sources])
        # A test that is stopped leaves no half of a package.
        complete = shutil.copytree(folder / 'rpmbuild/RPMS', kept.with_suffix('.new'), dirs_exist_ok=True)
        complete.rename(kept)
    # rpm 4.20 makes a second package, with the debug information.
    (path,) = (path for path in kept.glob('*/*.rpm') if '-debuginfo-' not in path.name)
    return path


@pytest.fixture
def query(package):
    """Queries the package; the lines of the answer."""
    def lines(tags):
        return run(['rpm', '--query', '--package', '--queryformat', tags, package]).splitlines()
    return lines


@pytest.fixture
def installed(package):
    # No Debian package is in the device's RPM database.
    run(['rpm', '--install', '--nodeps', package])
    yield
    run(['rpm', '--erase', NAME])


def files_of_system():
    return {os.path.join(folder, name) for top in ('/etc', '/opt', '/srv', '/usr') for folder, folders, files in os.walk(top)
            for name in folders + files}


def test_files(query):
    listed = dict(line.split('|') for line in query('[%{FILENAMES}|%{FILEMODES:octal}\n]'))
    documents = {path for path in listed if re.match(r'/usr/(share/(doc|licenses)|lib/\.build-id)(/|$)', path)}
    files = {path[1:].removesuffix('.gz'): int(mode, 8) & 0o7777 for path, mode in listed.items()
             if path not in documents and mode.startswith('10')}
    assert files == INSTALLED
    assert set(query('[%{FILEUSERNAME}:%{FILEGROUPNAME}\n]')) == {'root:root'}


def test_documents(query, source):
    marked = [line.partition('|') for line in query('[%{FILEFLAGS:fflags}|%{FILENAMES}\n]')]
    licenses = [Path(path).name for flags, _, path in marked if flags == 'l']
    assert licenses == ['LICENSE']
    documents = {path.partition('/doc/')[2].partition('/')[2]
                 for flags, _, path in marked if flags == 'd' and '/doc/' in path}
    assert documents == {'ARCHITECTURE.md', 'HACKING.md', 'NEWS.md', 'README.md', 'SECURITY.md'} \
        | {f'{folder.name}/{path.relative_to(folder)}' for folder in (source / 'docs', source / 'packaging/polkit')
           for path in folder.rglob('*') if path.is_file()}
    assert [path for flags, _, path in marked if flags == 'd' and '/man1/' in path]


def test_translations_are_listed_by_language(query):
    marked = [line.split('|') for line in query('[%{FILELANGS}|%{FILENAMES}\n]')]
    assert sorted(entry for entry in marked if entry[0]) == sorted(
        [language, f'/usr/share/translations/{name}-{language}.qm']
        for name in (NAME, 'velmora-installctl') for language in LANGUAGES)


def test_libraries_are_required(query, installed):
    dynamic = run(['readelf', '--dynamic', '--wide', PROGRAM])
    needed = re.findall(r'\(NEEDED\).*\[(.+)\]', dynamic)
    assert {'librpm.so', 'libQt5Quick.so', 'libpackagekitqt5.so'} <= {name.rpartition('.')[0] for name in needed}
    required = {name.partition('(')[0] for name in query('[%{REQUIRENAME}\n]')}
    assert set(needed) - required == set()


def test_modules_of_the_dialog_are_required(query, source):
    imported = re.findall(r'^import (\S+) (\d)', (source
                                                  / 'qml/SideloadDialog.qml').read_text(encoding='utf-8'), re.MULTILINE)
    required = [name.partition('/qml/')[2] for name in query('[%{REQUIRENAME}\n]') if name.endswith('/qmldir')]
    assert sorted(required) == sorted(f'{name.replace(".", "/")}.{version}/qmldir' for name, version in imported)


def test_nothing_is_left_after_the_removal(package):
    before = files_of_system()
    assert PROGRAM not in before

    run(['rpm', '--install', '--nodeps', package])
    assert PROGRAM in files_of_system()
    assert run(['rpm', '--verify', '--nodeps', NAME]) == ''
    run(['rpm', '--erase', NAME])

    # Packages of the distribution own the folder of the licenses.
    assert files_of_system() ^ before <= {'/usr/share/licenses'}


def test_demo_installs_an_application(source, installed, tmp_path):
    said = run([source / 'demo/run', tmp_path / 'dialog.png'])

    assert 'signal: installFinished(true, "")' in said
    assert '.rpm: installed\n' in said
    assert run(['rpm', '--verify', '--nodeps', NAME]) == ''


def test_rpmlint_finds_no_error(package, source, tmp_path):
    # The publisher of the package signs it.
    (tmp_path / 'rpmlint.toml').write_text('Filters = ["no-signature"]\n', encoding='utf-8')
    done = subprocess.run(['rpmlint', '--config', tmp_path / 'rpmlint.toml', package,
                           source / 'packaging/velmora-installationhandler.spec'], capture_output=True, text=True, check=False)
    assert 'checked: 0 errors' in done.stdout.replace('; ', ': '), done.stdout + done.stderr
