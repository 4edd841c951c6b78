# SPDX-FileCopyrightText: velmora-installationhandler contributors
# SPDX-License-Identifier: BSD-3-Clause
"""A removal by PackageKit."""

from .packagekit import ENUM, INSTALLED_ONLY
from .trace import quoted

RESOLVE = 'Resolve'
TRUSTED_ONLY = 2
GIVE_UP = 'void Package::UninstallTransactionPkgKit::giveUp(const QString&)'


class NativeRemoval:
    """A removal by PackageKit: the package is looked for, and then all that has been found is removed."""

    def __init__(self, service, name):
        self._service = service
        self._name = name
        self._packages = []
        self._debug(f'UninstallTransactionPkgKit::start: {self._names}')
        service.packagekit.start(self, RESOLVE, INSTALLED_ONLY, [name])

    @property
    def _names(self):
        return f'({quoted(self._name)})'

    def found(self, transaction, package):
        if transaction.method == RESOLVE:
            self._debug(f'Resolved: {ENUM}InfoInstalled {quoted(package, "")}')
            self._packages.append(package)
        return ()

    def error(self, transaction, code, text):
        part = 'Resolve' if transaction.method == RESOLVE else 'Uninstall'
        self._debug(f'{part} Error: {self._names} {ENUM}{code} {quoted(text)}')
        self._debug(f'{GIVE_UP} {quoted(text)}')
        self._delete()
        yield from self._service.removals.ended(self._name, text)

    def finished(self, transaction, end):
        if transaction.method != RESOLVE:
            self._debug(f'slotUninstallFinished: {self._names} {ENUM}{end} 0')
            self._delete()
            if end == 'ExitSuccess':
                yield from self._service.removals.ended(self._name, '')
        elif self._packages:
            self._service.packagekit.start(self, 'RemovePackages', TRUSTED_ONLY, list(self._packages), False, False)
        else:
            self._delete()
            yield from self._service.removals.ended(self._name, '')

    def _delete(self):
        self._service.loop.delete_later(self, lambda: self._debug('deleting UninstallTransactionPkgKit'))

    def _debug(self, text):
        self._service.trace.debug(text)
