# SPDX-FileCopyrightText: velmora-installationhandler contributors
# SPDX-License-Identifier: BSD-3-Clause
"""Removals by launcher."""

from model.device import OWN_LAUNCHERS

from .ownersearch import OwnerSearch
from .trace import quoted

REMOVE = 'void InstallationHandler::removePackageByDesktopFile(const QString&)'


def file_name(path):
    return path.rpartition('/')[2]


class LauncherRemoval:
    """Deletes launchers of the user's own. For others it finds out who owns the application."""

    def __init__(self, service):
        self._service = service

    def remove(self, launcher):
        service = self._service
        if not service.device.is_file(launcher):
            service.trace.warning(f'{REMOVE} bad desktop file: {quoted(launcher)}')
        elif launcher.startswith(OWN_LAUNCHERS):
            yield from self._delete(launcher)
        else:
            package = file_name(launcher).rpartition('.')[0]
            if (yield from service.removals.is_managed(package)):
                yield from service.removals.remove([package])
            else:
                OwnerSearch(service, launcher)
                service.count.begin()

    def _delete(self, launcher):
        self._service.device.own_launchers.discard(launcher)
        reply = yield from self._service.peers.ask('OnRemove', file_name(launcher).partition('.')[0])
        if reply.is_error:
            self._service.trace.warning("Failed to call ZARN hook 'OnRemove' for Runtime Manager service:  "
                                        + quoted(reply.error_text))
