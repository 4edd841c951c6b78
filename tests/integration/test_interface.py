# SPDX-FileCopyrightText: velmora-installationhandler contributors
# SPDX-License-Identifier: BSD-3-Clause
"""The bus interface: its description, its messages on the wire, and calls that no client makes."""

from pathlib import Path
from xml.etree import ElementTree

import pytest
from gi.repository import GLib, Gio
from harness.client import INTERFACE, NAME, PATH
from standin.remoteerror import RemoteError

ERROR = 'org.freedesktop.DBus.Error.'
PROPERTIES = 'org.freedesktop.DBus.Properties'
INTROSPECTABLE = 'org.freedesktop.DBus.Introspectable'
VALUE = GLib.Variant('s', 'value')
INSTALLED = Path('/usr/share/dbus-1/interfaces/org.velmoraos.installationhandler.xml')


FLAGS = [('sdkMode', 'b', 'in'), ('keepUserdata', 'b', 'in')]
FILES, NAMES = [('fileUrls', 'as', 'in')], [('packageNames', 'as', 'in')]
OUTCOME = [('success', 'b', 'out'), ('errorString', 's', 'out')]
MEMBERS = [
    ('method', 'installFiles', FILES), ('method', 'installFiles', FILES + FLAGS[:1]),
    ('method', 'installFiles', FILES + FLAGS), ('method', 'removePackageByDesktopFile', [('desktopFile', 's', 'in')]),
    ('method', 'removePackages', NAMES), ('method', 'removePackages', NAMES + FLAGS[1:]),
    ('signal', 'installFinished', OUTCOME), ('signal', 'needConfirm', []), ('signal', 'removalFinished', OUTCOME),
]


def members(xml):
    """Each member of the interface: kind, name and its arguments' names, types and directions."""
    interface = ElementTree.fromstring(xml).find(f'.//interface[@name="{INTERFACE}"]')
    return sorted((member.tag, member.get('name'), [(argument.get('name'), argument.get('type'),
                                                     argument.get('direction', 'out'))
                                                    for argument in member.iter('arg')])
                  for member in interface if member.tag in ('method', 'signal', 'property'))


def test_nothing_else_is_on_the_bus(service, client):
    node = ElementTree.fromstring(client.introspect())

    assert sorted(interface.get('name') for interface in node.findall('interface')) == [
        'org.freedesktop.DBus.Introspectable', 'org.freedesktop.DBus.Peer', 'org.freedesktop.DBus.Properties',
        INTERFACE]
    assert node.findall('node') == []
    assert client.call('GetAll', '(s)', INTERFACE, interface='org.freedesktop.DBus.Properties') == ({},)


def test_descriptions_of_the_interface(service, client):
    assert members(client.introspect()) == MEMBERS
    assert members(INSTALLED.read_text(encoding='utf-8')) == MEMBERS


@pytest.mark.parametrize('signature, arguments', [('as', ([],)), ('asb', ([], True)), ('asbb', ([], True, True))])
def test_method_takes(service, client, signals, session_monitor, session_messages, signature, arguments):
    assert client.call('installFiles', f'({signature})', *arguments) == ()

    assert signals.wait('installFinished') == (True, '')
    (call,) = [message for message in session_monitor.messages(kind='method-call') if message.member == 'installFiles']
    assert call.signature == signature
    (reply,) = [message for message in session_messages() if message.reply_serial == call.serial]
    assert (reply.kind, reply.signature) == ('method-return', '')


def test_reply_may_be_left_out(service, client, signals, session_messages):
    message = Gio.DBusMessage.new_method_call(NAME, PATH, INTERFACE, 'installFiles')
    message.set_body(GLib.Variant('(as)', ([],)))
    message.set_flags(Gio.DBusMessageFlags.NO_REPLY_EXPECTED)
    client.connection.send_message(message, Gio.DBusSendMessageFlags.NONE)

    assert signals.wait('installFinished') == (True, '')
    assert message.get_serial() not in [reply.reply_serial for reply in session_messages()]


@pytest.mark.parametrize('signature, flags, sdk_mode', [
    ('as', (), False), ('asb', (False,), False), ('asb', (True,), True), ('asbb', (False, True), False),
    ('asbb', (True, False), True),
])
def test_first_flag_means_sdk_mode(standins, service, client, signals, dialog, signature, flags, sdk_mode):
    """Without the flag sdk mode is off."""
    standins.start('developer-mode', silent_installation=True)
    standins.start('package-manager', installs='nothing')
    dialog.use('Confirming')

    client.call('installFiles', f'({signature})', ['/absent.rpm'], *flags)

    assert signals.wait('installFinished') == (True, '')
    assert ('needConfirm' in signals.names()) == (not sdk_mode)


def test_signals_are_for_everybody(standins, service, install_and_wait, dialog, session_messages):
    """They do not say which request they end: Known behaviour 5."""
    standins.start('package-manager', installs='nothing')
    dialog.use('Confirming')

    install_and_wait(['/absent.rpm'])
    assert [(signal.destination, signal.path, signal.interface, signal.member, signal.signature, signal.arguments)
            for signal in session_messages('signal')] == [
        (None, '/org/velmoraos/installationhandler', 'org.velmoraos.installationhandler', 'needConfirm', '', ()),
        (None, '/org/velmoraos/installationhandler', 'org.velmoraos.installationhandler', 'installFinished', 'bs',
         (True, ''))]


def nested(depth):
    """A value within so many variants."""
    value = VALUE
    for _ in range(depth):
        value = GLib.Variant('v', value)
    return value


# Methods that the interface lacks, or has with other arguments.
UNKNOWN = [
    ('installFiles', '()', ()), ('installFiles', '(i)', (1,)), ('installFiles', '(ai)', ([1, 2],)),
    ('installFiles', '(ao)', (['/tmp'],)), ('installFiles', '(aas)', ([['/tmp/a.rpm']],)),
    ('installFiles', '(ay)', (b'/tmp/a.rpm',)), ('installFiles', '((asbb))', (([], False, False),)),
    ('installFiles', '(a{sv})', ({'files': VALUE},)), ('installFiles', '(v)', (nested(60),)),
    ('installFiles', '(asuu)', ([], 1, 1)), ('installFiles', '(bbas)', (True, True, [])), ('installFiles', '(h)', (0,)),
    ('installFiles', '(at)', ([0] * 200_000,)), ('installFiles', '(asbbs)', (['a'] * 200_000, True, True, '')),
    ('removePackages', '()', ()), ('removePackages', '(s)', ('a',)), ('removePackages', '(ass)', (['a'], 'true')),
    ('removePackages', '(av)', ([],)), ('removePackages', '(asbb)', ([], True, True)),
    ('installFinished', '(bs)', (True, '')), ('transactionFinished', '(bs)', (True, '')), ('deleteLater', '()', ()),
]

# Method, signature and arguments, where it is sent other than usual, and the error.
CALLS = {
    'unknown method': ('noSuchMethod', '()', (), {}, 'UnknownMethod'),
    'unknown interface': ('installFiles', '(as)', ([],), {'interface': 'org.example.Other'}, 'UnknownInterface'),
    'interface of a prefix': ('installFiles', '(as)', ([],), {'interface': 'org.velmoraos'}, 'UnknownInterface'),
    'no object of that path': ('installFiles', '(as)', ([],), {'path': '/org/velmoraos/other'}, 'UnknownObject'),
    'path above': ('installFiles', '(as)', ([],), {'path': '/org/velmoraos'}, 'UnknownInterface'),
    'root path': ('installFiles', '(as)', ([],), {'path': '/'}, 'UnknownInterface'),
    'path below': ('installFiles', '(as)', ([],), {'path': '/org/velmoraos/installationhandler/1'}, 'UnknownObject'),
    'property read': ('Get', '(ss)', (INTERFACE, 'name'), {'interface': PROPERTIES}, 'UnknownProperty'),
    'property written': ('Set', '(ssv)', (INTERFACE, 'name', VALUE), {'interface': PROPERTIES}, 'UnknownProperty'),
    'property of another interface': ('Get', '(ss)', ('org.example.Other', 'a'), {'interface': PROPERTIES},
                                      'UnknownInterface'),
    'property call of wrong types': ('Set', '(ss)', (INTERFACE, 'name'), {'interface': PROPERTIES}, 'UnknownMethod'),
    'all properties of wrong types': ('GetAll', '(i)', (1,), {'interface': PROPERTIES}, 'UnknownMethod'),
    'introspection of wrong types': ('Introspect', '(s)', ('a',), {'interface': INTROSPECTABLE}, 'UnknownMethod'),
    **{method + signature: (method, signature, values, {}, 'UnknownMethod') for method, signature, values in UNKNOWN},
}


@pytest.mark.parametrize('kind', CALLS)
def test_refused(service, client, announced, signals, kind):
    method, signature, arguments, target, error = CALLS[kind]

    with pytest.raises(RemoteError) as refusal:
        client.call(method, signature, *arguments, **target)

    assert refusal.value.name == ERROR + error
    assert announced() == []
    assert service.log() == []
    client.call('installFiles', '(as)', [])
    assert signals.wait('installFinished') == (True, '')


def test_name_that_the_toolkit_gives_objects_means_nothing(service, client, signals):
    """The name can be set from outside, as on every object of Qt."""
    client.call('Set', '(ssv)', INTERFACE, 'objectName', VALUE, interface=PROPERTIES)

    assert client.call('GetAll', '(s)', INTERFACE, interface=PROPERTIES) == ({},)
    client.call('installFiles', '(as)', [])
    assert signals.wait('installFinished') == (True, '')
