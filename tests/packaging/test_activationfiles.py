# SPDX-FileCopyrightText: velmora-installationhandler contributors
# SPDX-License-Identifier: BSD-3-Clause
"""The bus activation file and the systemd unit."""

import subprocess
from configparser import ConfigParser
from pathlib import Path

NAME = 'org.velmoraos.installationhandler'
PROGRAM = '/usr/bin/velmora-installationhandler'
UNIT = Path('/usr/lib/systemd/user/velmora-installationhandler.service')
ACTIVATION = Path('/usr/share/dbus-1/services/org.velmoraos.installationhandler.service')

# Further ones would break the service; comments in the unit say which.
RESTRICTIONS = {
    'NoNewPrivileges': 'yes', 'RestrictSUIDSGID': 'yes', 'RestrictRealtime': 'yes', 'RestrictNamespaces': 'yes',
    'LockPersonality': 'yes', 'SystemCallArchitectures': 'native', 'SystemCallFilter': '@system-service',
    'UMask': '0077', 'RestrictAddressFamilies': 'AF_UNIX',
}


def keys(path):
    """The contents of a file as {group: {key: value}}. Both files have the same syntax."""
    parser = ConfigParser(interpolation=None, delimiters=['='], comment_prefixes=['#'])
    parser.optionxform = str
    parser.read_string(path.read_text(encoding='utf-8'))
    return {group: dict(parser[group]) for group in parser.sections()}


def test_bus_starts_the_unit():
    """The bus starts the program itself if there is no systemd."""
    assert keys(ACTIVATION) == {'D-BUS Service': {'Name': NAME, 'Exec': PROGRAM, 'SystemdService': UNIT.name}}


def test_unit_is_started_by_the_bus_alone():
    """There is no group [Install], so that nobody can enable the unit."""
    unit = keys(UNIT)
    assert set(unit) == {'Unit', 'Service'}
    assert unit['Unit']['After'] == 'graphical-session.target'
    assert unit['Service'] == {'Type': 'dbus', 'BusName': NAME, 'ExecStart': PROGRAM, **RESTRICTIONS}


def test_unit_is_restricted_as_far_as_it_works():
    """systemd's own figure for the exposure is 9.8 without the restrictions."""
    done = subprocess.run(['systemd-analyze', 'security', '--user', '--offline=true', '--threshold=63', '--no-pager', UNIT],
                          capture_output=True, text=True, check=False)
    assert done.returncode == 0, done.stdout + done.stderr


def test_documentation_exists():
    manual, description = keys(UNIT)['Unit']['Documentation'].split()
    assert manual == 'man:velmora-installationhandler(1)'
    assert Path('/usr/share/man/man1/velmora-installationhandler.1').is_file()
    assert Path(description.removeprefix('file://')).is_file()


def test_program_is_executable():
    assert Path(PROGRAM).stat().st_mode & 0o111 == 0o111


def test_systemd_accepts_the_unit():
    # A unit that the bus starts needs the units of the bus, which not every machine has.
    units = Path('/etc/systemd/user')
    units.mkdir(parents=True, exist_ok=True)
    (units / 'dbus.socket').write_text('[Socket]\nListenStream=%t/bus\n', encoding='utf-8')
    (units / 'dbus.service').write_text('[Service]\nExecStart=/usr/bin/dbus-daemon --session\n', encoding='utf-8')
    done = subprocess.run(['systemd-analyze', 'verify', '--user', UNIT], capture_output=True, text=True, check=False)
    assert (done.returncode, done.stdout, done.stderr) == (0, '', '')
