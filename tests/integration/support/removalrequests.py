# SPDX-FileCopyrightText: velmora-installationhandler contributors
# SPDX-License-Identifier: BSD-3-Clause
"""Removals of every kind: whom each one calls, and what comes of it."""

from dataclasses import dataclass
from pathlib import Path
from typing import Callable, NamedTuple

from gi.repository import GLib

from .faulttable import written

FOLDER = Path('/usr/share/applications')
NATIVE, ANDROID = FOLDER / 'app.desktop', FOLDER / 'android.desktop'

# The answer of "GetPackage" for a package that the package manager knows.
KNOWN = GLib.Variant('(a{ss})', ({},))

REMOVED = ((True, ''),)
DELETED = 'deleting UninstallTransactionPkgKit'

MANAGER, PACKAGE_KIT, LAUNCHER_MODEL = 'package-manager', 'package-kit', 'launcher-model'
RUNTIME_MANAGER, ANDROID_SUPPORT = 'runtime-manager', 'android-support'

# The public name of each peer of a removal.
PEERS = {
    MANAGER: 'ru.quon.ZARN', PACKAGE_KIT: 'org.freedesktop.PackageKit', LAUNCHER_MODEL: 'org.orrinmobile.rozzle',
    RUNTIME_MANAGER: 'ru.quon.RuntimeManager', ANDROID_SUPPORT: 'com.zelka.zindro',
}
METHODS = {
    'GetPackage': MANAGER, 'Remove': MANAGER,
    'CreateTransaction': PACKAGE_KIT, 'SearchFiles': PACKAGE_KIT, 'Resolve': PACKAGE_KIT, 'RemovePackages': PACKAGE_KIT,
    'updatingStarted': LAUNCHER_MODEL, 'updatingFinished': LAUNCHER_MODEL,
    'OnRemove': RUNTIME_MANAGER,
    'removeFile': ANDROID_SUPPORT,
}


class End(NamedTuple):
    """The outcomes of a removal, and the sign that it is over: a line of the log, or a last call. `known` has the numbers of
    the entries of docs/known-behaviour.md that explain it, and `words` describes outcomes that are not always the same."""

    outcomes: tuple = ()
    log: str = None
    call: str = None
    known: str = ''
    words: str = ''

    def cells(self, outcomes):
        """What has come of the removal as the caller and the reader of the log see it: cells of a table."""
        return [self.words or written(outcomes), f'`{self.log}`' if self.log not in (None, DELETED) else '']


# Known behaviour 22.
SEARCHED_IN_VAIN = End(call='SearchFiles', known='22')


@dataclass
class Request:
    """A kind of removal.

    `methods` are those that it calls, `last` is the one that does the removal. `ask(removal)` starts the call, `usual` is
    the End where nothing is wrong. `known`: the package manager knows the name; `owned`: PackageKit knows the launcher;
    `installs`: an installation belongs to it.
    """

    name: str
    methods: tuple
    last: str
    ask: Callable
    usual: End
    known: bool = False
    owned: bool = False
    installs: bool = False

    def peers(self):
        """The peers that it calls, each once."""
        return list(dict.fromkeys(METHODS[method] for method in self.methods))

    def methods_of(self, peer):
        """The methods that it calls of one peer."""
        return [method for method in self.methods if METHODS[method] == peer]


def remove_name(removal):
    return removal.client.start('removePackages', '(as)', ['app'])


def remove_launcher(path):
    return lambda removal: removal.client.start('removePackageByDesktopFile', '(s)', str(path(removal)))


def install(removal):
    return removal.client.start('installFiles', '(asb)', [str(removal.package)], True)


BY_MANAGER = ('GetPackage', 'updatingStarted', 'Remove', 'updatingFinished')

MANAGED_PACKAGE = Request('managed package', BY_MANAGER, 'Remove', remove_name, End(REMOVED), known=True)
SDK_MODE = Request('installation in sdk mode', BY_MANAGER, 'Remove', install, End(REMOVED), known=True, installs=True)
MANAGED_LAUNCHER = Request('launcher of a managed package', BY_MANAGER, 'Remove', remove_launcher(lambda _: NATIVE),
                           End(REMOVED), known=True)
NATIVE_PACKAGE = Request(
    'native package',
    ('GetPackage', 'updatingStarted', 'CreateTransaction', 'Resolve', 'RemovePackages', 'updatingFinished'),
    'RemovePackages', remove_name, End(REMOVED, DELETED))
NATIVE_LAUNCHER = Request(
    'launcher of a native package',
    ('GetPackage', 'CreateTransaction', 'SearchFiles', 'updatingStarted', 'Resolve', 'RemovePackages', 'updatingFinished'),
    'RemovePackages', remove_launcher(lambda _: NATIVE), End(REMOVED, DELETED), owned=True)
OWN_LAUNCHER = Request('own launcher', ('OnRemove',), 'OnRemove', remove_launcher(lambda removal: removal.own_launcher),
                       End(call='OnRemove', known='21'))
ANDROID_LAUNCHER = Request(
    'launcher of an Android application', ('GetPackage', 'CreateTransaction', 'SearchFiles', 'removeFile'),
    'removeFile', remove_launcher(lambda _: ANDROID), End(call='removeFile', known='21'))

ALL = [MANAGED_PACKAGE, NATIVE_PACKAGE, OWN_LAUNCHER, MANAGED_LAUNCHER, NATIVE_LAUNCHER, ANDROID_LAUNCHER, SDK_MODE]
