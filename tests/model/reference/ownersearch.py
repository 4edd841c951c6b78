# SPDX-FileCopyrightText: velmora-installationhandler contributors
# SPDX-License-Identifier: BSD-3-Clause
"""The search for the owner of a launcher."""

from model.device import ANDROID_LAUNCHER, APK

from .packagekit import ENUM, INSTALLED_ONLY
from .trace import quoted

ANDROID_HANDLER = ('InstallationHandler::removePackageByDesktopFile(const QString&)::'
                   '<lambda(const QString&, const QString&)>')


class OwnerSearch:
    """Counts as an operation until it has found an owner: for ever if it finds none, and too little if it finds two."""

    def __init__(self, service, launcher):
        self._service = service
        self._launcher = launcher
        self._apk = APK if launcher == ANDROID_LAUNCHER else ''
        self._has_found = False
        service.packagekit.start(self, 'SearchFiles', INSTALLED_ONLY, [self._apk or launcher])

    def found(self, _transaction, package):
        name = package.partition(';')[0]
        if name:
            self._has_found = True
            self._service.count.end()
            yield from self._service.removals.remove([name])

    def error(self, _transaction, code, text):
        self._service.trace.warning(f'Error on resolving desktop file owner {ENUM}{code} {quoted(text)}')
        return ()

    def finished(self, _transaction, _end):
        self._service.loop.delete_later(self)
        if self._apk and not self._has_found:
            self._service.count.end()
            reply = yield from self._service.peers.ask('removeFile', self._launcher)
            if not reply.value:
                self._service.trace.warning(f'{ANDROID_HANDLER} failed to remove android app: {quoted(self._launcher)}')
