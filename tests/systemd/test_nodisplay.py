# SPDX-FileCopyrightText: velmora-installationhandler contributors
# SPDX-License-Identifier: BSD-3-Clause
"""A session whose display is not in the environment of the user manager."""

import pytest
from standin.remoteerror import RemoteError


def test_call_fails_until_there_is_a_display(session_bus, provide_display, client, unit):
    """The bus gives up after 25 seconds, since systemd does not tell it of the service's end."""
    session_bus.ask('UpdateActivationEnvironment', '(a{ss})', {'QT_QPA_PLATFORM': 'xcb'})
    pending = client.start('installFiles', '(as)', [])
    unit.wait_state('failed (failed)', 'signal')

    with pytest.raises(RemoteError) as failure:
        pending.wait()

    assert failure.value.name == 'org.freedesktop.DBus.Error.TimedOut'
    provide_display()
    client.install([])
    assert unit.state() == ('active (running)', 'success')
