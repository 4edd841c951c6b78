# SPDX-FileCopyrightText: velmora-installationhandler contributors
# SPDX-License-Identifier: BSD-3-Clause
"""The device that the demo runs on: its buses, its display, the stand-ins and the installation handler."""

import os
import signal
from contextlib import contextmanager
from threading import Thread

from gi.repository import GLib
from harness.bus import Bus
from harness.busmonitor import BusMonitor
from harness.client import INTERFACE, NAME, PATH, Client
from harness.processes import Processes, WaitFailed
from harness.screen import PHONE, Screen
from harness.signalrecorder import SignalRecorder
from harness.standins import SIMULATOR
from harness.weston import Panel, WestonScreen
from standin.names import SESSION

# A phone for a Wayland compositor, which scales by whole numbers. As a window it has to fit on the caller's display.
PANEL = Panel(360, 640, scale=2)
WINDOW = Panel(360, 640)

# This starts a program like the home screen, which may remove by launcher.
HOME_SCREEN = [SESSION, '--group', 'privileged']


class Device:
    """The demo's device: buses, display, stand-ins and client. The display is the caller's, or Xvfb if there is none. With
    `wayland` it is that of a Wayland compositor in a window there.

    The demo itself runs as root. It starts the stand-ins and watches what happens.
    """

    def __init__(self, wayland):
        self.wayland = wayland
        self.processes = Processes()
        self._system_bus = Bus.device_system(self.processes)
        self._session_bus = Bus.device_session(self.processes)
        self.client = Client(self._session_bus.connection, self.processes)
        self.signals = SignalRecorder(self._session_bus.connection, self.processes)
        self.watched = False
        self.screen = None

    def open_display(self):
        """Opens the display, which services that the bus starts then use."""
        if 'DISPLAY' in os.environ:
            try:
                self.screen = Screen(self.processes, os.environ['DISPLAY'])
                self.watched = True
            except WaitFailed:
                pass
        if not self.watched:
            self.screen = Screen.in_memory(self.processes, PANEL.options() if self.wayland else PHONE)
        if self.wayland:
            self.screen = WestonScreen(self.processes, self.screen.display, WINDOW if self.watched else PANEL)
        self.prepare_services()

    def prepare_services(self, **variables):
        """Puts the display and other variables into the environment of the services that the bus starts later."""
        self._session_bus.ask('UpdateActivationEnvironment', '(a{ss})', {**self.environment(), **variables})

    def environment(self):
        """The environment variables of a program that shows windows on the display, without graphics hardware."""
        names = ('XAUTHORITY', 'QT_X11_NO_MITSHM')
        return {**{name: os.environ[name] for name in names if name in os.environ}, **self.screen.environment(),
                'QT_QUICK_BACKEND': 'software'}

    def start_standins(self):
        """Starts the stand-ins of the platform services, and waits until all of them can be called."""
        process = self.processes.start('stand-ins', [SIMULATOR / 'start-all'], log='/var/log/simulator.log')
        self.processes.wait_line(process, 'ready all'.__eq__, 'start of the stand-ins')

    def call(self, method, argument):
        """Calls the installation handler as the home screen does, and waits for the reply. The argument is GVariant text."""
        self.processes.run('gdbus', [*HOME_SCREEN, 'gdbus', 'call', '--session', '--dest', NAME, '--object-path', PATH,
                                     '--method', f'{INTERFACE}.{method}', argument])

    def start_installctl(self, *arguments):
        """Starts the companion program as the home screen does, and does not wait for anything."""
        program = self.processes.start('velmora-installctl', [*HOME_SCREEN, 'velmora-installctl', *arguments])
        program.end_awaited = True
        return program

    def service_process(self):
        """The process id of the installation handler, or None when it does not run."""
        return self._session_bus.process_of(NAME)

    def end_service(self):
        """Ends the installation handler, and with it its dialog."""
        os.kill(self.service_process(), signal.SIGKILL)
        self._session_bus.wait_owner(NAME, owned=False)

    @contextmanager
    def monitored_buses(self):
        """The messages of both buses during the block, as a list that grows."""
        messages = []
        monitors = [BusMonitor(bus, self.processes, messages) for bus in (self._session_bus, self._system_bus)]
        yield messages
        # A message that came while Python ends would make GLib complain.
        for monitor in monitors:
            monitor.close()

    def read_output(self):
        """Reads the output of all programs in a thread, while the demo itself waits for a shell."""
        Thread(target=GLib.MainLoop().run, daemon=True).start()
