# SPDX-FileCopyrightText: velmora-installationhandler contributors
# SPDX-License-Identifier: BSD-3-Clause
"""Devices without a working dialog: a request that has to ask ends nowhere."""

import pytest

NOT_SDK = '"Unable install package without confirm: The installation is not running in sdk mode. "'
MISSING = ('Problems creating dialog component (file:///usr/share/velmora-installationhandler//SideloadDialog.qml: '
           'No such file or directory)')
BROKEN = 'Problems creating dialog component (file:///usr/share/velmora-installationhandler//SideloadDialog.qml:'
NO_WINDOW = 'Failed to cast component to window ()'


@pytest.fixture(autouse=True)
def developer_mode(standins):
    """Installing needs no confirmation in sdk mode."""
    return standins.start('developer-mode', silent_installation=True)


@pytest.fixture(params=['missing', 'Broken', 'NotAWindow'])
def complaint(request, dialog):
    """Takes the dialog away, and tells the beginning of the warning that follows."""
    if request.param == 'missing':
        dialog.remove()
    else:
        dialog.use(request.param)
    return {'missing': MISSING, 'Broken': BROKEN, 'NotAWindow': NO_WINDOW}[request.param]


def test_request_never_ends(standins, service, client, signals, complaint):
    """The caller hears that the user is being asked, and nothing more. Known behaviour 52, 61."""
    standins.start('mce', 'package-manager')

    client.install(['/one.rpm', '/two.rpm'])

    service.barrier()
    assert signals.names() == ['needConfirm']
    first, second = service.warnings()
    assert first == NOT_SDK
    assert second.startswith(complaint)
    assert standins.package_manager.calls() == []
    assert standins.mce.calls('notification_begin_req') == []


def test_others_are_not_held_back(standins, service, client, signals, complaint, device):
    standins.start('package-manager', installs='nothing')
    client.install(['/stuck.rpm'])

    client.install([])
    device.mark_as_emulator()
    client.install(['/quiet.rpm'])

    signals.wait('installFinished', 2)
    service.barrier()
    assert signals.names() == ['needConfirm', 'installFinished', 'installFinished']
    assert signals.arguments('installFinished') == [(True, ''), (True, '')]
    assert [call.arguments[0] for call in standins.package_manager.calls()] == ['/quiet.rpm']
