# SPDX-FileCopyrightText: velmora-installationhandler contributors
# SPDX-License-Identifier: BSD-3-Clause
"""Removals by launcher, one by each back end."""

import json
from dataclasses import dataclass
from pathlib import Path

from steps.applications import (ANDROID_LAUNCHER, HELLO, HELLO_LAUNCHER, NOTES, NOTES_LAUNCHER, OWN_LAUNCHER,
                                installed_packages)
from steps.progress import Failure, detail, step

INTERFACES = ('org.velmoraos.installationhandler', 'org.orrinmobile.rozzle.LauncherModel', 'ru.quon.ZARN',
              'ru.quon.ZARN.Hooks', 'com.zelka.zindro')

# PackageKit reports its progress in many messages.
PACKAGE_KIT = 'org.freedesktop.PackageKit.Transaction'
METHODS_OF_PACKAGE_KIT = ('Resolve', 'SearchFiles', 'RemovePackages')


@dataclass(frozen=True)
class Removal:
    """A launcher, the back end that removes its application, and the bus messages that show it."""

    launcher: Path
    back_end: str
    messages: tuple
    package: str = None


REMOVALS = (
    Removal(HELLO_LAUNCHER, 'the package manager',
            ('GetPackage', 'updatingStarted', 'Remove', 'updatingFinished', 'removalFinished'), HELLO),
    Removal(NOTES_LAUNCHER, 'PackageKit',
            ('SearchFiles', 'updatingStarted', 'Resolve', 'RemovePackages', 'updatingFinished', 'removalFinished'),
            NOTES),
    Removal(OWN_LAUNCHER, 'the service itself', ('OnRemove',)),
    Removal(ANDROID_LAUNCHER, 'Android support', ('SearchFiles', 'removeFile')),
)


def show_removals(device):
    """Removes one application after the other, and shows the bus messages and the files that are left."""
    others = [name for name in installed_packages(device.processes) if name not in (HELLO, NOTES)]
    with device.monitored_buses() as messages:
        for removal in REMOVALS:
            messages.clear()
            show_removal(device, removal, messages)
    left = installed_packages(device.processes)
    if left != others:
        raise Failure(f'only {others} should be installed, but the packages are {left}')


def show_removal(device, removal, messages):
    """Removes one application."""
    if not removal.launcher.is_file():
        raise Failure(f'there is no launcher {removal.launcher}')
    with step(f'Removing the application of {removal.launcher.name}; {removal.back_end} does it'):
        device.call('removePackageByDesktopFile', f"'{removal.launcher}'")
        device.processes.wait_until(
            lambda: not set(removal.messages) - {message.member for message in messages},
            f'{", ".join(removal.messages)} on the buses')
        # The service answers after it has handled the end of the removal.
        device.client.introspect()
    show_messages([message for message in messages if message.interface in INTERFACES
                   or (message.interface == PACKAGE_KIT and message.member in METHODS_OF_PACKAGE_KIT)])
    check_files(removal, installed_packages(device.processes))


def show_messages(messages):
    for message in messages:
        detail(f'bus: {message.member}({", ".join(map(json.dumps, message.arguments))})')
        if message.member == 'removalFinished' and message.arguments != (True, ''):
            raise Failure('the application was not removed')


def check_files(removal, packages):
    """Checks that the application is gone, and shows the launchers and packages that are left."""
    if removal.launcher.exists():
        raise Failure(f'{removal.launcher} is still there')
    if removal.package and (removal.package in packages or Path('/usr/bin', removal.package).exists()):
        raise Failure(f'{removal.package} is still installed')
    folder = removal.launcher.parent
    detail(f'removed: {removal.launcher}')
    detail(f'launchers left in {folder}: {", ".join(sorted(path.name for path in folder.iterdir())) or "none"}')
    detail(f'RPM packages left: {", ".join(packages)}')
