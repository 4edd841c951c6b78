# SPDX-FileCopyrightText: velmora-installationhandler contributors
# SPDX-License-Identifier: BSD-3-Clause
"""The process of one stand-in."""

import dbus
import dbus.bus
import dbus.mainloop.glib
import dbusmock.mockobject
from gi.repository import GLib

from .control import Control
from .gate import Gate
from .mock import StandInObject
from .names import BUSES, control_name, template_file
from .parameters import Parameters
from .plans import Plans
from .recorder import Recorder


class NameTaken(Exception):
    """A bus name belongs to another program."""


class StandIn:
    """A stand-in on its bus, built from the dbusmock template of its name."""

    def __init__(self, name):
        self.name = name
        self._template = dbusmock.mockobject.load_module(str(template_file(name)))
        self._parameters = Parameters(self._template.PARAMETERS)
        self._recorder = Recorder()
        self._bus = None
        self.mock = None
        self.gate = None

    def run(self, settings):
        """Appears on the bus, says "ready" and serves until the bus ends."""
        dbus.mainloop.glib.DBusGMainLoop(set_as_default=True)
        for parameter, value in settings.items():
            self._parameters.set(parameter, value)
        self._bus = dbus.SystemBus() if BUSES[self.name] == 'system' else dbus.SessionBus()
        self._bus.set_exit_on_disconnect(False)
        loop = GLib.MainLoop()
        self._bus.call_on_disconnection(lambda _connection: loop.quit())
        self._export()
        self._request(control_name(self.name))
        self.take_name()
        print('ready', self.name, flush=True)
        loop.run()

    def configure(self, name, value):
        """Gives a parameter another value and tells the template."""
        changed = self._parameters.set(name, value)
        if changed is not None and hasattr(self._template, 'parameter_changed'):
            self._template.parameter_changed(self.mock, name, changed)

    def take_name(self):
        """Appears under the public name."""
        self._request(self._template.BUS_NAME)

    def give_up_name(self):
        """Gives up the public name, but not the control name."""
        self._bus.release_name(self._template.BUS_NAME)

    def emit(self, path, interface, member, destination, signature, values):
        """Sends a signal."""
        message = dbus.lowlevel.SignalMessage(path, interface, member)
        if destination:
            message.set_destination(destination)
        if signature:
            message.append(*values, signature=signature)
        self._bus.send_message(message)

    def _export(self):
        plans = Plans()
        self.mock = StandInObject(self._bus, self._template.MAIN_OBJ, self._template.MAIN_IFACE, {})
        self.mock.AddTemplate(str(template_file(self.name)), self._parameters.values)
        control = Control(self._bus, self, self._recorder, plans)
        self.gate = Gate(self._bus, self.mock, control, self._recorder, plans)

    def _request(self, name):
        owned = (dbus.bus.REQUEST_NAME_REPLY_PRIMARY_OWNER, dbus.bus.REQUEST_NAME_REPLY_ALREADY_OWNER)
        if self._bus.request_name(name, dbus.bus.NAME_FLAG_DO_NOT_QUEUE) not in owned:
            raise NameTaken(f'somebody else owns {name}')
