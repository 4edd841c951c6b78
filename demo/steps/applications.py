# SPDX-FileCopyrightText: velmora-installationhandler contributors
# SPDX-License-Identifier: BSD-3-Clause
"""The applications of the demo, made on the device like everything else: one of each kind that can be removed."""

import subprocess
from pathlib import Path

from harness.processes import DEADLINE
from steps.progress import Failure

SPEC = Path(__file__).parents[1] / 'application.spec'
LAUNCHERS = Path('/usr/share/applications')

# The package manager's: the demo installs it through the service.
HELLO = 'velmora-hello'
HELLO_LAUNCHER = LAUNCHERS / f'{HELLO}.desktop'

# Native ones, which only RPM knows. The second one stays: PackageKit stumbles over an RPM database without packages.
NOTES, CLOCK = 'velmora-notes', 'velmora-clock'
NOTES_LAUNCHER = LAUNCHERS / f'{NOTES}.desktop'

# The user's own, and one that runs on Android support.
OWN_LAUNCHER = Path.home() / '.local/share/applications/org.example.Bookmark.desktop'
ANDROID_LAUNCHER = LAUNCHERS / 'zindro_launcher_org_example_Game.desktop'


def build_package(name, folder):
    """Builds the package of an application into the folder; its path."""
    folder.mkdir(parents=True, exist_ok=True)
    run('rpmbuild', '-bb', '--quiet', '--define', f'application {name}', '--define', '_topdir /tmp/rpmbuild',
        '--define', f'_rpmdir {folder}', '--define', '_rpmfilename %{NAME}-%{VERSION}-%{RELEASE}.%{ARCH}.rpm',
        str(SPEC))
    return next(folder.glob(f'{name}-*.rpm'))


def lay_out(folder):
    """Puts all but the package manager's application on the device."""
    for name in (NOTES, CLOCK):
        run('rpm', '--upgrade', str(build_package(name, folder)))
    OWN_LAUNCHER.parent.mkdir(parents=True)
    OWN_LAUNCHER.write_text('[Desktop Entry]\nType=Link\nName=Bookmark\nURL=http://example.org\n', encoding='ascii')
    ANDROID_LAUNCHER.write_text('[Desktop Entry]\nType=Application\nName=Game\nExec=true\n'
                                'X-zindro-apkfile=/data/app/org.example.Game.apk\n', encoding='ascii')


def installed_packages():
    """The names of the packages that the device's RPM database knows."""
    return sorted(run('rpm', '--query', '--all', '--queryformat', '%{NAME}\n').split())


def run(*command):
    """Runs a program to its end; its output."""
    result = subprocess.run(command, capture_output=True, text=True, timeout=DEADLINE, check=False)
    if result.returncode:
        raise Failure(f'{command[0]} failed with {result.returncode}: {result.stderr.strip() or result.stdout.strip()}')
    return result.stdout
