# SPDX-FileCopyrightText: velmora-installationhandler contributors
# SPDX-License-Identifier: BSD-3-Clause
"""The bus activation file and the systemd unit."""

from configparser import ConfigParser
from pathlib import Path

NAME = 'org.velmoraos.installationhandler'
PROGRAM = '/usr/bin/velmora-installationhandler'
UNIT = Path('/usr/lib/systemd/user/velmora-installationhandler.service')
ACTIVATION = Path('/usr/share/dbus-1/services/org.velmoraos.installationhandler.service')


def keys(path):
    """A file in the syntax of both, as {group: {key: value}}."""
    parser = ConfigParser(interpolation=None, delimiters=['='], comment_prefixes=['#'])
    parser.optionxform = str
    parser.read_string(path.read_text(encoding='utf-8'))
    return {group: dict(parser[group]) for group in parser.sections()}


def test_bus_starts_the_unit():
    """Or the program, where there is no systemd."""
    assert keys(ACTIVATION) == {'D-BUS Service': {'Name': NAME, 'Exec': PROGRAM, 'SystemdService': UNIT.name}}


def test_unit_is_started_by_the_bus_alone():
    """There is no group [Install]: nobody can enable it."""
    unit = keys(UNIT)
    assert set(unit) == {'Unit', 'Service'}
    assert unit['Service'] == {'Type': 'dbus', 'BusName': NAME, 'ExecStart': PROGRAM}


def test_documentation_is_there():
    _, _, path = keys(UNIT)['Unit']['Documentation'].partition('file://')
    assert Path(path).is_file()


def test_program_can_be_run():
    assert Path(PROGRAM).stat().st_mode & 0o111 == 0o111
