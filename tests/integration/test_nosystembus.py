# SPDX-FileCopyrightText: velmora-installationhandler contributors
# SPDX-License-Identifier: BSD-3-Clause
"""Devices whose system bus is missing, or goes away: every call there fails in its own way."""

import pytest

UNKNOWN = 'Could not fetch developer mode state:  "Not connected to D-Bus server"'
DISCONNECTED = (False, 'zarn_installation_error_desc_Disconnected (code: Disconnected)')


@pytest.fixture(params=['missing', 'lost'])
def lonely_service(request, processes, system_bus, program):
    """The service without a system bus, from the start on or since then."""
    if request.param == 'lost':
        program.start()
    processes.kill(system_bus.process)
    return program if request.param == 'lost' else program.start()


def test_service_is_there(lonely_service, client, signals):
    client.install([])

    assert signals.wait('installFinished') == (True, '')
    assert lonely_service.log() == []


def test_user_is_asked_and_nothing_can_be_installed(lonely_service, client, signals, dialog):
    dialog.use('Confirming')

    client.install(['/absent.rpm'], sdk_mode=True)

    assert signals.wait('installFinished') == DISCONNECTED
    assert [name for name in signals.names() if name != 'removalFinished'] == ['needConfirm', 'installFinished']
    lonely_service.barrier()
    assert lonely_service.warnings() == [UNKNOWN]


def test_user_may_decline(lonely_service, client, signals, dialog):
    dialog.use('Dismissing')

    client.install(['/absent.rpm'])

    assert signals.wait('installFinished') == (False, 'The user cancelled the installation')
    assert lonely_service.warnings() == [UNKNOWN]


def test_emulator_installs_nothing_either(lonely_service, client, signals, device):
    device.mark_as_emulator()

    client.install(['/one.rpm', '/two.rpm'])

    assert signals.wait('installFinished') == (False, f'{DISCONNECTED[1]}\n{DISCONNECTED[1]}')
    assert signals.names() == ['installFinished']
    assert lonely_service.warnings() == [UNKNOWN] * 2


def test_policy_still_holds(lonely_service, client, signals, device, session_monitor):
    device.set_policy('[Applications]\nInstallationEnabled=false\n')

    client.install(['/absent.rpm'])

    assert signals.wait('installFinished')[0] is False
    assert 'Notify' in [message.member for message in session_monitor.messages(kind='method-call')]
