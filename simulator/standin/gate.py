# SPDX-FileCopyrightText: velmora-installationhandler contributors
# SPDX-License-Identifier: BSD-3-Clause
"""The filter for all messages that a stand-in receives."""

import os

import dbus
from dbus.lowlevel import HANDLER_RESULT_HANDLED, HANDLER_RESULT_NOT_YET_HANDLED, MethodCallMessage
from gi.repository import GLib

from .call import Call
from .names import CONTROL_PATH
from .values import plain

UNKNOWN_METHOD = 'org.freedesktop.DBus.Error.UnknownMethod'
HOUSEKEEPING = ('org.freedesktop.DBus.Introspectable', 'org.freedesktop.DBus.Peer')


class Gate:
    """Receives every call before the objects do, records it and carries out the plan for it.

    Introspection and pings are not recorded, but plans for them are carried out.
    """

    def __init__(self, bus, mock, control, recorder, plans):
        self._bus = bus
        self._mock = mock
        self._control = control
        self._recorder = recorder
        self._plans = plans
        self.hanging = []
        bus.add_message_filter(self._filter)

    def handle(self, call, then=lambda: None):
        """Lets the stand-in give its own answer; `then` runs after that."""
        def answered(reply):
            error = reply.get_error_name() if isinstance(reply, dbus.lowlevel.ErrorMessage) else None
            self._recorder.log(f'{call.method} ' + (f'refused: {error}' if error else 'answered'))
            then()
        call.handle(self._mock, answered)

    def refuse(self, call, error_name, text):
        """Answers with an error."""
        call.refuse(error_name, text)
        self._recorder.log(f'{call.method} refused: {error_name}')

    def answer(self, call, signature, values):
        """Answers with given values."""
        call.answer(signature, values)
        self._recorder.log(f'{call.method} answered as told, with "{signature}"')

    def announce(self, call, member, signature, values):
        """Sends a signal of the object that was called."""
        call.announce(member, signature, values)
        self._recorder.log(f'{call.path} {member}' + plain(tuple(values)))

    def keep(self, call):
        """Leaves the call unanswered until it is released."""
        self.hanging.append(call)
        self._recorder.log(f'{call.method} hangs')

    def release(self, method, which):
        """Removes and returns hanging calls of a method: the one with the number `which`, or all for -1."""
        waiting = [call for call in self.hanging if call.method == method]
        chosen = waiting if which == -1 else waiting[which:which + 1]
        self.hanging = [call for call in self.hanging if call not in chosen]
        return chosen

    def die(self):
        """Ends the process at once, after the messages that it has sent before have left."""
        self._recorder.log('dies')
        self._bus.flush()
        os._exit(1)

    def _filter(self, connection, message):
        if not isinstance(message, MethodCallMessage):
            return HANDLER_RESULT_NOT_YET_HANDLED
        if message.get_path() == CONTROL_PATH:
            return self._filter_control(connection, message)
        housekeeping = message.get_interface() in HOUSEKEEPING
        if housekeeping and not self._plans.concern(message.get_member()):
            return HANDLER_RESULT_NOT_YET_HANDLED
        self._take(Call(connection, message), housekeeping)
        return HANDLER_RESULT_HANDLED

    def _filter_control(self, connection, message):
        if self._control.understands(message.get_member(), message.get_signature()):
            return HANDLER_RESULT_NOT_YET_HANDLED
        self._refuse_unexpected(Call(connection, message))
        return HANDLER_RESULT_HANDLED

    def _take(self, call, housekeeping):
        if not housekeeping:
            self._recorder.add(call)
            if not self._mock.offers(call):
                self._refuse_unexpected(call)
                return
        plan = self._plans.take(call.method)
        delay = self._plans.delay(call.method)
        if delay:
            GLib.timeout_add(delay, lambda: plan.carry_out(call, self))
        else:
            plan.carry_out(call, self)

    def _refuse_unexpected(self, call):
        self._recorder.add_unexpected(str(call))
        call.refuse(UNKNOWN_METHOD,
                    f'The stand-in has no {call.interface}.{call.method}({call.signature}) at {call.path}')
