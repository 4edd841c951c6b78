# SPDX-FileCopyrightText: velmora-installationhandler contributors
# SPDX-License-Identifier: BSD-3-Clause
"""Installations and removals to the end: the RPM database, the package manager, and the real PackageKit."""

from pathlib import Path

import pytest
from support.packagekit import install

LAUNCHER = Path('/usr/share/applications/native.desktop')
ABSENT = 'The name org.freedesktop.PackageKit was not provided by any .service files'
LOCKED = 'Unable to remove locked: Locked package.'
CRASHED = 'The PackageKit daemon has crashed'


@pytest.fixture
def installed(packagekit, package):
    """Installs packages that only RPM knows."""
    def install_packages(*names, **contents):
        for name in names:
            install(package(name, **contents))
    return install_packages


def removed(*names):
    """The lines of removals that all succeed."""
    count = len(names)
    return [line for number, name in enumerate(names, 1)
            for line in (f'{name}: removing {number} of {count}' if count > 1 else f'{name}: removing', f'{name}: removed')]


def test_by_name_and_by_launcher(installed, packagekit, service, ctl, device):
    """A package that is not installed counts as removed (Known behaviour 18)."""
    installed('native', 'one', 'other', 'locked')
    packagekit.lock('locked')

    assert ctl('remove', 'one', 'absent', 'other') == (0, removed('one', 'absent', 'other'), [])
    assert ctl('remove', '--launcher', LAUNCHER, group='privileged') == (0, removed(str(LAUNCHER)), [])
    assert not LAUNCHER.exists()
    assert ctl('remove', 'locked') == (1, ['locked: removing'], [f'locked: failed: {LOCKED}'])
    assert sorted(device.packages()) == ['keeper', 'locked']


def test_failures(installed, packagekit, service, ctl, device, scriptlet):
    """The service's text is told on one line."""
    installed('failing', scripts={'preun': 'echo first; echo second >&2; exit 3'})
    run = ctl('remove', '--quiet', 'failing')
    assert (run.status, run.out, len(run.err)) == (1, [], 1)
    assert run.err[0].startswith('failing: failed: ') and 'first' in run.err[0] and 'second' in run.err[0]

    installed('native', scripts={'preun': scriptlet.commands})
    installed('next')
    run = ctl.start('remove', '--quiet', 'native', 'next')
    scriptlet.wait_running()
    packagekit.kill()
    # The bus starts another one for the next name.
    scriptlet.finish()
    assert run.wait() == (1, [], [f'native: failed: {CRASHED}'])
    assert sorted(device.packages()) == ['failing', 'keeper']


def test_packagekit_that_is_absent(installed, packagekit, service, ctl, device):
    """The service reports each removal twice, as failed and as successful (Known behaviour 25). None is taken for the
    other."""
    installed('native', 'next')
    packagekit.make_absent()
    run = ctl('remove', '--quiet', 'native', 'next', 'last')
    assert run == (1, [], [f'{name}: failed: {ABSENT}' for name in ('native', 'next', 'last')])
    packagekit.make_present()
    assert ctl('remove', 'native', 'next') == (0, removed('native', 'next'), [])
    assert device.packages() == ['keeper']


def test_installed_and_removed(platform, installed, service, ctl, device, package, tmp_path):
    """The package manager installs for good, and removes what it has installed. A damaged file is its decision."""
    device.mark_as_emulator()
    damaged = tmp_path / 'damaged.rpm'
    damaged.write_text('no package', encoding='ascii')

    run = ctl('install', package('managed'), damaged, package('native'))
    assert run.status == 1
    assert [line.partition(': ')[2] for line in run.out if line.endswith('installed')] == ['installed'] * 2
    assert len(run.err) == 1 and run.err[0].startswith(f'{damaged}: failed: ')
    assert sorted(device.packages()) == ['keeper', 'managed', 'native']

    assert ctl('remove', 'managed', 'native') == (0, removed('managed', 'native'), [])
    assert device.packages() == ['keeper']
