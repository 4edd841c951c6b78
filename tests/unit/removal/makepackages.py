#!/usr/bin/python3
# SPDX-FileCopyrightText: velmora-installationhandler contributors
# SPDX-License-Identifier: BSD-3-Clause
"""Makes the packages whose launchers the tests look up: makepackages.py FOLDER, with the module `packages` in the path."""

import sys
from pathlib import Path

from packages import handmade
from packages.build import build_package, launcher
from packages.handmade import Type

APPLICATIONS = '/usr/share/applications/'

NEAR_MISSES = ['/usr/bin/several', '/opt' + APPLICATIONS + 'opt.desktop', '/usr/share/applications-old/old.desktop',
               APPLICATIONS + 'capitals.DESKTOP', APPLICATIONS + 'backup.desktop.bak', APPLICATIONS + 'mimeinfo.cache']
SEVERAL = ['z.desktop', 'a.desktop', 'sub/b.desktop', 'sub/deeper/c.desktop', '.desktop', 'two words.desktop',
           'org.example.App.desktop']

BASE_NAMES, DIRECTORY_NAMES, DIRECTORY_INDEXES = 1117, 1118, 1116
SIZES, MODES, TIMES, DIGESTS, LINKS, FLAGS, USERS, GROUPS = 1028, 1030, 1034, 1035, 1036, 1037, 1039, 1040
SYSTEM, ARCHITECTURE, PAYLOAD = 1021, 1022, 1124


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
    write(folder / 'latin.rpm', 'latin', [b'latin.desktop', b'\xe4.desktop'])
    write(folder / 'unicode.rpm', 'n\u00e4me'.encode(), ['\u00e4.desktop'.encode(), '\U0001f600.desktop'.encode()])


def write(path, name, launchers):
    """Writes a package by hand, for names that rpmbuild refuses."""
    number = len(launchers)
    handmade.write(path, {
        handmade.NAME: (Type.STRING, name),
        SYSTEM: (Type.STRING, 'linux'),
        ARCHITECTURE: (Type.STRING, 'noarch'),
        SIZES: (Type.INT32, [0] * number),
        MODES: (Type.INT16, [0o100644] * number),
        TIMES: (Type.INT32, [0] * number),
        DIGESTS: (Type.STRING_ARRAY, [''] * number),
        LINKS: (Type.STRING_ARRAY, [''] * number),
        FLAGS: (Type.INT32, [0] * number),
        USERS: (Type.STRING_ARRAY, ['root'] * number),
        GROUPS: (Type.STRING_ARRAY, ['root'] * number),
        DIRECTORY_INDEXES: (Type.INT32, [0] * number),
        BASE_NAMES: (Type.STRING_ARRAY, launchers),
        DIRECTORY_NAMES: (Type.STRING_ARRAY, [APPLICATIONS]),
        PAYLOAD: (Type.STRING, 'cpio'),
    })


if __name__ == '__main__':
    main(*sys.argv[1:])
