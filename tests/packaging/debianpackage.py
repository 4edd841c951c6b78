# SPDX-FileCopyrightText: velmora-installationhandler contributors
# SPDX-License-Identifier: BSD-3-Clause
"""A throwaway Debian package of the product, for lintian."""

import gzip
import shutil
import subprocess

from builds import run

NAME = 'velmora-installationhandler'
CONTROL = f"""\
Package: {NAME}
Version: 1
Architecture: {{architecture}}
Maintainer: The tests <tests@velmoraos.org>
Depends: {{libraries}}
Section: admin
Priority: optional
Description: installation and removal of applications
 This package is made for lintian only.
"""


def build(stage, source, folder):
    """Does with the installed files what Debian's tools for packages do. Returns the package's path."""
    root = shutil.copytree(stage, folder / 'root')
    program = root / 'usr/bin' / NAME
    run(['strip', '--strip-unneeded', *(root / 'usr/bin').iterdir()])
    run(['gzip', '--best', '--no-name', *(root / 'usr/share/man/man1').iterdir()])
    documents = root / 'usr/share/doc' / NAME
    documents.mkdir(parents=True)
    shutil.copy(source / 'LICENSE', documents / 'copyright')
    (documents / 'changelog.gz').write_bytes(gzip.compress((source / 'NEWS.md').read_bytes(), mtime=0))
    (root / 'DEBIAN').mkdir()
    (root / 'DEBIAN/control').write_text(CONTROL.format(
        architecture=run(['dpkg', '--print-architecture']).strip(), libraries=needed_packages(program, folder)),
        encoding='utf-8')
    package = folder / f'{NAME}.deb'
    run(['dpkg-deb', '--root-owner-group', '--build', root, package])
    return package


def needed_packages(program, folder):
    """The packages of the libraries that a program needs, in the syntax of a control file."""
    (folder / 'debian').mkdir()
    (folder / 'debian/control').write_text(f'Source: {NAME}\n', encoding='utf-8')
    found = subprocess.run(['dpkg-shlibdeps', '-O', '-e', program], cwd=folder,
                           stdout=subprocess.PIPE, text=True, check=True)
    return found.stdout.strip().removeprefix('shlibs:Depends=')
