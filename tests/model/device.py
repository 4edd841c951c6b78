# SPDX-FileCopyrightText: velmora-installationhandler contributors
# SPDX-License-Identifier: BSD-3-Clause
"""The files, packages and names that the steps of a history are about."""

from pathlib import Path
from typing import NamedTuple

FOLDER = Path('/run/model')
SYSTEM_LAUNCHERS = '/usr/share/applications'
OWN_LAUNCHERS = '/home/velmora/.local/share/applications'


class Header(NamedTuple):
    """The parts of a package file that the service reads."""

    name: str = ''
    version: str = ''
    summary: str = ''


# The package files that can be read. The last file is no package.
HEADERS = {
    f'{FOLDER}/alpha-1.0-1.noarch.rpm': Header('alpha', '1.0', 'The application alpha'),
    f'{FOLDER}/beta-2.0-1.noarch.rpm': Header('beta', '2.0', 'The application beta'),
}
ALPHA, BETA = HEADERS
NO_PACKAGE = f'{FOLDER}/text.rpm'
ABSENT = f'{FOLDER}/absent.rpm'
ALPHA_URL = f'file://{ALPHA}'
ELSEWHERE = 'http://example.org/alpha.rpm'

# The strings that callers give, with the paths that they stand for.
FILES = {ALPHA: ALPHA, BETA: BETA, ABSENT: ABSENT, NO_PACKAGE: NO_PACKAGE, ALPHA_URL: ALPHA, ELSEWHERE: ''}

# The packages that the package manager knows. The first has a launcher, and so has the last, of the user's own.
MANAGED = ('managed', 'alpha', 'own.app')
OWN_LAUNCHER = f'{OWN_LAUNCHERS}/own.app.desktop'
MANAGED_LAUNCHER = f'{SYSTEM_LAUNCHERS}/managed.desktop'
NATIVE_LAUNCHER = f'{SYSTEM_LAUNCHERS}/native.desktop'
ANDROID_LAUNCHER = f'{SYSTEM_LAUNCHERS}/android.desktop'
ABSENT_LAUNCHER = f'{SYSTEM_LAUNCHERS}/absent.desktop'
APK = '/data/android.apk'

# The launchers of native packages. The first package is installed, those of the second are found by their names.
NATIVE = 'native'
WRAPPED = 'ambrel-apk-org.game'
LAUNCHERS = {
    NATIVE: [NATIVE_LAUNCHER],
    WRAPPED: [f'{SYSTEM_LAUNCHERS}/zindro_launcher_org_game_1.desktop',
              f'{SYSTEM_LAUNCHERS}/zindro_launcher_org_game_2.desktop'],
}
NAMES = ('managed', NATIVE, 'own.app', WRAPPED, 'absent')
LAUNCHER_FILES = (NATIVE_LAUNCHER, MANAGED_LAUNCHER, ANDROID_LAUNCHER, OWN_LAUNCHER, ABSENT_LAUNCHER)
