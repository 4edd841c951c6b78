# SPDX-FileCopyrightText: velmora-installationhandler contributors
# SPDX-License-Identifier: BSD-3-Clause
"""The service started by the bus."""

from harness.client import NAME


def test_call_starts_the_service(session_bus, client, signals):
    session_bus.allow_activation()
    assert not session_bus.has_owner(NAME)

    client.call('installFiles', '(as)', [])

    assert signals.wait('installFinished') == (True, '')
    assert session_bus.has_owner(NAME)
