# SPDX-FileCopyrightText: velmora-installationhandler contributors
# SPDX-License-Identifier: BSD-3-Clause
"""The manual page."""

import re
import shutil
import subprocess
from datetime import datetime
from pathlib import Path
from xml.etree import ElementTree

import pytest
from builds import configuring, run
from contents import INSTALLED

MANUAL = Path('/usr/share/man/man1/velmora-installationhandler.1')
DESCRIPTION = Path('/usr/share/dbus-1/interfaces/org.velmoraos.installationhandler.xml')


@pytest.fixture(scope='module')
def text():
    """The manual as it is read, in lines of any length, without bold and underlined letters."""
    done = subprocess.run(['groff', '-man', '-Tutf8', '-ww', '-P-c', '-rLL=10000n', MANUAL], capture_output=True, text=True,
                          check=True)
    assert done.stderr == ''
    return re.sub('.\b', '', done.stdout)


def section(text, title):
    return re.search(rf'^{title}\n(.*?)(?=^\S|\Z)', text, re.MULTILINE | re.DOTALL)[1]


def test_build_needs_no_scdoc(source, tmp_path):
    hidden = shutil.move('/usr/bin/scdoc', tmp_path / 'scdoc')
    try:
        assert '-- No manual: scdoc is missing\n' in run(configuring(source, tmp_path / 'build'))
    finally:
        shutil.move(hidden, '/usr/bin/scdoc')


@pytest.fixture
def date(source, tmp_path):
    """The date of a manual that is made where these variables are set."""
    def made(**variables):
        run(configuring(source, tmp_path), **variables)
        run(['cmake', '--build', tmp_path, '--target', 'manual'])
        return re.search(r'^\.TH "\S+" "1" "(\S+)"', (tmp_path / 'packaging' / MANUAL.name).read_text(encoding='utf-8'),
                         re.MULTILINE)[1]
    return made


def test_date_is_that_of_the_newest_entry_in_the_spec_file(date, source):
    spec = (source / 'packaging/velmora-installationhandler.spec').read_text(encoding='utf-8')
    newest = re.search(r'^%changelog\n\* \w+ (\w+ +\d+ \d+) ', spec, re.MULTILINE)[1]
    assert date(SOURCE_DATE_EPOCH='') == datetime.strptime(newest, '%b %d %Y').date().isoformat()


def test_builder_may_choose_the_date(date):
    assert date(SOURCE_DATE_EPOCH='86400') == '1970-01-02'


def test_all_members_of_the_bus_interface_are_described(text):
    described = section(text, 'BUS INTERFACE')
    longest = {}
    for member in ElementTree.parse(DESCRIPTION).getroot().find('interface'):
        if member.tag in ('method', 'signal'):
            arguments = [f'{argument.get("type")} {argument.get("name")}' for argument in member.findall('arg')]
            longest[member.get('name')] = max(arguments, longest.get(member.get('name'), []), key=len)
    assert sorted(re.findall(r'^ +(\w+)\((.*)\)$', described, re.MULTILINE)) == \
        sorted((name, ', '.join(arguments)) for name, arguments in longest.items())


def test_all_files_are_listed(text):
    listed = re.findall(r'^ +(/\S+)$', section(text, 'FILES'), re.MULTILINE)
    for path in set(INSTALLED) - {'usr/bin/velmora-installationhandler', str(MANUAL)[1:]}:
        assert any(Path('/', path).match(pattern) for pattern in listed), path


def test_exit_statuses_are_those_of_the_readme(text, source):
    readme = (source / 'README.md').read_text(encoding='utf-8')
    assert re.findall(r'^ +(\d+)$', section(text, 'EXIT STATUS'), re.MULTILINE) == \
        re.findall(r'^\| (\d+) \|', readme, re.MULTILINE)
