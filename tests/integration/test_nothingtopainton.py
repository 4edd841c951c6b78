# SPDX-FileCopyrightText: velmora-installationhandler contributors
# SPDX-License-Identifier: BSD-3-Clause
"""A display on which nothing can be painted: the dialog counts as refused. Known behaviour 53."""

import pytest

CANCELLED = (False, 'The user cancelled the installation')


@pytest.fixture
def service(standins, screen, program):
    """The service on a display without any graphics driver. The toolkit's other render loop ends the process there."""
    standins.start('package-manager', 'mce')
    return program.start(environment={
        **screen.environment(),
        'QT_QUICK_BACKEND': '',
        'QSG_RENDER_LOOP': 'threaded',
        'LIBGL_DRIVERS_PATH': '/nonexistent',
    })


def test_installation_is_cancelled(client, signals, standins, service):
    """Known behaviour 53."""
    client.install(['/one.rpm', '/two.rpm'])

    assert signals.wait('installFinished') == CANCELLED
    service.barrier()
    assert signals.names() == ['needConfirm', 'needConfirm', 'installFinished']
    assert standins.package_manager.calls('Install') == []
    assert [call.arguments for call in standins.mce.calls('notification_end_req')] == [('', 1000000)] * 2


def test_service_goes_on(client, signals, standins, service, device):
    client.install(['/unseen.rpm'])
    assert signals.wait('installFinished') == CANCELLED

    standins.package_manager.configure('installs', 'nothing')
    device.mark_as_emulator()
    client.install(['/quiet.rpm'])

    assert signals.wait('installFinished', 2) == (True, '')
    service.barrier()
    assert [call.arguments[0] for call in standins.package_manager.calls('Install')] == ['/quiet.rpm']
