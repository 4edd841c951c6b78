# SPDX-FileCopyrightText: velmora-installationhandler contributors
# SPDX-License-Identifier: BSD-3-Clause
"""Calls that no client of the service makes: each is refused, and the service goes on."""

import pytest
from gi.repository import GLib
from harness.client import INTERFACE
from standin.remoteerror import RemoteError

ERROR = 'org.freedesktop.DBus.Error.'
PROPERTIES = 'org.freedesktop.DBus.Properties'
INTROSPECTABLE = 'org.freedesktop.DBus.Introspectable'
VALUE = GLib.Variant('s', 'value')


def nested(depth):
    """A value within so many variants."""
    value = VALUE
    for _ in range(depth):
        value = GLib.Variant('v', value)
    return value


# Method, signature and arguments, where it is sent other than usual, and the error.
CALLS = {
    'unknown method': ('noSuchMethod', '()', (), {}, 'UnknownMethod'),
    'unknown interface': ('installFiles', '(as)', ([],), {'interface': 'org.example.Other'}, 'UnknownInterface'),
    'interface of a prefix': ('installFiles', '(as)', ([],), {'interface': 'org.velmoraos'}, 'UnknownInterface'),
    'no object of that path': ('installFiles', '(as)', ([],), {'path': '/org/velmoraos/other'}, 'UnknownObject'),
    'path above': ('installFiles', '(as)', ([],), {'path': '/org/velmoraos'}, 'UnknownInterface'),
    'root path': ('installFiles', '(as)', ([],), {'path': '/'}, 'UnknownInterface'),
    'path below': ('installFiles', '(as)', ([],), {'path': '/org/velmoraos/installationhandler/1'}, 'UnknownObject'),
    'nothing where a list belongs': ('installFiles', '()', (), {}, 'UnknownMethod'),
    'number': ('installFiles', '(i)', (1,), {}, 'UnknownMethod'),
    'list of numbers': ('installFiles', '(ai)', ([1, 2],), {}, 'UnknownMethod'),
    'list of paths': ('installFiles', '(ao)', (['/tmp'],), {}, 'UnknownMethod'),
    'list of lists': ('installFiles', '(aas)', ([['/tmp/a.rpm']],), {}, 'UnknownMethod'),
    'bytes': ('installFiles', '(ay)', (b'/tmp/a.rpm',), {}, 'UnknownMethod'),
    'structure': ('installFiles', '((asbb))', (([], False, False),), {}, 'UnknownMethod'),
    'dictionary': ('installFiles', '(a{sv})', ({'files': VALUE},), {}, 'UnknownMethod'),
    'deep variants': ('installFiles', '(v)', (nested(60),), {}, 'UnknownMethod'),
    'numbers for flags': ('installFiles', '(asuu)', ([], 1, 1), {}, 'UnknownMethod'),
    'flags first': ('installFiles', '(bbas)', (True, True, []), {}, 'UnknownMethod'),
    'file handle': ('installFiles', '(h)', (0,), {}, 'UnknownMethod'),
    'huge list of numbers': ('installFiles', '(at)', ([0] * 1_000_000,), {}, 'UnknownMethod'),
    'huge list of texts with one thing too much': ('installFiles', '(asbbs)', (['a'] * 200_000, True, True, ''), {},
                                                   'UnknownMethod'),
    'property read': ('Get', '(ss)', (INTERFACE, 'name'), {'interface': PROPERTIES}, 'UnknownProperty'),
    'property written': ('Set', '(ssv)', (INTERFACE, 'name', VALUE), {'interface': PROPERTIES}, 'UnknownProperty'),
    'property of another interface': ('Get', '(ss)', ('org.example.Other', 'a'), {'interface': PROPERTIES},
                                      'UnknownInterface'),
    'property call of wrong types': ('Set', '(ss)', (INTERFACE, 'name'), {'interface': PROPERTIES}, 'UnknownMethod'),
    'all properties of wrong types': ('GetAll', '(i)', (1,), {'interface': PROPERTIES}, 'UnknownMethod'),
    'introspection of wrong types': ('Introspect', '(s)', ('a',), {'interface': INTROSPECTABLE}, 'UnknownMethod'),
    'signal called': ('installFinished', '(bs)', (True, ''), {}, 'UnknownMethod'),
    'slot called': ('transactionFinished', '(bs)', (True, ''), {}, 'UnknownMethod'),
    'slot of the toolkit': ('deleteLater', '()', (), {}, 'UnknownMethod'),
}


@pytest.mark.parametrize('kind', CALLS)
def test_refused(service, client, signals, kind):
    method, signature, arguments, target, error = CALLS[kind]

    with pytest.raises(RemoteError) as refusal:
        client.call(method, signature, *arguments, **target)

    assert refusal.value.name == ERROR + error
    service.barrier()
    assert signals.all == []
    assert service.log() == []
    client.call('installFiles', '(as)', [])
    assert signals.wait('installFinished') == (True, '')


def test_name_that_the_toolkit_gives_objects_means_nothing(service, client, signals):
    """It can be set from outside, as it can be on every object of the toolkit."""
    client.call('Set', '(ssv)', INTERFACE, 'objectName', VALUE, interface=PROPERTIES)

    assert client.call('GetAll', '(s)', INTERFACE, interface=PROPERTIES) == ({},)
    client.call('installFiles', '(as)', [])
    assert signals.wait('installFinished') == (True, '')
