# SPDX-FileCopyrightText: velmora-installationhandler contributors
# SPDX-License-Identifier: BSD-3-Clause
"""The objects that a stand-in shows to the service."""

from dbusmock.mockobject import DBusMockObject

PROPERTIES_INTERFACE = 'org.freedesktop.DBus.Properties'
PROPERTY_READERS = {'Get': 'ss', 'GetAll': 's'}


class StandInObject(DBusMockObject):
    """A dbusmock object whose calls come through the gate.

    `objects` maps the path of each object that it answers for to that object's one interface.
    """

    def __init__(self, bus, path, interface, properties):
        super().__init__(bus, path, interface, properties)
        self.objects = {path: interface}

    def log(self, msg):
        """Does nothing, because the recorder writes the log."""

    def offers(self, call):
        """Whether the object path, interface, method and signature of a call exist."""
        if call.path not in self.objects:
            return False
        if call.interface == PROPERTIES_INTERFACE:
            return PROPERTY_READERS.get(call.method) == call.signature and bool(self.props.get(call.arguments[0]))
        interface = self.objects[call.path]
        methods = self.methods.get(interface, {})
        return call.interface in ('', interface) and call.method in methods \
            and call.signature == methods[call.method][0]

    def has_method(self, name):
        """Whether a method of this name exists."""
        return any(name in methods for methods in self.methods.values())

    def handle_message(self, connection, message):
        """Dispatches a message that the gate has let through."""
        self._message_cb(connection, message)
