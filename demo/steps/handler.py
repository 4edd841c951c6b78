# SPDX-FileCopyrightText: velmora-installationhandler contributors
# SPDX-License-Identifier: BSD-3-Clause
"""The installation handler, as other programs see it: through the session bus."""

from gi.repository import Gio, GLib

from steps.program import DEADLINE
from steps.progress import Failure

NAME = INTERFACE = 'org.velmoraos.installationhandler'
PATH = '/org/velmoraos/installationhandler'


class Handler:
    """Calls the service and awaits its signals; it is started by nothing but the bus, when it is called."""

    def __init__(self):
        self._bus = Gio.bus_get_sync(Gio.BusType.SESSION)
        self._signals = {}
        self._bus.signal_subscribe(NAME, INTERFACE, None, PATH, None, Gio.DBusSignalFlags.NONE, self._receive)

    def give_environment(self, variables):
        """Tells the bus what the services that it starts find in their environment."""
        self._ask_bus('UpdateActivationEnvironment', GLib.Variant('(a{ss})', (variables,)), '()')

    def process(self):
        """The process id of the service, or 0 when it does not run."""
        if not self._ask_bus('NameHasOwner', GLib.Variant('(s)', (NAME,)), '(b)'):
            return 0
        return self._ask_bus('GetConnectionUnixProcessID', GLib.Variant('(s)', (NAME,)), '(u)')

    def install(self, path):
        """Asks for the installation of a package file. The outcome comes as the signal "installFinished"."""
        self._call(NAME, PATH, INTERFACE, 'installFiles', GLib.Variant('(as)', ([str(path)],)), '()')

    def remove(self, launcher):
        """Asks for the removal of the application that a launcher file starts."""
        self._call(NAME, PATH, INTERFACE, 'removePackageByDesktopFile', GLib.Variant('(s)', (str(launcher),)), '()')

    def await_answer(self):
        """Returns when the service has done all that it had begun without leaving it to others."""
        self._call(NAME, PATH, 'org.freedesktop.DBus.Introspectable', 'Introspect', None, '(s)')

    def wait_for(self, signal, seconds=DEADLINE):
        """The values of a signal, once it has come; None when it does not come in time."""
        expired = []
        timer = GLib.timeout_add(int(seconds * 1000), lambda: expired.append(True) or GLib.SOURCE_CONTINUE)
        while signal not in self._signals and not expired:
            GLib.MainContext.default().iteration(True)
        GLib.source_remove(timer)
        return self._signals.pop(signal, None)

    def _receive(self, _bus, _sender, _path, _interface, signal, values):
        self._signals[signal] = values.unpack()

    def _ask_bus(self, method, arguments, answer):
        values = self._call('org.freedesktop.DBus', '/org/freedesktop/DBus', 'org.freedesktop.DBus', method, arguments,
                            answer)
        return values[0] if values else None

    def _call(self, service, path, interface, method, arguments, answer):
        try:
            return self._bus.call_sync(service, path, interface, method, arguments, GLib.VariantType(answer),
                                       Gio.DBusCallFlags.NONE, DEADLINE * 1000, None).unpack()
        except GLib.Error as error:
            raise Failure(f'{service} refused {method}: {error.message}') from None
