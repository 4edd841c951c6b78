# SPDX-FileCopyrightText: velmora-installationhandler contributors
# SPDX-License-Identifier: BSD-3-Clause
"""The real PackageKit, on a device that has one."""

import os
import signal
import subprocess
from pathlib import Path

NAME = 'org.freedesktop.PackageKit'
LOCKS = Path('/etc/zypp/locks')


class PackageKit:
    """Debian's PackageKit with the RPM backend. The system bus starts it when it is called; it ends with the bus."""

    def __init__(self, system_bus):
        self._bus = system_bus
        LOCKS.unlink(missing_ok=True)

    @property
    def running(self):
        """Whether it has been started, and has not ended."""
        return self._bus.has_owner(NAME)

    def kill(self):
        """Ends the daemon abruptly. A run of rpm that it has started goes on."""
        os.kill(self._bus.ask('GetConnectionUnixProcessID', '(s)', NAME)[0], signal.SIGKILL)
        self._bus.wait_owner(NAME, owned=False)

    def lock(self, name):
        """Makes it refuse to remove a package. It learns of locks when it starts."""
        assert not self.running, 'too late for a lock'
        with LOCKS.open('a', encoding='utf-8') as locks:
            locks.write(f'type: package\nmatch_type: exact\ncase_sensitive: on\nsolvable_name: {name}\n\n')


def install(package):
    """Installs a package file with rpm, needing nothing."""
    subprocess.run(['rpm', '-U', '--nodeps', str(package)], check=True, capture_output=True)
