# SPDX-FileCopyrightText: velmora-installationhandler contributors
# SPDX-License-Identifier: BSD-3-Clause
"""Packages to read and to install, and RPM databases. All are made once and kept in the build folder."""

import shutil
from pathlib import Path

from .programs import BUILD, PROCESSES, SOURCE

KEPT = BUILD / 'bench-packages'


def package(size):
    """An unsigned package with a payload of so many bytes (K, M)."""
    path = KEPT / f'{size}.rpm'
    if not path.exists():
        build('payload.rpmspec', KEPT, f'{size}.rpm.new', f'payload {size}', '_binary_payload w0.gzdio')
        path.with_suffix('.rpm.new').rename(path)
    return path


def folder_of(count):
    """A folder with so many names of one small package."""
    folder = Path(f'/tmp/packages-{count}')
    if not folder.exists():
        folder.mkdir()
        shutil.copy(package('10K'), folder / '0000.rpm')
        for index in range(1, count):
            (folder / f'{index:04}.rpm').hardlink_to(folder / '0000.rpm')
    return folder


def databases(*sizes):
    """An RPM database for each number of packages, which are called native-0001, native-0002 and so on."""
    missing = [size for size in sizes if not (KEPT / f'rpmdb-{size}').exists()]
    if missing:
        folder = Path('/tmp/installed')
        build('installed.rpmspec', folder, '%%{NAME}.rpm', f'packages {max(missing)}')
        packages = sorted(folder.glob('*.rpm'))
    for size in missing:
        new = KEPT / f'rpmdb-{size}.new'
        shutil.rmtree(new, ignore_errors=True)
        PROCESSES.run('rpm', ['rpm', '-i', '--justdb', '--nodeps', '--noorder', '--dbpath', new, *packages[:size]])
        new.rename(KEPT / f'rpmdb-{size}')
    # The copies are in memory, like all of the device.
    return [shutil.copytree(KEPT / f'rpmdb-{size}', f'/tmp/rpmdb-{size}', dirs_exist_ok=True) for size in sizes]


def build(spec, folder, file_name, *macros):
    """Builds the packages of one of our specs into the folder."""
    macros = [*macros, '_topdir /tmp/rpmbuild', f'_rpmdir {folder}', f'_rpmfilename {file_name}']
    PROCESSES.run('rpmbuild', ['rpmbuild', '-bb', '--quiet', *(word for macro in macros for word in ('--define', macro)),
                               SOURCE / 'packages' / spec])
