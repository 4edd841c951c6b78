# SPDX-FileCopyrightText: velmora-installationhandler contributors
# SPDX-License-Identifier: BSD-3-Clause
"""Devices without a working dialog, or without a display that it can be painted on."""

import pytest

CANCELLED = (False, 'The user cancelled the installation')
NOT_SDK = '"Unable install package without confirm: The installation is not running in sdk mode. "'
MISSING = ('Problems creating dialog component (file:///usr/share/velmora-installationhandler//SideloadDialog.qml: '
           'No such file or directory)')
BROKEN = 'Problems creating dialog component (file:///usr/share/velmora-installationhandler//SideloadDialog.qml:'
NO_WINDOW = 'Failed to cast component to window ()'


@pytest.fixture
def developer_mode(standins):
    """Installing needs no confirmation in sdk mode."""
    return standins.start('developer-mode', silent_installation=True)


@pytest.fixture(params=['missing', 'Broken', 'NotAWindow'])
def complaint(request, dialog, developer_mode):
    """Takes the dialog away, and tells the beginning of the warning that follows."""
    if request.param == 'missing':
        dialog.remove()
    else:
        dialog.use(request.param)
    return {'missing': MISSING, 'Broken': BROKEN, 'NotAWindow': NO_WINDOW}[request.param]


def test_request_never_ends(standins, complaint, service, client, announced):
    """The caller hears that the user is being asked, and nothing more. Known behaviour 52, 61."""
    standins.start('mce', 'package-manager')

    client.install(['/one.rpm', '/two.rpm'])

    assert announced() == ['needConfirm']
    first, second = service.warnings()
    assert first == NOT_SDK
    assert second.startswith(complaint)
    assert standins.package_manager.calls() == []
    assert standins.mce.calls('notification_begin_req') == []


def test_others_are_not_held_back(standins, complaint, service, client, signals, announced, device):
    standins.start('package-manager', installs='nothing')
    client.install(['/stuck.rpm'])

    client.install([])
    device.mark_as_emulator()
    client.install(['/quiet.rpm'])

    signals.wait('installFinished', 2)
    assert announced() == ['needConfirm', 'installFinished', 'installFinished']
    assert signals.arguments('installFinished') == [(True, ''), (True, '')]
    assert [call.arguments[0] for call in standins.package_manager.calls()] == ['/quiet.rpm']


@pytest.fixture
def blind_service(standins, screen, program):
    """The service on a display without any graphics driver. The toolkit's other render loop ends the process there."""
    standins.start('package-manager', 'mce')
    return program.start(environment={
        **screen.environment(),
        'QT_QUICK_BACKEND': '',
        'QSG_RENDER_LOOP': 'threaded',
        'LIBGL_DRIVERS_PATH': '/nonexistent',
        'GALLIUM_DRIVER': 'nonexistent',
    })


def test_installation_is_cancelled(announced, install_and_wait, standins, blind_service):
    """A display on which nothing can be painted counts as a refusal. Known behaviour 53."""
    assert install_and_wait(['/one.rpm', '/two.rpm']) == CANCELLED
    assert announced() == ['needConfirm', 'needConfirm', 'installFinished']
    assert standins.package_manager.calls('Install') == []
    assert [call.arguments for call in standins.mce.calls('notification_end_req')] == [('', 1000000)] * 2


def test_service_goes_on(install_and_wait, standins, blind_service, device):
    assert install_and_wait(['/unseen.rpm']) == CANCELLED

    standins.package_manager.configure('installs', 'nothing')
    device.mark_as_emulator()
    assert install_and_wait(['/quiet.rpm']) == (True, '')
    blind_service.barrier()
    assert [call.arguments[0] for call in standins.package_manager.calls('Install')] == ['/quiet.rpm']
