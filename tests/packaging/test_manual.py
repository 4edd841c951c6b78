# SPDX-FileCopyrightText: velmora-installationhandler contributors
# SPDX-License-Identifier: BSD-3-Clause
"""The manual pages."""

import re
import shutil
from datetime import datetime
from pathlib import Path
from xml.etree import ElementTree

import documents
import pytest
from builds import configuring, run
from contents import INSTALLED
from documents import section_of_manual as section

MANUALS = Path('/usr/share/man/man1')
MANUAL = MANUALS / 'velmora-installationhandler.1'
COMPANION = 'velmora-installctl'
DESCRIPTION = Path('/usr/share/dbus-1/interfaces/org.velmoraos.installationhandler.xml')


@pytest.fixture(scope='module')
def text():
    """The manual of the service."""
    return documents.read_manual(MANUAL)


@pytest.fixture(scope='module')
def companion():
    """The manual of the companion program."""
    return documents.read_manual(MANUALS / f'{COMPANION}.1')


@pytest.fixture(scope='module')
def companion_help():
    """The help of the companion program."""
    return run([COMPANION, '--help'], LC_ALL='C', LANGUAGE='')


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


def is_of_companion(path):
    return COMPANION in Path(path).name


def unlisted(manual, files):
    """The files that a manual does not list, besides programs and manuals."""
    listed = re.findall(r'^ +(/\S+)$', section(manual, 'FILES'), re.MULTILINE)
    return [path for path in files if not path.startswith(('usr/bin/', 'usr/share/man/'))
            and not any(Path('/', path).match(pattern) for pattern in listed)]


def test_all_files_are_listed(text, companion):
    assert unlisted(text, [path for path in INSTALLED if not is_of_companion(path)]) == []
    assert unlisted(companion, [path for path in INSTALLED if is_of_companion(path)]) == []


def statuses_of_readme(title):
    """The rows of the table of exit statuses in a section of the README."""
    return re.findall(r'^\| (\d[\d, ]*) \| (.*) \|$', documents.section('README.md', title), re.MULTILINE)


def statuses(manual):
    return re.findall(r'^ +(\d+(?:, \d+)*)$', section(manual, 'EXIT STATUS'), re.MULTILINE)


def test_exit_statuses_are_those_of_the_readme(text):
    assert statuses(text) == [status for status, _ in statuses_of_readme('Command line of the service')]


def test_exit_statuses_of_companion_are_those_of_readme_and_help(companion, companion_help):
    described = re.findall(r'^  (\d+(?:, \d+)*) +(.*)$', companion_help, re.MULTILINE)
    assert described == statuses_of_readme('The way in')
    assert statuses(companion) == [status for status, _ in described]


def test_options_of_companion_are_those_of_its_help(companion, companion_help):
    def options(text):
        return sorted(set(re.findall(r'--[a-z-]+', text)))

    headings = '\n'.join(re.findall(r'^ {7}(?=\S)(-.*)$', section(companion, 'OPTIONS'), re.MULTILINE))
    assert options(headings) == options(companion_help)
    assert set(options(section(companion, 'SYNOPSIS'))) <= set(options(headings))
