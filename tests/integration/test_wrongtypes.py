# SPDX-FileCopyrightText: velmora-installationhandler contributors
# SPDX-License-Identifier: BSD-3-Clause
"""Peers that answer, or announce, something else than they should."""

import pytest
from gi.repository import GLib

NOT_ALLOWED = '"Unable install package without confirm: Silent software instalation is not allowed"'
STATUS = ('/com/nokia/mce/signal', 'com.nokia.mce.signal', 'display_status_ind')

# Values in the text form of GVariant: those that count as true, and those that do not.
TRUE = [
    '(true,)', '(true, false)', "('true',)", "('off',)", '(byte 0x01,)', '(-1,)', '(uint64 18446744073709551615,)',
    '(0.5,)', "(b'true',)", "('off', 'off')", f"('{'x' * 1_000_000}',)",
]
FALSE = [
    '()', '(false,)', '(false, true)', "('false',)", "('FALSE',)", "('0',)", "('',)", '(int16 0,)', '(0.0,)',
    "(objectpath '/',)", "(signature 'b',)", '(<true>,)', "(<'off'>,)", '((true,),)', '([true],)', "(['true'],)",
    "({'enabled': true},)", "({'enabled': <true>},)",
]
VALUES = [*TRUE, *FALSE]

# As the state of the display, all but one.
SENSELESS = [text for text in VALUES if text != "('off',)"] + ["('OFF',)", "('off ',)"]


def variant(text):
    return GLib.Variant.parse(None, text)


def test_developer_mode_answers(standins, manager, service, client, signals, dialog):
    """An answer that Qt converts to true allows installing; anything else does not."""
    developer_mode = standins.start('developer-mode')
    standins.start('package-kit')
    dialog.use('Confirming')
    asked = {}
    for number, text in enumerate(VALUES, 1):
        developer_mode.answer('IsSilentInstallationEnabled', variant(text))
        before = len(signals.all)

        client.install(['/absent.rpm'], sdk_mode=True)

        assert signals.wait('installFinished', number) == (True, '')
        names = [signal.name for signal in signals.all[before:] if signal.name != 'removalFinished']
        asked[text] = names == ['needConfirm', 'installFinished']
    assert {text for text in VALUES if asked[text]} == set(FALSE)
    assert service.warnings() == [NOT_ALLOWED] * len(FALSE)


@pytest.mark.parametrize('peer, method', [
    ('mce', 'notification_begin_req'),
    ('mce', 'notification_end_req'),
    ('package-manager', 'Install'),
])
def test_answers_that_nobody_reads(standins, manager, service, client, signals, dialog, peer, method):
    standin = manager if peer == 'package-manager' else standins.start(peer)
    dialog.use('Confirming')
    for number, text in enumerate(VALUES, 1):
        standin.answer(method, variant(text))

        client.install(['/absent.rpm'])

        assert signals.wait('installFinished', number) == (True, '')
    assert signals.names() == ['needConfirm', 'installFinished'] * len(VALUES)
    assert len(standin.calls(method)) == len(VALUES)


@pytest.fixture
def mce(standins, program, client, signals, dialog):
    """The stand-in, while a dialog is on screen that goes when the display does."""
    mce = standins.start('mce')
    dialog.use('Controlled')
    program.start()
    client.install(['/absent.rpm'])
    dialog.wait_shown()
    return mce


@pytest.fixture
def check_dialog_stays(program, mce, signals):
    """Looks whether the dialog has stayed until now, and whether it would go."""
    def check():
        program.barrier()
        assert signals.names() == ['needConfirm']
        mce.restore('get_display_status')
        mce.configure('display', 'off')
        assert signals.wait('installFinished')[0] is False
    return check


def test_mce_answers(mce, program, check_dialog_stays):
    """It is asked whenever it appears."""
    for number, text in enumerate(SENSELESS, 2):
        mce.answer('get_display_status', variant(text))
        mce.vanish()
        mce.come_back()
        mce.wait_call('get_display_status', number)
        program.barrier()

    check_dialog_stays()


def test_mce_announces(mce, check_dialog_stays):
    for text in SENSELESS:
        mce.emit(*STATUS, variant(text))

    check_dialog_stays()


def test_something_else_is_announced(standins, mce, system_bus, check_dialog_stays):
    """Only the announcement of the display's state counts, and only by MCE."""
    path, interface, member = STATUS
    off = variant("('off',)")
    mce.emit('/', interface, member, off)
    mce.emit(path, 'com.nokia.mce.request', member, off)
    mce.emit(path, interface, 'tklock_mode_ind', off)
    standins.start('developer-mode').emit(*STATUS, off)
    system_bus.connection.emit_signal(None, *STATUS, off)

    check_dialog_stays()
