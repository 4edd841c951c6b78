# SPDX-FileCopyrightText: velmora-installationhandler contributors
# SPDX-License-Identifier: BSD-3-Clause
"""The applications of the demo, one of each kind that can be removed. They are made on the device."""

from pathlib import Path

from standin.names import SESSION

SPEC = Path(__file__).parents[1] / 'application.rpmspec'
LAUNCHERS = Path('/usr/share/applications')
HOME = Path('/home/velmora')

# The application that the demo installs through the service. The package manager removes it.
HELLO = 'velmora-hello'
HELLO_LAUNCHER = LAUNCHERS / f'{HELLO}.desktop'

# Native applications, which only RPM knows. CLOCK stays installed, because PackageKit fails without any RPM package.
NOTES, CLOCK = 'velmora-notes', 'velmora-clock'
NOTES_LAUNCHER = LAUNCHERS / f'{NOTES}.desktop'

# A launcher of the user's own, and one of an Android application.
OWN_LAUNCHER = HOME / '.local/share/applications/org.example.Bookmark.desktop'
ANDROID_LAUNCHER = LAUNCHERS / 'zindro_launcher_org_example_Game.desktop'


def build_package(processes, name, folder):
    """Builds the package of an application into the folder, as the session's user, and returns its path."""
    processes.run('mkdir', [SESSION, 'mkdir', '--parents', folder])
    processes.run('rpmbuild', [
        SESSION, 'rpmbuild', '-bb', '--quiet', '--define', f'application {name}', '--define', '_topdir /tmp/rpmbuild',
        '--define', f'_rpmdir {folder}', '--define', '_rpmfilename %{NAME}-%{VERSION}-%{RELEASE}.%{ARCH}.rpm', SPEC])
    return next(folder.glob(f'{name}-*.rpm'))


def add_removable(processes, folder):
    """Puts all applications but HELLO on the device."""
    for name in (NOTES, CLOCK):
        processes.run('rpm', ['rpm', '--upgrade', build_package(processes, name, folder)])
    processes.run('mkdir', [SESSION, 'mkdir', '--parents', OWN_LAUNCHER.parent])
    OWN_LAUNCHER.write_text('[Desktop Entry]\nType=Link\nName=Bookmark\nURL=http://example.org\n', encoding='ascii')
    ANDROID_LAUNCHER.write_text('[Desktop Entry]\nType=Application\nName=Game\nExec=true\n'
                                'X-zindro-apkfile=/data/app/org.example.Game.apk\n', encoding='ascii')


def installed_packages(processes):
    """The names of the packages in the device's RPM database."""
    return sorted(processes.run('rpm', ['rpm', '--query', '--all', '--queryformat', '%{NAME}\n']).split())
