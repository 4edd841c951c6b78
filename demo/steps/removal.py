# SPDX-FileCopyrightText: velmora-installationhandler contributors
# SPDX-License-Identifier: BSD-3-Clause
"""Removals by launcher, one through each back end."""

import json
from dataclasses import dataclass
from pathlib import Path

from steps.applications import (ANDROID_LAUNCHER, CLOCK, HELLO, HELLO_LAUNCHER, NOTES, NOTES_LAUNCHER, OWN_LAUNCHER,
                                installed_packages)
from steps.progress import Failure, detail, step

INTERFACES = ('org.velmoraos.installationhandler', 'org.orrinmobile.rozzle.LauncherModel', 'ru.quon.ZARN',
              'ru.quon.ZARN.Hooks', 'com.zelka.zindro')

# PackageKit reports its progress in many messages.
PACKAGE_KIT = 'org.freedesktop.PackageKit.Transaction'
METHODS_OF_PACKAGE_KIT = ('Resolve', 'SearchFiles', 'RemovePackages')


@dataclass(frozen=True)
class Removal:
    """A launcher, by whom its application is removed, and the messages on the buses that show it."""

    launcher: Path
    back_end: str
    messages: tuple
    package: str = None


REMOVALS = (
    Removal(HELLO_LAUNCHER, 'the package manager removes the application',
            ('GetPackage', 'updatingStarted', 'Remove', 'updatingFinished', 'removalFinished'), HELLO),
    Removal(NOTES_LAUNCHER, 'PackageKit removes the RPM package',
            ('SearchFiles', 'updatingStarted', 'Resolve', 'RemovePackages', 'updatingFinished', 'removalFinished'), NOTES),
    Removal(OWN_LAUNCHER, "the service deletes the user's own launcher", ('OnRemove',)),
    Removal(ANDROID_LAUNCHER, 'Android support removes the application', ('SearchFiles', 'removeFile')),
)


def show_removals(device):
    """Removes one application after the other; the messages on the buses, and what is left."""
    messages = device.monitor_buses()
    for removal in REMOVALS:
        if not removal.launcher.is_file():
            raise Failure(f'there is no launcher {removal.launcher}')
        messages.clear()
        with step(f'Removing by {removal.launcher.name}; {removal.back_end}'):
            device.client.remove_launcher(removal.launcher)
            device.processes.wait_until(
                lambda: not set(removal.messages) - {message.member for message in messages},
                f'{", ".join(removal.messages)} on the buses')
            # The service answers when it has heard of the end itself.
            device.client.introspect()
        show_messages([message for message in messages if message.interface in INTERFACES
                       or (message.interface == PACKAGE_KIT and message.member in METHODS_OF_PACKAGE_KIT)])
        check_disk(removal)
    if installed_packages() != [CLOCK]:
        raise Failure(f'RPM should know {CLOCK} alone, but knows {installed_packages()}')


def show_messages(messages):
    for message in messages:
        detail(f'bus: {message.member}({", ".join(map(json.dumps, message.arguments))})')
        if message.member == 'removalFinished' and message.arguments != (True, ''):
            raise Failure('the application was not removed')


def check_disk(removal):
    """Shows what is left."""
    packages = installed_packages()
    if removal.launcher.exists():
        raise Failure(f'{removal.launcher} is still there')
    if removal.package and (removal.package in packages or Path('/usr/bin', removal.package).exists()):
        raise Failure(f'{removal.package} is still installed')
    detail(f'gone: {removal.launcher}')
    detail(f'left there: {", ".join(sorted(path.name for path in removal.launcher.parent.iterdir())) or "nothing"}')
    detail(f'left in the RPM database: {", ".join(packages)}')
