# SPDX-FileCopyrightText: velmora-installationhandler contributors
# SPDX-License-Identifier: BSD-3-Clause
"""A program in the service's place that may do anything with a call, in steps."""

from gi.repository import Gio, GLib
from harness.client import INTERFACE, PATH
from support.otherservice import OtherService

DESCRIPTION = f'''<node><interface name="{INTERFACE}">
    <method name="installFiles">
        <arg type="as" direction="in"/><arg type="b" direction="in"/><arg type="b" direction="in"/>
    </method>
    <method name="removePackages"><arg type="as" direction="in"/><arg type="b" direction="in"/></method>
    <method name="removePackageByDesktopFile"><arg type="s" direction="in"/></method>
</interface></node>'''


class OddService:
    """Owns the service's name on a connection of its own.

    `plans` are the steps for each subject: the name of a package or file, or '' for a request of nothing. A subject without
    a plan is not answered. `requests` are the subjects that have been requested.
    """

    def __init__(self, bus, processes):
        self.plans = {}
        self.requests = []
        self._bus = bus
        self._processes = processes
        self.start()

    def start(self):
        """Is on the bus anew."""
        self.connection = self._bus.connect()
        OtherService(self.connection, self._treat, DESCRIPTION)

    def wait_requests(self, count):
        """Waits until there have been so many requests."""
        self._processes.wait_until(lambda: len(self.requests) >= count, f'{count} requests')

    def _treat(self, invocation):
        subjects = invocation.get_parameters().unpack()[0]
        subject = ''.join(subjects).rpartition('/')[2]
        self.requests.append(subject)
        for step in self.plans.get(subject, ()):
            step(self.connection, invocation)


def answer(_connection, invocation):
    """The answer without an error."""
    invocation.return_value(None)


def answer_with(signature, *values):
    """An answer with values that it does not have."""
    def step(connection, invocation):
        reply = invocation.get_message().new_method_reply()
        reply.set_body(GLib.Variant(signature, values))
        connection.send_message(reply, Gio.DBusSendMessageFlags.NONE)
    return step


def refuse(name, text):
    """An error in the place of the answer."""
    return lambda _connection, invocation: invocation.return_dbus_error(name, text)


def send(name, signature='()', *values, path=PATH, interface=INTERFACE):
    """A signal."""
    return lambda connection, _invocation: connection.emit_signal(
        None, path, interface, name, GLib.Variant(signature, values))


def installed(success, text):
    """The report of an installation."""
    return send('installFinished', '(bs)', success, text)


def removed(success, text):
    """The report of a removal."""
    return send('removalFinished', '(bs)', success, text)


def die(connection, _invocation):
    """The end of the service."""
    connection.flush_sync()
    connection.close_sync()


ask = send('needConfirm')
