# SPDX-FileCopyrightText: velmora-installationhandler contributors
# SPDX-License-Identifier: BSD-3-Clause
"""The files of the device that histories are about."""

import shutil
from pathlib import Path

from model import device
from packages import build_package
from support.devicestate import EMULATOR_MARKER, DeviceState, make_own_folder
from support.dialog import COMMANDS, INSTALLED_DIALOG, INSTALLED_FOLDER, VARIANTS
from support.packagekit import install


class DeviceFiles:
    """Packages, launchers, the policy and the mark of an emulator."""

    def __init__(self):
        """Makes the files that no history changes."""
        self._state = DeviceState()
        for path, header in device.HEADERS.items():
            built = build_package(device.FOLDER, header.name, header.version)
            assert str(built) == path
        Path(device.NO_PACKAGE).write_text('This is no package.', encoding='ascii')
        install(build_package(device.FOLDER, device.NATIVE))
        for launcher in (device.MANAGED_LAUNCHER, *device.LAUNCHERS[device.WRAPPED]):
            Path(launcher).touch()
        Path(device.ANDROID_LAUNCHER).write_text(f'[Desktop Entry]\nX-zindro-apkfile={device.APK}\n', encoding='ascii')
        make_own_folder(device.OWN_LAUNCHERS)
        shutil.copy(VARIANTS / 'Controlled.qml', INSTALLED_DIALOG)
        for part in ('TestDialog.qml', 'dialognumber.js'):
            shutil.copy(VARIANTS / part, INSTALLED_FOLDER)

    def reset(self):
        """Makes everything else as it is at the beginning of a history."""
        self.allow_installing(True)
        self.mark_as_emulator(False)
        Path(device.OWN_LAUNCHER).touch()
        shutil.rmtree(COMMANDS, ignore_errors=True)
        COMMANDS.mkdir()

    def allow_installing(self, value):
        """Lets the policy allow installations, or forbid them."""
        if value:
            self._state.set_policy(None)
        else:
            self._state.forbid_installing()

    def mark_as_emulator(self, value):
        """Makes the device an emulator, or an ordinary one."""
        if value:
            self._state.mark_as_emulator()
        else:
            EMULATOR_MARKER.unlink(missing_ok=True)
