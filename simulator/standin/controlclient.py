# SPDX-FileCopyrightText: velmora-installationhandler contributors
# SPDX-License-Identifier: BSD-3-Clause
"""A client of the control interface."""

from gi.repository import Gio, GLib

from .names import CONTROL_INTERFACE, CONTROL_PATH, control_name
from .remoteerror import RemoteError
from .seencall import SeenCall

TIMEOUT_MS = 20000


class ControlClient:
    """Controls one stand-in. An operation that the stand-in refuses raises RemoteError."""

    def __init__(self, connection, standin):
        """`connection` is a Gio.DBusConnection to the bus of the stand-in."""
        self._connection = connection
        self._name = control_name(standin)

    def configure(self, parameter, value):
        """Gives a parameter another value, a boolean or a string."""
        self._call('Configure', '(sv)', parameter, GLib.Variant('b' if isinstance(value, bool) else 's', value))

    def refuse(self, method, error_name, text='', times=0):
        """Calls of the method are answered with an error, `times` times, or until restored."""
        self._call('Refuse', '(sssu)', method, error_name, text, times)

    def answer(self, method, values, times=0):
        """Calls of the method are answered with the members of a tuple variant, in their types."""
        self._call('Answer', '(ssavu)', method, values.get_type_string()[1:-1], _members(values), times)

    def script(self, method, signals, times=0):
        """Calls of the method get an answer without values, and then the object called sends these signals.

        A signal is its name and a tuple variant: ('Finished', GLib.Variant('(uu)', (1, 0))).
        """
        self._call('Script', '(sa(ssav)u)', method,
                   [(name, values.get_type_string()[1:-1], _members(values)) for name, values in signals], times)

    def delay(self, method, milliseconds):
        """Calls of the method are answered later."""
        self._call('Delay', '(su)', method, milliseconds)

    def hang(self, method, times=0):
        """Calls of the method are not answered until they are released."""
        self._call('Hang', '(su)', method, times)

    def hanging(self):
        """The methods of the calls that hang."""
        return self._call('Hanging', '()')[0]

    def release(self, method, which=-1):
        """Lets a hanging call be answered, number `which` from 0, or all."""
        self._call('Release', '(si)', method, which)

    def release_refusing(self, method, error_name, text='', which=-1):
        """Answers a hanging call with an error."""
        self._call('ReleaseRefusing', '(siss)', method, which, error_name, text)

    def restore(self, method):
        """Calls of the method are handled normally again."""
        self._call('Restore', '(s)', method)

    def exit_on(self, method, when):
        """The next call of the method ends the process, "before" or "after" its answer."""
        self._call('ExitOn', '(ss)', method, when)

    def vanish(self):
        """The public name leaves the bus."""
        self._call('Vanish', '()')

    def come_back(self):
        """The public name is on the bus again."""
        self._call('Return', '()')

    def emit(self, path, interface, member, values, destination=''):
        """Sends a signal with the members of a tuple variant."""
        self._call('Emit', '(ossssav)', path, interface, member, destination, values.get_type_string()[1:-1],
                   _members(values))

    def calls(self, method=None):
        """The calls received so far as SeenCall, of one method or of all."""
        reply = self._reply('Calls', None).get_child_value(0)
        calls = [SeenCall.from_variant(reply.get_child_value(index)) for index in range(reply.n_children())]
        return [call for call in calls if method in (None, call.method)]

    def clear(self):
        """Forgets the calls received."""
        self._call('Clear', '()')

    def unexpected(self):
        """Descriptions of the calls and operations that were mistakes."""
        return self._call('Unexpected', '()')[0]

    def watch(self, seen):
        """`seen(SeenCall)` runs in the main loop for each call as it arrives."""
        def received(_connection, _sender, _path, _interface, _signal, arguments):
            seen(SeenCall.from_variant(arguments.get_child_value(0)))
        return self._connection.signal_subscribe(self._name, CONTROL_INTERFACE, 'CallSeen', CONTROL_PATH, None,
                                                 Gio.DBusSignalFlags.NONE, received)

    def _call(self, operation, signature, *arguments):
        return self._reply(operation, GLib.Variant(signature, arguments)).unpack()

    def _reply(self, operation, arguments):
        try:
            return self._connection.call_sync(self._name, CONTROL_PATH, CONTROL_INTERFACE, operation, arguments, None,
                                              Gio.DBusCallFlags.NO_AUTO_START, TIMEOUT_MS, None)
        except GLib.Error as error:
            raise RemoteError(error) from None


def _members(values):
    return [values.get_child_value(index) for index in range(values.n_children())]
