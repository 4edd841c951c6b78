# SPDX-FileCopyrightText: velmora-installationhandler contributors
# SPDX-License-Identifier: BSD-3-Clause
"""A request that waits behind a dialog whose own request has ended."""

from support.forgottendialog import prepare_forgotten_dialog
from support.idle import IdleTime


def test_service_ends_without_it(standins, service, session_bus, client, signals, dialog):
    """Nobody hears the answer that would start it."""
    package_manager = prepare_forgotten_dialog(standins, client, dialog)

    with IdleTime() as idle:
        package_manager.release('Install')
        assert signals.wait('installFinished') == (False, 'The user cancelled the installation')
    client.install(['/late.rpm'])
    dialog.answer('dismissed', number=2)

    assert idle.wait_exit(service, session_bus) == 0
    assert signals.names() == ['needConfirm', 'needConfirm', 'installFinished']
