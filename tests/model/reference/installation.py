# SPDX-FileCopyrightText: velmora-installationhandler contributors
# SPDX-License-Identifier: BSD-3-Clause
"""One request to install."""

from .packagefile import PackageFile
from .trace import quoted

DISALLOWED = "This device's policy does not allow installing apps ({})."
ABORTED = 'The user cancelled the installation'
NOT_IN_SDK_MODE = 'The installation is not running in sdk mode. '
NOT_ALLOWED = 'Silent software instalation is not allowed'


class Installation:
    """Takes its files one after the other."""

    def __init__(self, service, files, sdk_mode):
        self._service = service
        self._files = list(files)
        self._sdk_mode = sdk_mode
        self._file = PackageFile(service.trace)
        self._success = None
        self._errors = ''
        self._has_ended = False

    def start(self):
        device = self._service.device
        if not device.policy_allows:
            text = DISALLOWED.format(device.system_name)
            self._service.notification.show(text)
            yield from self._end(False, text)
            return
        self._success = True
        yield from self._take_next_file()

    def hand_over(self):
        """Gives the present file to the package manager."""
        self._service.peers.send('Install', self._file.path, {}, answered=self._handed_over)

    def cancelled(self):
        """The user does not want the present file."""
        self._success = False
        self._errors = ABORTED
        yield from self._take_next_file()

    def _take_next_file(self):
        if not self._files:
            yield from self._end(self._success, self._errors)
            return
        self._file.read(self._files.pop(0))
        if (yield from self._may_be_silent()) or self._service.device.is_emulator:
            self.hand_over()
        else:
            yield from self._service.dialog.show(self._file)

    def _may_be_silent(self):
        reply = yield from self._service.peers.ask('IsSilentInstallationEnabled')
        if reply.is_error:
            self._service.trace.warning(f'Could not fetch developer mode state:  {quoted(reply.error_text)}')
            return False
        if self._sdk_mode and reply.value:
            return True
        reason = ('' if self._sdk_mode else NOT_IN_SDK_MODE) + ('' if reply.value else NOT_ALLOWED)
        self._service.trace.warning(quoted(f'Unable install package without confirm: {reason}'))
        return False

    def _handed_over(self, reply):
        if self._service.loop.is_deleted(self):
            return
        if reply.is_error:
            code = reply.error_name.rpartition('.')[2]
            self._errors += ('\n' if self._errors else '') + f'zarn_installation_error_desc_{code} (code: {code})'
            self._success = False
        yield from self._take_next_file()

    def _end(self, success, text):
        if self._has_ended:
            return
        self._has_ended = True
        self._service.trace.signal('installFinished', success, text)
        yield from self._service.queue.ended(self)
