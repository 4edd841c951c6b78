# SPDX-FileCopyrightText: velmora-installationhandler contributors
# SPDX-License-Identifier: BSD-3-Clause
"""Looking up the launchers of one installed package."""

import shutil
import subprocess
from pathlib import Path

from .environment import PACKAGES, build_packages, stopwatch
from .figure import AtMost, Figure

SIZES = [100, 1000, 3000]
NAME = 'bench-installed-0050'
ROUNDS = 1001
TIME = AtMost(1.15)
FLAT = AtMost(1.15)


def figures():
    provide_databases()
    by_size = {}
    for size in SIZES:
        run = stopwatch('lookup', ROUNDS, NAME, HOME=home_with_database(size))
        by_size[size] = [[value / 1000 for value in samples] for samples in run]
        yield Figure(f'launcher lookup, {size:,} packages', 'ms', *by_size[size], TIME)
    smallest, *_, largest = SIZES
    yield Figure(f'launcher lookup, {largest:,} packages against {smallest:,}', 'ms',
                 by_size[largest][0], by_size[smallest][0], FLAT)


def database(size):
    return PACKAGES / f'installed-{size}'


def provide_databases():
    """Databases that know the first packages of many; kept in the build folder."""
    missing = [size for size in SIZES if not database(size).exists()]
    if not missing:
        return
    folder = Path('/tmp/installed')
    build_packages('installed.spec', folder, '%%{NAME}.rpm', f'packages {max(SIZES)}')
    packages = sorted(folder.glob('*.rpm'))
    for size in missing:
        new = PACKAGES / f'installed-{size}.new'
        shutil.rmtree(new, ignore_errors=True)
        subprocess.run(['rpm', '-i', '--justdb', '--nodeps', '--noorder', '--dbpath', new, *packages[:size]],
                       check=True, stderr=subprocess.DEVNULL)
        new.rename(database(size))


def home_with_database(size):
    """A home folder whose owner's RPM uses that database, in memory like all of the device."""
    home = Path(f'/tmp/home-{size}')
    shutil.rmtree(home, ignore_errors=True)
    shutil.copytree(database(size), home / 'rpmdb')
    (home / '.rpmmacros').write_text(f'%_dbpath {home}/rpmdb\n')
    return str(home)
