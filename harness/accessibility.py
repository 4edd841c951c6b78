# SPDX-FileCopyrightText: velmora-installationhandler contributors
# SPDX-License-Identifier: BSD-3-Clause
"""The accessibility bus of the session, and the objects that screen readers find there."""

from dataclasses import dataclass, field

from gi.repository import Gio, GLib

from .bus import SESSION_USER, Bus
from .processes import DEADLINE

LAUNCHER = '/usr/libexec/at-spi-bus-launcher'
STATUS = ('org.a11y.Bus', '/org/a11y/bus')
REGISTRY = 'org.a11y.atspi.Registry'
REGISTRY_PATH, ROOT_PATH = '/org/a11y/atspi/registry', '/org/a11y/atspi/accessible/root'
ACCESSIBLE, ACTION = 'org.a11y.atspi.Accessible', 'org.a11y.atspi.Action'
PROPERTIES = 'org.freedesktop.DBus.Properties'

# AT-SPI's numbers of states.
ACTIVE, ENABLED, FOCUSABLE, FOCUSED, SHOWING = 1, 8, 11, 12, 25


@dataclass(frozen=True)
class Accessible:
    """An object that a program shows to screen readers. Each question asks the program anew.

    `program` is the program's unique name on the accessibility bus.
    """

    program: str
    path: str
    bus: Bus = field(compare=False, repr=False)

    @property
    def role(self):
        """The role by its name in AT-SPI: "push button"."""
        return self._call(ACCESSIBLE, 'GetRoleName')

    @property
    def name(self):
        return self._call(PROPERTIES, 'Get', '(ss)', ACCESSIBLE, 'Name')

    @property
    def description(self):
        return self._call(PROPERTIES, 'Get', '(ss)', ACCESSIBLE, 'Description')

    def has_state(self, number):
        """Whether it is in a state."""
        low, high = self._call(ACCESSIBLE, 'GetState')
        return bool((low | high << 32) >> number & 1)

    def children(self):
        """The objects directly below this one, in reading order."""
        return [Accessible(*reference, self.bus) for reference in self._call(ACCESSIBLE, 'GetChildren')]

    def find(self, accepts):
        """The first object below this one that is accepted, in reading order; None if there is none."""
        for child in self.children():
            found = child if accepts(child) else child.find(accepts)
            if found:
                return found
        return None

    def button(self, name):
        """The button of a name below this object."""
        return self.find(lambda child: (child.role, child.name) == ('push button', name))

    def focused(self):
        """The object below this one that has the keyboard focus; None if none has it."""
        return self.find(lambda child: child.has_state(FOCUSED))

    def press(self):
        """Presses a button, as screen readers do on behalf of their users."""
        names = [action[0] for action in self._call(ACTION, 'GetActions')]
        assert self._call(ACTION, 'DoAction', '(i)', names.index('Press'))

    def outline(self, indent=''):
        """This object and those below it in reading order, one a line: 'role "name" (description) state'. Those that do
        not show are left out, as screen readers leave them out.
        """
        if not self.has_state(SHOWING):
            return []
        description = f' ({self.description})' if self.description else ''
        focused = ' focused' if self.has_state(FOCUSED) else ''
        disabled = '' if self.has_state(ENABLED) else ' disabled'
        return [f'{indent}{self.role} "{self.name}"{description}{focused}{disabled}',
                *(line for child in self.children() for line in child.outline(indent + '  '))]

    def _call(self, interface, method, signature='()', *arguments):
        return call(self.bus, self.program, self.path, interface, method, signature, *arguments)


class AccessibilityBus:
    """AT-SPI as a desktop has it, with a bus and a registry of its own, and a screen reader's part in it."""

    def __init__(self, processes, session_bus, environment):
        self._processes = processes
        self._session_bus = session_bus
        # The launcher keeps its settings to itself: without a settings service it would take back what it cannot store.
        processes.start_in_session('accessibility bus', [LAUNCHER, '--launch-immediately'],
                                   {**environment, 'GSETTINGS_BACKEND': 'memory'})
        session_bus.wait_owner(STATUS[0])
        self._bus = Bus(call(session_bus, *STATUS, STATUS[0], 'GetAddress'), SESSION_USER, processes)
        self._announced = []
        # Programs announce the events that somebody wants. Each one wakes those who wait.
        self._bus.connection.signal_subscribe(None, None, None, None, None, Gio.DBusSignalFlags.NONE, self._take)
        for event in ('object:', 'window:'):
            call(self._bus, REGISTRY, REGISTRY_PATH, REGISTRY, 'RegisterEvent', '(s)', event)

    def announce_screen_reader(self):
        """Tells all programs that there is a screen reader. They show their objects from then on."""
        call(self._session_bus, *STATUS, PROPERTIES, 'Set', '(ssv)', 'org.a11y.Status', 'ScreenReaderEnabled',
             GLib.Variant('b', True))

    def wait_program(self, pid):
        """Waits until a program takes part and knows the events that are wanted; the root of its objects."""
        desktop = Accessible(REGISTRY, ROOT_PATH, self._bus)

        def found():
            return next((child for child in desktop.children() if self._bus.process_of(child.program) == pid), None)
        root = self.wait_for(found, f'process {pid} on the accessibility bus')
        # The program has asked for the wanted events before it took part. It answers this after it has got them.
        assert root.role == 'application'
        return root

    def announced(self):
        """The names of the windows that have become active and of the objects that have got the focus, in order."""
        return [accessible.name for accessible in self._announced]

    def wait_for(self, find, what):
        """Waits until a function of objects returns something, and returns it."""
        found = []

        def look():
            try:
                found[:] = [find()]
            except GLib.Error:
                # An object has gone in between.
                found[:] = [None]
            return found[0]
        self._processes.wait_until(look, what)
        return found[0]

    def _take(self, _connection, program, path, _interface, event, arguments):
        """Takes an event."""
        if event == 'StateChanged' and arguments.unpack()[:2] in (('active', 1), ('focused', 1)):
            self._announced.append(Accessible(program, path, self._bus))


def call(bus, name, path, interface, method, signature='()', *arguments):
    """The only value, if any, that a method returns."""
    answer = bus.connection.call_sync(name, path, interface, method, GLib.Variant(signature, arguments), None,
                                      Gio.DBusCallFlags.NONE, DEADLINE * 1000, None).unpack()
    return answer[0] if answer else None
