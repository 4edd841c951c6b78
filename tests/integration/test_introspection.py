# SPDX-FileCopyrightText: velmora-installationhandler contributors
# SPDX-License-Identifier: BSD-3-Clause
"""The bus interface, compared with a literal description."""

from pathlib import Path
from xml.etree import ElementTree

INTERFACE = 'org.velmoraos.installationhandler'
EXPECTED = Path(__file__).with_name('introspection.xml')
INSTALLED = Path('/usr/share/dbus-1/interfaces/org.velmoraos.installationhandler.xml')


def members(xml):
    """Each method and signal of the interface: kind, name and its arguments' names, types and directions."""
    interface = ElementTree.fromstring(xml).find(f'.//interface[@name="{INTERFACE}"]')
    found = []
    for member in interface:
        if member.tag in ('method', 'signal', 'property'):
            arguments = [(argument.get('name'), argument.get('type'), argument.get('direction', 'out'))
                         for argument in member.iter('arg')]
            found.append((member.tag, member.get('name'), arguments))
    return sorted(found)


def test_nothing_else_is_on_the_bus(service, client):
    node = ElementTree.fromstring(client.introspect())

    assert sorted(interface.get('name') for interface in node.findall('interface')) == [
        'org.freedesktop.DBus.Introspectable', 'org.freedesktop.DBus.Peer', 'org.freedesktop.DBus.Properties',
        INTERFACE]
    assert node.findall('node') == []
    assert client.call('GetAll', '(s)', INTERFACE, interface='org.freedesktop.DBus.Properties') == ({},)


def test_running_service_offers_what_is_written_down(service, client):
    assert members(client.introspect()) == members(EXPECTED.read_text(encoding='utf-8'))


def test_installed_description_is_what_is_written_down():
    assert members(INSTALLED.read_text(encoding='utf-8')) == members(EXPECTED.read_text(encoding='utf-8'))
