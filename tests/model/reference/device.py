# SPDX-FileCopyrightText: velmora-installationhandler contributors
# SPDX-License-Identifier: BSD-3-Clause
"""The device."""

from model.device import ABSENT_LAUNCHER, LAUNCHER_FILES, OWN_LAUNCHER, OWN_LAUNCHERS, SYSTEM_LAUNCHERS


class Device:
    """The part of the device's state that a history may change."""

    def __init__(self, system_name):
        self.system_name = system_name
        self.policy_allows = True
        self.is_emulator = False
        self.own_launchers = {OWN_LAUNCHER}

    def is_file(self, launcher):
        """Whether a launcher file is there."""
        return launcher != ABSENT_LAUNCHER and (launcher != OWN_LAUNCHER or launcher in self.own_launchers)

    def launcher_of(self, name):
        """The launcher file named after a package, the user's own first; None if there is none."""
        if f'{OWN_LAUNCHERS}/{name}.desktop' in self.own_launchers:
            return OWN_LAUNCHER
        system = f'{SYSTEM_LAUNCHERS}/{name}.desktop'
        return system if system in LAUNCHER_FILES and self.is_file(system) else None
