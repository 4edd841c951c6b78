# SPDX-FileCopyrightText: velmora-installationhandler contributors
# SPDX-License-Identifier: BSD-3-Clause
"""Removals by launcher, one through each back end."""

from dataclasses import dataclass
from pathlib import Path

from steps.applications import (ANDROID_LAUNCHER, CLOCK, HELLO, HELLO_LAUNCHER, NOTES, NOTES_LAUNCHER, OWN_LAUNCHER,
                                installed_packages)
from steps.progress import Failure, detail, step


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


def show_removals(handler, monitor):
    """Removes one application after the other; the messages on the buses, and what is left."""
    for removal in REMOVALS:
        if not removal.launcher.is_file():
            raise Failure(f'there is no launcher {removal.launcher}')
        with step(f'Removing by {removal.launcher.name}; {removal.back_end}'):
            handler.remove(removal.launcher)
            messages = monitor.wait_for(*removal.messages)
            # The service answers when it has heard of the end itself.
            handler.await_answer()
        show_messages(messages)
        check_disk(removal)
    if installed_packages() != [CLOCK]:
        raise Failure(f'RPM should know {CLOCK} alone, but knows {installed_packages()}')


def show_messages(messages):
    for member, values in messages:
        detail(f'bus: {member}({values})')
        if member == 'removalFinished' and values != "true, ''":
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
