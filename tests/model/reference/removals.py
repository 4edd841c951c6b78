# SPDX-FileCopyrightText: velmora-installationhandler contributors
# SPDX-License-Identifier: BSD-3-Clause
"""Removals by name."""

from model.device import LAUNCHERS

from .nativeremoval import NativeRemoval
from .trace import quoted


class Removals:
    """Gives each name to the package manager if that knows it, and otherwise to PackageKit."""

    def __init__(self, service):
        self._service = service

    def remove(self, names, keep_userdata=False):
        for name in names:
            if (yield from self.is_managed(name)):
                yield from self._remove_managed(name, keep_userdata)
            else:
                yield from self._remove_native(name)

    def is_managed(self, name):
        """Whether the package manager knows a package. Any error means that it does not."""
        reply = yield from self._service.peers.ask('GetPackage', name)
        return not reply.is_error

    def ended(self, name, error):
        """The end of a removal, or one of its ends. An error without words counts as success."""
        if error:
            self._service.trace.debug(f'Failed to uninstall {quoted(name, error)}')
        else:
            self._service.trace.debug(f'Uninstalled {quoted(name)}')
        yield from self._service.peers.ask('updatingFinished', name)
        self._service.count.end()
        self._service.trace.signal('removalFinished', not error, error)

    def _remove_managed(self, name, keep_userdata):
        self._service.trace.debug(f'Uninstall {quoted(name)} via ZARN')
        launcher = self._service.device.launcher_of(name)
        yield from self._tell_home_screen(name, [launcher] if launcher else [])
        self._service.peers.send('Remove', name, {'KeepUserData': True} if keep_userdata else {},
                                 answered=lambda reply: self.ended(name, reply.error_text))
        self._service.count.begin()

    def _remove_native(self, name):
        self._service.trace.debug(f'Uninstall {quoted(name)} via RPM')
        yield from self._tell_home_screen(name, LAUNCHERS.get(name, []))
        NativeRemoval(self._service, name)
        self._service.count.begin()

    def _tell_home_screen(self, name, launchers):
        for launcher in launchers:
            yield from self._service.peers.ask('updatingStarted', name, '', '', launcher)
