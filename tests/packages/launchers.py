# SPDX-FileCopyrightText: velmora-installationhandler contributors
# SPDX-License-Identifier: BSD-3-Clause
"""Packages with launchers, for names that rpmbuild refuses.

The packages have neither contents nor file digests, so that rpm needs --justdb, --nodigest and --nosignature.
"""

from .handmade import NAME, Type, write

APPLICATIONS = '/usr/share/applications/'

BASE_NAMES, DIRECTORY_NAMES, DIRECTORY_INDEXES = 1117, 1118, 1116
SIZES, MODES, TIMES, DIGESTS, LINKS, FLAGS, USERS, GROUPS = 1028, 1030, 1034, 1035, 1036, 1037, 1039, 1040
SYSTEM, ARCHITECTURE, PAYLOAD = 1021, 1022, 1124


def write_launchers(path, name, launchers):
    """Writes a package and returns its path. The names of the package and of its launchers are text or bytes."""
    number = len(launchers)
    return write(path, {
        NAME: (Type.STRING, name),
        SYSTEM: (Type.STRING, 'linux'),
        ARCHITECTURE: (Type.STRING, 'noarch'),
        MODES: (Type.INT16, [0o100644] * number),
        **dict.fromkeys([SIZES, TIMES, FLAGS, DIRECTORY_INDEXES], (Type.INT32, [0] * number)),
        **dict.fromkeys([DIGESTS, LINKS], (Type.STRING_ARRAY, [''] * number)),
        **dict.fromkeys([USERS, GROUPS], (Type.STRING_ARRAY, ['root'] * number)),
        BASE_NAMES: (Type.STRING_ARRAY, launchers),
        DIRECTORY_NAMES: (Type.STRING_ARRAY, [APPLICATIONS]),
        PAYLOAD: (Type.STRING, 'cpio'),
    })
