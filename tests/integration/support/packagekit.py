# SPDX-FileCopyrightText: velmora-installationhandler contributors
# SPDX-License-Identifier: BSD-3-Clause
"""The real PackageKit, on a device that has one, and scriptlets that hold its removals up."""

import os
import re
import select
import signal
import subprocess
from pathlib import Path

from harness.processes import DEADLINE

NAME = 'org.freedesktop.PackageKit'
READER, KEPT_READER = Path('/usr/bin/rpmdb2solv'), Path('/usr/bin/rpmdb2solv.kept')
ACTIVATION_FILE = Path('/run/dbus/system-services/org.freedesktop.PackageKit.service')
LOCKS = Path('/etc/zypp/locks')
# Newer versions of rpm give scriptlets a /tmp of their own.
PID, GO = Path('/run/scriptlet-pid'), Path('/run/scriptlet-go')


def wordings_of_conflict(needing, needed):
    """The texts of older and newer versions of libzypp for the removal of what a package needs that cannot go."""
    return [f'{needing}-1.0-1.noarch requires {needed}, but this requirement cannot be provided',
            f"the installed {needing}-1.0-1.noarch requires '{needed}', but this requirement cannot be provided"]


def without_indentation(text):
    """The report of a failed removal as older versions of libzypp give it. Newer ones indent what rpm has printed."""
    return re.sub('^ +(- )?', '', text, flags=re.MULTILINE)


class PackageKit:
    """Debian's PackageKit with the RPM backend. The system bus starts it when it is called; it ends with the bus."""

    def __init__(self, system_bus):
        self._bus = system_bus
        LOCKS.unlink(missing_ok=True)
        self._activation = None

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

    def run_in_next_request(self, commands):
        """Makes it run shell commands in the middle of its next request, where it reads the RPM database."""
        READER.rename(KEPT_READER)
        READER.write_text(f'#!/bin/sh\nmv {KEPT_READER} {READER}\n{commands}\nexec {READER} "$@"\n', encoding='utf-8')
        READER.chmod(0o755)

    def make_absent(self):
        """Nobody can start it any more."""
        assert not self.running
        self._activation = os.readlink(ACTIVATION_FILE)
        ACTIVATION_FILE.unlink()
        self._bus.ask('ReloadConfig', '()')

    def make_present(self):
        """The bus can start it, as at first."""
        ACTIVATION_FILE.symlink_to(self._activation)
        self._activation = None
        self._bus.ask('ReloadConfig', '()')

    def repair(self):
        """Nothing is in its way any more."""
        if self._activation:
            self.make_present()
        if KEPT_READER.exists():
            KEPT_READER.rename(READER)


class WaitingScriptlet:
    """A scriptlet that waits, and the run of rpm around it."""

    commands = f'echo $PPID > {PID}; read line < {GO}'

    def __init__(self, processes):
        self._processes = processes
        self._rpm = None
        for fifo in (PID, GO):
            fifo.unlink(missing_ok=True)
            os.mkfifo(fifo)

    def wait_running(self):
        """Waits until the scriptlet runs."""
        reader = self._processes.start('reader', ['cat', PID])
        self._processes.wait_end(reader)
        self._rpm = os.pidfd_open(int(reader.text))

    def finish(self):
        """Lets the scriptlet end, and waits until rpm has ended too."""
        if self._rpm is None:
            return
        with GO.open('r+b', buffering=0) as go:
            go.write(b'\n')
            ended, _, _ = select.select([self._rpm], [], [], DEADLINE)
        os.close(self._rpm)
        self._rpm = None
        assert ended, 'rpm has not ended in time'


def install(package, how='-U', *options):
    """Installs a package file with rpm, needing nothing; with '-i' beside another version."""
    subprocess.run(['rpm', how, '--nodeps', *options, str(package)], check=True, capture_output=True)


def install_handmade(package):
    """Notes a package without contents and digests in the RPM database."""
    install(package, '-i', '--justdb', '--nodigest', '--nosignature')
