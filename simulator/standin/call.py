# SPDX-FileCopyrightText: velmora-installationhandler contributors
# SPDX-License-Identifier: BSD-3-Clause
"""One method call that reached a stand-in."""

import time

import dbus
import dbus.lowlevel

from .values import in_variant, plain


class Call:
    """A received call: its sender, contents and time, and the ways to answer it.

    `stamp` is CLOCK_MONOTONIC in nanoseconds, comparable between all processes of the machine.
    """

    def __init__(self, connection, message):
        self.stamp = time.monotonic_ns()
        self.sender = message.get_sender()
        self.path = message.get_path()
        self.interface = message.get_interface() or ''
        self.method = message.get_member()
        self.signature = str(message.get_signature())
        self.arguments = message.get_args_list()
        self._connection = connection
        self._message = message

    def answer(self, signature, values):
        """Answers with values of this D-Bus signature, even if the method declares another one."""
        reply = dbus.lowlevel.MethodReturnMessage(self._message)
        if signature:
            reply.append(*values, signature=signature)
        self._send(reply)

    def refuse(self, error_name, text):
        """Answers with a D-Bus error."""
        self._send(dbus.lowlevel.ErrorMessage(self._message, error_name, text))

    def announce(self, member, signature, values):
        """Sends a signal from the object and the interface that was called."""
        message = dbus.lowlevel.SignalMessage(self.path, self.interface, member)
        if signature:
            message.append(*values, signature=signature)
        self._connection.send_message(message)

    def handle(self, mock, answered):
        """Lets the stand-in answer; `answered(reply)` runs when the answer has been sent."""
        mock.handle_message(_AnsweringConnection(self._connection, answered), self._message)

    def as_struct(self):
        """The form in which the control interface reports calls: (xsosssav)."""
        arguments = dbus.Array([in_variant(argument) for argument in self.arguments], signature='v')
        return dbus.Struct((dbus.Int64(self.stamp), self.sender, dbus.ObjectPath(self.path), self.interface,
                            self.method, self.signature, arguments), signature='xsosssav')

    def __str__(self):
        arguments = ', '.join(plain(argument) for argument in self.arguments)
        return f'{self.path} {self.interface}.{self.method}({self.signature}) [{arguments}] from {self.sender}'

    def _send(self, reply):
        if not self._message.get_no_reply():
            self._connection.send_message(reply)


class _AnsweringConnection:
    """A bus connection that calls a function when an answer is sent through it."""

    def __init__(self, connection, answered):
        self._connection = connection
        self._answered = answered

    def send_message(self, message):
        self._connection.send_message(message)
        self._answered(message)

    def __getattr__(self, name):
        return getattr(self._connection, name)
