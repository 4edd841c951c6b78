# SPDX-FileCopyrightText: velmora-installationhandler contributors
# SPDX-License-Identifier: BSD-3-Clause
"""The state of the device that a test may change, besides its buses."""

import shutil
import subprocess
from pathlib import Path

from standin.names import SESSION

POLICY_FILE = Path('/etc/velmora/access-policy.conf')
REFUSING_POLICY = '[Applications]\nInstallationEnabled=false\n'
EMULATOR_MARKER = Path('/etc/velmoraos-emulator')
HOME = Path('/home/velmora')
INIT = 'sandbox/init'


def is_device():
    """Whether this machine is a device in a sandbox: its first process says so."""
    return INIT in Path('/proc/1/cmdline').read_text(encoding='utf-8')


def make_own_folder(path):
    """Makes a folder of the session's user, with those above it, and returns its path."""
    subprocess.run([SESSION, 'mkdir', '--parents', path], check=True)
    return path


class KeptFolder:
    """A folder of the device that a test changes, and that gets its contents back."""

    def __init__(self, folder, copy):
        self._folder = folder
        self._copy = copy
        shutil.copytree(folder, copy)

    def restore(self):
        """Puts the contents back. The folder itself may be a mount point."""
        for entry in self._folder.iterdir():
            entry.unlink()
        shutil.copytree(self._copy, self._folder, dirs_exist_ok=True)


class DeviceState:
    """The device's policy, emulator marker, HOME of the session's user and installed packages."""

    home = HOME

    def __init__(self):
        self.reset()

    def reset(self):
        """As new."""
        if POLICY_FILE.parent.exists():
            shutil.rmtree(POLICY_FILE.parent)
        EMULATOR_MARKER.unlink(missing_ok=True)
        shutil.rmtree(HOME)
        HOME.mkdir(mode=0o700)
        shutil.chown(HOME, 'velmora', 'velmora')
        packages = self.packages()
        if packages:
            subprocess.run(['rpm', '-e', '--nodeps', '--noscripts', '--allmatches', *packages], check=True,
                           capture_output=True)

    def set_policy(self, text):
        """Writes the access policy; None removes it."""
        POLICY_FILE.parent.mkdir(parents=True, exist_ok=True)
        if text is None:
            POLICY_FILE.unlink(missing_ok=True)
        else:
            POLICY_FILE.write_text(text, encoding='utf-8')

    def forbid_installing(self):
        """The policy forbids it from now on."""
        self.set_policy(REFUSING_POLICY)

    def mark_as_emulator(self, marked=True):
        """The device is an emulator from now on, or none."""
        if marked:
            EMULATOR_MARKER.touch()
        else:
            EMULATOR_MARKER.unlink(missing_ok=True)

    def packages(self):
        """The names of the installed RPM packages."""
        query = subprocess.run(['rpm', '-qa', '--queryformat', '%{NAME}\n'], check=True, capture_output=True, text=True,
                               errors='surrogateescape')
        return query.stdout.split()
