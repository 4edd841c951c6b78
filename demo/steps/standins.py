# SPDX-FileCopyrightText: velmora-installationhandler contributors
# SPDX-License-Identifier: BSD-3-Clause
"""The stand-ins of the platform services."""

from pathlib import Path

from steps.program import Companion

SIMULATOR = Path(__file__).parents[2] / 'simulator'


def start_standins():
    """Returns when all of them can be called."""
    Companion('/var/log/simulator.log', str(SIMULATOR / 'start-all')).await_line('ready all'.__eq__)
