# SPDX-FileCopyrightText: velmora-installationhandler contributors
# SPDX-License-Identifier: BSD-3-Clause
"""The programs, the buses and the processes that the figures are taken with."""

import os
import signal
import subprocess
import time
from pathlib import Path

import dbus

SOURCE = Path(__file__).resolve().parent.parent
BUILD = Path(os.environ['VELMORA_BENCH_BUILD'])
PACKAGES = BUILD / 'bench-packages'

PRODUCT = '/usr/bin/velmora-installationhandler'
PRODUCT_NAME = 'org.velmoraos.installationhandler'
FLOOR_NAME = 'org.velmoraos.installationfloor'
OBJECT = '/org/velmoraos/installationhandler'
DEADLINE = 60  # seconds, for everything that is waited for


def tool(name):
    """A program of the benchmark's own build."""
    return str(BUILD / 'bench' / name)


class Service:
    """A program that takes a name on a bus; `with` starts it, waits for the name, and ends it."""

    def __init__(self, name, *command, bus=None):
        self.name = name
        self.command = command
        self.bus = bus or dbus.SessionBus()
        self.process = None

    def __enter__(self):
        self.process = subprocess.Popen(self.command, stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL)
        self.wait_for(lambda: self.bus.name_has_owner(self.name), 'its name')
        return self

    def __exit__(self, *_):
        self.process.send_signal(signal.SIGTERM)
        self.process.wait(DEADLINE)
        self.wait_for(lambda: not self.bus.name_has_owner(self.name), 'the end of its name', alive=False)

    def wait_for(self, done, what, alive=True):
        end = time.monotonic() + DEADLINE
        while not done():
            if time.monotonic() > end or (alive and self.process.poll() is not None):
                raise RuntimeError(f'{self.command}: waited in vain for {what}')
            time.sleep(0.001)

    def await_event_loop(self):
        """Returns when the event loop has answered."""
        self.bus.call_blocking(self.name, OBJECT, 'org.freedesktop.DBus.Introspectable', 'Introspect', '', (),
                               timeout=DEADLINE)

    def switches(self):
        """How often all its threads have been put on and taken off a processor."""
        total = 0
        for status in Path(f'/proc/{self.process.pid}/task').glob('*/status'):
            total += sum(int(line.split()[1]) for line in status.read_text().splitlines() if 'ctxt_switches' in line)
        return total

    def settle(self):
        """Returns when nothing has happened in the process for half a second."""
        end = time.monotonic() + DEADLINE
        before = None
        while before != (before := self.switches()):
            if time.monotonic() > end:
                raise RuntimeError(f'{self.command}: never comes to rest')
            time.sleep(0.5)

    def memory(self, field):
        """One field of the process's memory, in KiB."""
        for line in Path(f'/proc/{self.process.pid}/smaps_rollup').read_text().splitlines():
            if line.startswith(field + ':'):
                return int(line.split()[1])
        raise KeyError(field)


def product():
    return Service(PRODUCT_NAME, PRODUCT)


def floor(name, *arguments):
    return Service(FLOOR_NAME, tool(name), *arguments)


def peers():
    """The platform's services, on both buses."""
    return Service('org.orrinmobile.rozzle', tool('bench-peers'))


def packagekit():
    """PackageKit's daemon, on the system bus."""
    return Service('org.freedesktop.PackageKit', tool('bench-packagekit'), bus=dbus.SystemBus())


def stopwatch(name, *arguments, **environment):
    """Runs a stopwatch; the samples of each of its programs, in the order of the command line."""
    done = subprocess.run([tool('stopwatch-' + name), *map(str, arguments)], env=os.environ | environment,
                          stdout=subprocess.PIPE, stderr=subprocess.PIPE, text=True)
    if done.returncode != 0:
        raise RuntimeError(f'stopwatch-{name}: {done.stderr[-2000:]}')
    samples = {}
    for line in done.stdout.splitlines():
        program, value = line.split()
        samples.setdefault(int(program), []).append(float(value))
    return [samples[program] for program in sorted(samples)]


def package(size):
    """An unsigned package with a payload of so many bytes (K, M); kept in the build folder."""
    path = PACKAGES / f'{size}.rpm'
    if not path.exists():
        build_packages('payload.spec', PACKAGES, f'{size}.rpm.new', f'payload {size}', '_binary_payload w0.gzdio')
        path.with_suffix('.rpm.new').rename(path)
    return path


def build_packages(spec, folder, file_name, *macros):
    """Builds the packages of one of our specs into the folder."""
    macros = [*macros, '_topdir /tmp/rpmbuild', f'_rpmdir {folder}', f'_rpmfilename {file_name}']
    subprocess.run(['rpmbuild', '-bb', '--quiet', *(word for macro in macros for word in ('--define', macro)),
                    SOURCE / 'packages' / spec], check=True, stdout=subprocess.DEVNULL)


def folder_of(count):
    """A fresh folder with so many names of one small package."""
    folder = Path(f'/tmp/packages-{count}')
    if not folder.exists():
        folder.mkdir()
        (folder / '0000.rpm').write_bytes(package('10K').read_bytes())
        for index in range(1, count):
            (folder / f'{index:04}.rpm').hardlink_to(folder / '0000.rpm')
    return folder
