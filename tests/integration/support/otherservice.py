# SPDX-FileCopyrightText: velmora-installationhandler contributors
# SPDX-License-Identifier: BSD-3-Clause
"""Somebody else in the service's place."""

from gi.repository import Gio, GLib
from harness.client import INTERFACE, NAME, PATH

DESCRIPTION = f'''<node><interface name="{INTERFACE}">
    <method name="installFiles"><arg type="s" direction="in"/></method>
</interface></node>'''


class OtherService:
    """Owns the service's name on a connection, and treats each installFiles as told.

    `calls` are the signatures and arguments of the calls so far; `answer(invocation)` runs for each.
    """

    def __init__(self, connection, answer, description=DESCRIPTION):
        self.calls = []
        self._answer = answer
        interface = Gio.DBusNodeInfo.new_for_xml(description).interfaces[0]
        connection.register_object(PATH, interface, self._called)
        connection.call_sync('org.freedesktop.DBus', '/', 'org.freedesktop.DBus', 'RequestName',
                             GLib.Variant('(su)', (NAME, 4)), None, Gio.DBusCallFlags.NONE, 20000, None)

    def _called(self, _connection, _sender, _path, _interface, _method, arguments, invocation):
        self.calls.append((arguments.get_type_string(), arguments.unpack()))
        self._answer(invocation)
