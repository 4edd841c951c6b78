# SPDX-FileCopyrightText: velmora-installationhandler contributors
# SPDX-License-Identifier: BSD-3-Clause
"""The surroundings of the program, which serve one history after the other."""

from harness.bus import PrivateBus
from harness.client import Client
from harness.processes import Processes

from .clock import Clock
from .devicefiles import DeviceFiles


class Surroundings:
    """The device, the buses and a caller on the session bus."""

    def __init__(self, clock_library):
        self.device = DeviceFiles()
        self.clock = Clock(clock_library)
        self.processes = Processes()
        self.buses = {'system': PrivateBus.system(self.processes), 'session': PrivateBus.session(self.processes, {})}
        self.client = Client(self.buses['session'].connection, self.processes)

    def close(self):
        """Ends the buses."""
        self.processes.stop()
