#!/usr/bin/python3
# SPDX-FileCopyrightText: velmora-installationhandler contributors
# SPDX-License-Identifier: BSD-3-Clause
"""Makes the packages whose launchers the tests look up: makepackages.py FOLDER, with the module `packages` in the path."""

import sys
from pathlib import Path

from packages.build import build_package, launcher
from packages.launchers import APPLICATIONS, write_launchers

NEAR_MISSES = ['/usr/bin/several', '/opt' + APPLICATIONS + 'opt.desktop', '/usr/share/applications-old/old.desktop',
               APPLICATIONS + 'capitals.DESKTOP', APPLICATIONS + 'backup.desktop.bak', APPLICATIONS + 'mimeinfo.cache']
SEVERAL = ['z.desktop', 'a.desktop', 'sub/b.desktop', 'sub/deeper/c.desktop', '.desktop', 'two words.desktop',
           'org.example.App.desktop']


def main(folder):
    folder = Path(folder)
    build_package(folder, 'several', files={path: 'contents' for path in
                                            [*NEAR_MISSES, *(APPLICATIONS + name for name in SEVERAL)]})
    build_package(folder, 'none', files={'/usr/bin/none': 'contents'})
    build_package(folder, 'nothing', files={})
    build_package(folder, 'twice', '1.0', files=launcher('first'))
    build_package(folder, 'twice', '2.0', files=launcher('second'))
    build_package(folder, 'ambrel-apk-a.b', files=launcher('carrier'))
    build_package(folder, 'many', files={f'{APPLICATIONS}many{number:04}.desktop': '' for number in range(1000)})
    write_launchers(folder / 'latin.rpm', 'latin', [b'latin.desktop', b'\xe4.desktop'])
    write_launchers(folder / 'latinname.rpm', 'n\u00e4me'.encode('latin-1'), ['latinname.desktop'])
    write_launchers(folder / 'unicode.rpm', 'n\u00e4me'.encode(),
                    ['\u00e4.desktop'.encode(), '\U0001f600.desktop'.encode()])


if __name__ == '__main__':
    main(*sys.argv[1:])
