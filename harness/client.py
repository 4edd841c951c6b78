# SPDX-FileCopyrightText: velmora-installationhandler contributors
# SPDX-License-Identifier: BSD-3-Clause
"""A client of the service on the session bus."""

from gi.repository import Gio, GLib
from standin.remoteerror import RemoteError

from .processes import DEADLINE

NAME = 'org.velmoraos.installationhandler'
PATH = '/org/velmoraos/installationhandler'
INTERFACE = 'org.velmoraos.installationhandler'

# For clients that are programs of Qt: QtDBus's thread may still hold a message when a client ends. Only whole stacks tell
# such a leak from the client's own.
WHOLE_STACKS = {'ASAN_OPTIONS': 'fast_unwind_on_malloc=0'}


class PendingCall:
    """A call whose reply may not be there yet."""

    def __init__(self, method, processes):
        self._method = method
        self._processes = processes
        self._reply = None
        self._error = None

    @property
    def answered(self):
        """Whether the reply, or an error, has come."""
        return self._reply is not None or self._error is not None

    def wait(self, seconds=DEADLINE):
        """The values of the reply; an error reply raises RemoteError."""
        self._processes.wait_until(lambda: self.answered, f'the reply of {self._method}', seconds)
        if self._error:
            raise self._error
        return self._reply

    def finish(self, connection, result):
        """Takes the reply from the connection."""
        try:
            self._reply = connection.call_finish(result).unpack()
        except GLib.Error as error:
            self._error = RemoteError(error)


class Client:
    """Calls methods of the service, or of another object, with just the given wire signature."""

    def __init__(self, connection, processes):
        self.connection = connection
        self._processes = processes

    def start(self, method, signature='()', *arguments, name=NAME, path=PATH, interface=INTERFACE):
        """Sends a call. `signature` is that of all arguments, in parentheses: '(asbb)'."""
        pending = PendingCall(method, self._processes)
        self.connection.call(name, path, interface, method, GLib.Variant(signature, arguments), None,
                             Gio.DBusCallFlags.NONE, GLib.MAXINT32, None, pending.finish)
        return pending

    def call(self, method, signature='()', *arguments, **target):
        """Sends a call and waits for its reply."""
        return self.start(method, signature, *arguments, **target).wait()

    def install(self, files, sdk_mode=False, keep_userdata=False):
        """Asks for an installation and waits until the request has been answered, not until it has ended."""
        return self.call('installFiles', '(asbb)', [str(file) for file in files], sdk_mode, keep_userdata)

    def remove(self, names, keep_userdata=False):
        """Asks for removals by name and waits until the request has been answered, not until they have ended."""
        return self.call('removePackages', '(asb)', names, keep_userdata)

    def remove_launcher(self, path):
        """Asks for the removal of a launcher's application and waits until the request has been answered."""
        return self.call('removePackageByDesktopFile', '(s)', str(path))

    def introspect(self):
        """The service's own description; also a round trip through its main loop."""
        return self.call('Introspect', interface='org.freedesktop.DBus.Introspectable')[0]
