# SPDX-FileCopyrightText: velmora-installationhandler contributors
# SPDX-License-Identifier: BSD-3-Clause
"""The object that a stand-in shows to the service."""

from dbusmock.mockobject import DBusMockObject


class StandInObject(DBusMockObject):
    """A dbusmock object whose calls come through the gate, which also keeps the log."""

    def log(self, msg):
        """Nothing: the recorder writes the log."""

    def offers(self, call):
        """Whether a call has an object path, interface, method and signature that exist."""
        methods = self.methods.get(call.interface or self.interface, {})
        return call.path == self.path and call.method in methods and call.signature == methods[call.method][0]

    def has_method(self, name):
        """Whether a method of this name exists."""
        return any(name in methods for methods in self.methods.values())

    def handle_message(self, connection, message):
        """Dispatches a message that the gate has let through."""
        self._message_cb(connection, message)
