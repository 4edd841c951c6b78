# SPDX-FileCopyrightText: velmora-installationhandler contributors
# SPDX-License-Identifier: BSD-3-Clause
"""The installed description of the bus interface, compared with the service and with the README."""

import re
import subprocess
from pathlib import Path
from xml.etree import ElementTree

import pytest
from gi.repository import Gio

INTERFACE = 'org.velmoraos.installationhandler'
DESCRIPTION = Path('/usr/share/dbus-1/interfaces/org.velmoraos.installationhandler.xml')
HELP = subprocess.run(['gdbus-codegen', '--help'], capture_output=True, text=True, check=True).stdout


def members(xml):
    """All methods, signals and properties: kind, name, and the names, types and directions of the arguments."""
    interface = ElementTree.fromstring(xml).find(f'interface[@name="{INTERFACE}"]')
    return [(member.tag, member.get('name'), arguments(member))
            for member in interface if member.tag in ('method', 'signal', 'property')]


def arguments(member):
    return [(argument.get('name'), argument.get('type'), argument.get('direction', 'out'))
            for argument in member.findall('arg')]


@pytest.fixture
def description():
    return DESCRIPTION.read_text(encoding='utf-8')


def test_description_matches_the_introspection(service, client, description):
    assert members(description) == members(client.introspect())


def test_description_names_the_object_path(description):
    assert ElementTree.fromstring(description).get('name') == '/org/velmoraos/installationhandler'


def test_generated_documentation_has_a_text_for_everything(tmp_path, description):
    subprocess.run(['gdbus-codegen', '--generate-docbook', 'page', '--output-directory', tmp_path, DESCRIPTION], timeout=60,
                   check=True)

    page = ElementTree.parse(tmp_path / f'page-{INTERFACE}.xml').getroot()
    described = page.findall('.//refsect2')
    assert sorted((member.get('role'), member.get('id').rpartition('.')[2],
                   [argument.text for argument in member.iterfind('.//parameter')]) for member in described) == \
        sorted((kind, name, [argument[0] for argument in taken]) for kind, name, taken in members(description))
    texts = [page.find('refnamediv/refpurpose'), page.find('refsect1[@role="desc"]/para'),
             *(member.find('para') for member in described), *page.findall('.//listitem/para')]
    assert all(text.text.strip() for text in texts)


@pytest.mark.skipif('--generate-md' not in HELP,
                    reason='this gdbus-codegen cannot write Markdown; Debian 13 has one that can')
def test_generated_markdown_has_a_text_for_everything(tmp_path, description):
    subprocess.run(['gdbus-codegen', '--generate-md', 'page', '--output-directory', tmp_path, DESCRIPTION], timeout=60,
                   check=True)

    page = (tmp_path / f'page-{INTERFACE}.md').read_text(encoding='utf-8')
    described = re.findall(rf'^### {INTERFACE}(?:\.|::)(\w+)\n\n```\n.*?^```\n\n(\w.*?)(?=^###|\Z)', page,
                           re.MULTILINE | re.DOTALL)
    # An argument of a method stands in a list, that of a signal above its text.
    assert sorted((name, re.findall(r'^(?:\* )?(\w+)(?::|\n ) \S', text, re.MULTILINE)) for name, text in described) == \
        sorted((name, [argument[0] for argument in taken]) for _, name, taken in members(description))


def test_gio_reads_the_description(description):
    interface = Gio.DBusNodeInfo.new_for_xml(description).lookup_interface(INTERFACE)
    assert sorted(method.name for method in interface.methods) == \
        ['installFiles'] * 3 + ['removePackageByDesktopFile'] + ['removePackages'] * 2


def test_readme_lists_the_same_members(source, description):
    readme = (source / 'README.md').read_text(encoding='utf-8')
    rows = re.findall(r'^\| (method|signal) `(\w+)` \|(.*?)\|', readme, re.MULTILINE)
    table = [(kind, name, [(word, signature) for signature, word in re.findall(r'`(\w+)` (\w+)', cell)])
             for kind, name, cell in rows]
    assert sorted(table) == sorted((kind, name, [argument[:2] for argument in taken])
                                   for kind, name, taken in members(description))
