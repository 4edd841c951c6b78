# SPDX-FileCopyrightText: velmora-installationhandler contributors
# SPDX-License-Identifier: BSD-3-Clause
"""The control interface, the same for all stand-ins."""

import dbus
import dbus.service

from .names import CONTROL_INTERFACE, CONTROL_PATH
from .parameters import ParameterError
from .plans import Death, FixedAnswer, Hanging, Refusal, Script
from .values import out_of_variant

ERROR = 'org.velmoraos.simulator.Error.'


def operation(in_signature='', out_signature=''):
    """Exports a method on the control interface."""
    return dbus.service.method(CONTROL_INTERFACE, in_signature=in_signature, out_signature=out_signature)


def members(values):
    """Unpacks values of any types; the control interface takes each of them in a variant."""
    return [out_of_variant(value) for value in values]


class Control(dbus.service.Object):
    """Lets tests and people control a stand-in and ask for the calls that it has received.

    An operation with an unknown method, parameter or choice gets an error and counts as unexpected. `times` is the
    number of calls for which an operation holds; 0 means until Restore.
    """

    # dbusmock reads this attribute of every object in the process.
    methods = {}

    def __init__(self, bus, standin, recorder, plans):
        super().__init__(bus, CONTROL_PATH)
        self._standin = standin
        self._recorder = recorder
        self._plans = plans
        recorder.call_seen = lambda call: self.CallSeen(call.as_struct())

    def understands(self, method, signature):
        """Whether such an operation exists."""
        function = getattr(type(self), method, None)
        return getattr(function, '_dbus_is_method', False) and function._dbus_in_signature == signature

    @operation('sv')
    def Configure(self, name, value):
        """Gives a parameter another value."""
        try:
            self._standin.configure(name, value)
        except ParameterError as error:
            self._fail('UnknownParameter', str(error))

    @operation('sssu')
    def Refuse(self, method, error_name, text, times):
        """Calls of the method are answered with this error."""
        self._plan(method, Refusal(error_name, text, times))

    @operation('ssavu')
    def Answer(self, method, signature, values, times):
        """Calls of the method are answered with these values, in this signature."""
        self._plan(method, FixedAnswer(signature, members(values), times))

    @operation('sa(ssav)u')
    def Script(self, method, signals, times):
        """Calls of the method get an answer without values, then these signals: member, signature, values."""
        self._plan(method, Script([(member, signature, members(values)) for member, signature, values in signals],
                                  times))

    @operation('su')
    def Hang(self, method, times):
        """Calls of the method are not answered until they are released."""
        self._plan(method, Hanging(times))

    @operation('ss')
    def ExitOn(self, method, when):
        """The next call of the method ends the process, "before" or "after" its answer."""
        if when not in ('before', 'after'):
            self._fail('InvalidValue', f'the process exits "before" or "after" the answer, not "{when}"')
        self._plan(method, Death(when == 'after'))

    @operation('su')
    def Delay(self, method, milliseconds):
        """Calls of the method are answered later."""
        self._check(method)
        self._plans.set_delay(method, milliseconds)

    @operation('s')
    def Restore(self, method):
        """Calls of the method are handled normally again."""
        self._check(method)
        self._plans.forget(method)

    @operation('', 'as')
    def Hanging(self):
        """The methods of the calls that hang, the oldest first."""
        return dbus.Array([call.method for call in self._standin.gate.hanging], signature='s')

    @operation('si')
    def Release(self, method, which):
        """Lets the stand-in answer a hanging call, number `which` from 0 of this method, -1 for all."""
        for call in self._released(method, which):
            self._standin.gate.handle(call)

    @operation('siss')
    def ReleaseRefusing(self, method, which, error_name, text):
        """Like Release, but answers with an error."""
        for call in self._released(method, which):
            self._standin.gate.refuse(call, error_name, text)

    @operation()
    def Vanish(self):
        """Gives up the public name; the stand-in stays reachable by its control name."""
        self._standin.give_up_name()

    @operation()
    def Return(self):
        """Takes the public name again."""
        self._standin.take_name()

    @operation('ossssav')
    def Emit(self, path, interface, member, destination, signature, values):
        """Sends a signal of any kind, to everybody when the destination is empty."""
        self._standin.emit(path, interface, member, destination, signature, members(values))

    @operation('', 'a(xsosssav)')
    def Calls(self):
        """The calls received: stamp (CLOCK_MONOTONIC, ns), sender, path, interface, method, signature, arguments."""
        return dbus.Array([call.as_struct() for call in self._recorder.calls], signature='(xsosssav)')

    @operation()
    def Clear(self):
        """Forgets the calls received."""
        self._recorder.clear()

    @operation('', 'as')
    def Unexpected(self):
        """Descriptions of the calls and operations that were mistakes of the service or of the test."""
        return dbus.Array(self._recorder.unexpected, signature='s')

    @dbus.service.signal(CONTROL_INTERFACE, signature='(xsosssav)')
    def CallSeen(self, call):
        """Sent when a call has arrived, before it is answered."""

    def _plan(self, method, plan):
        self._check(method)
        self._plans.add(method, plan)

    def _check(self, method):
        if method != 'Introspect' and not self._standin.mock.has_method(method):
            self._fail('UnknownMethod', f'no method "{method}"')

    def _released(self, method, which):
        calls = self._standin.gate.release(method, which)
        if not calls:
            self._fail('NothingHangs', f'no such call of "{method}" hangs')
        return calls

    def _fail(self, error, text):
        self._recorder.add_unexpected('control: ' + text)
        raise dbus.DBusException(text, name=ERROR + error)
