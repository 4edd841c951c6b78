# SPDX-FileCopyrightText: velmora-installationhandler contributors
# SPDX-License-Identifier: BSD-3-Clause
"""A session whose display is not in the environment of the user manager."""

import pytest
from standin.remoteerror import RemoteError


def test_call_fails_until_there_is_a_display(user_manager, screen, client, unit):
    """The bus gives up after 25 seconds, since systemd does not tell it of the service's end."""
    set_environment(user_manager, QT_QPA_PLATFORM='xcb')
    pending = client.start('installFiles', '(as)', [])
    unit.wait_state('failed (failed)', 'signal')

    with pytest.raises(RemoteError) as failure:
        pending.wait()

    assert failure.value.name == 'org.freedesktop.DBus.Error.TimedOut'
    set_environment(user_manager, **screen.environment())
    client.install([])
    assert unit.state() == ('active (running)', 'success')


def set_environment(user_manager, **variables):
    user_manager.bus.ask('UpdateActivationEnvironment', '(a{ss})', variables)
