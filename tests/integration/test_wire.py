# SPDX-FileCopyrightText: velmora-installationhandler contributors
# SPDX-License-Identifier: BSD-3-Clause
"""Methods and signals as they are on the wire."""

import pytest
from gi.repository import Gio, GLib
from harness.client import INTERFACE, NAME, PATH


@pytest.mark.parametrize('signature, arguments', [
    ('as', ([],)),
    ('asb', ([], True)),
    ('asbb', ([], True, True)),
])
def test_method_takes(service, client, signals, session_bus, session_monitor, signature, arguments):
    assert client.call('installFiles', f'({signature})', *arguments) == ()

    assert signals.wait('installFinished') == (True, '')
    service.barrier()
    name = session_bus.name_of_process(service.process.pid)
    (call,) = [message for message in session_monitor.messages(kind='method-call') if message.member == 'installFiles']
    assert call.signature == signature
    (reply,) = [message for message in session_monitor.messages(name) if message.reply_serial == call.serial]
    assert (reply.kind, reply.signature) == ('method-return', '')


def test_reply_may_be_left_out(service, client, signals, session_bus, session_monitor):
    message = Gio.DBusMessage.new_method_call(NAME, PATH, INTERFACE, 'installFiles')
    message.set_body(GLib.Variant('(as)', ([],)))
    message.set_flags(Gio.DBusMessageFlags.NO_REPLY_EXPECTED)
    client.connection.send_message(message, Gio.DBusSendMessageFlags.NONE)

    assert signals.wait('installFinished') == (True, '')
    service.barrier()
    sent = session_monitor.messages(session_bus.name_of_process(service.process.pid))
    assert message.get_serial() not in [reply.reply_serial for reply in sent]


@pytest.mark.parametrize('signature, flags, sdk_mode', [
    ('as', (), False),
    ('asb', (False,), False),
    ('asb', (True,), True),
    ('asbb', (False, True), False),
    ('asbb', (True, False), True),
])
def test_first_flag_means_sdk_mode(standins, service, client, signals, dialog, signature, flags, sdk_mode):
    """And is off where it is left out."""
    standins.start('developer-mode', silent_installation=True)
    standins.start('package-manager', installs='nothing')
    dialog.use('Confirming')

    client.call('installFiles', f'({signature})', ['/absent.rpm'], *flags)

    assert signals.wait('installFinished') == (True, '')
    assert ('needConfirm' in signals.names()) == (not sdk_mode)


def test_signals_are_for_everybody(standins, service, client, signals, dialog, session_bus, session_monitor):
    standins.start('package-manager', installs='nothing')
    dialog.use('Confirming')

    client.install(['/absent.rpm'])

    signals.wait('installFinished')
    owner = session_bus.name_of_process(service.process.pid)
    assert [(signal.destination, signal.path, signal.interface, signal.member, signal.signature, signal.arguments)
            for signal in session_monitor.messages(owner, 'signal')] == [
        (None, '/org/velmoraos/installationhandler', 'org.velmoraos.installationhandler', 'needConfirm', '', ()),
        (None, '/org/velmoraos/installationhandler', 'org.velmoraos.installationhandler', 'installFinished', 'bs',
         (True, ''))]
