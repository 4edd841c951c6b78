# SPDX-FileCopyrightText: velmora-installationhandler contributors
# SPDX-License-Identifier: BSD-3-Clause
"""A service that is idle while a dialog is still on screen."""

from support.forgottendialog import prepare_forgotten_dialog
from support.idle import IdleTime


def test_dialog_that_nobody_waits_for_does_not_keep_the_service(standins, service, session_bus, client, signals,
                                                                dialog):
    package_manager = prepare_forgotten_dialog(standins, client, dialog)

    with IdleTime() as idle:
        package_manager.release('Install')
        assert signals.wait('installFinished') == (False, 'The user cancelled the installation')

    assert 'dialog 2 hides' not in service.process.text
    assert idle.wait_exit(service, session_bus) == 0
    assert signals.names() == ['needConfirm', 'needConfirm', 'installFinished']
    assert [line for line in service.log() if ' qml: ' not in line] == [
        'warning default: Could not fetch developer mode state:  '
        '"The name ru.quon.developermode was not provided by any .service files"'] * 2
