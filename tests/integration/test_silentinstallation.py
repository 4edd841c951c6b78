# SPDX-FileCopyrightText: velmora-installationhandler contributors
# SPDX-License-Identifier: BSD-3-Clause
"""Installations without a question."""

from pathlib import Path

import pytest


@pytest.fixture(autouse=True)
def silent_installation(standins):
    """The developer mode allows it."""
    standins.start('developer-mode', silent_installation=True)
    standins.start('package-kit')


def test_file_goes_straight_to_the_package_manager(standins, service, client, signals, device, package):
    standins.start('package-manager')
    standins.start('mce')
    file = package('quiet')

    client.install([file], sdk_mode=True)

    assert signals.wait('installFinished') == (True, '')
    assert signals.wait('removalFinished') == (True, '')
    service.barrier()
    assert sorted(signals.names()) == ['installFinished', 'removalFinished']
    assert service.warnings() == []
    (install,) = standins.package_manager.calls('Install')
    assert (install.path, install.interface, install.signature, install.arguments) == \
        ('/ru/quon/ZARN', 'ru.quon.ZARN', 'sa{sv}', (str(file), {}))
    assert not standins.mce.calls('notification_begin_req')
    assert device.packages() == ['quiet']
    assert Path('/usr/share/applications/quiet.desktop').is_file()


def test_refusal_is_reported_by_its_code(standins, service, client, signals, device, package):
    standins.start('package-manager')
    file = package('needy', requires=['nothing-that-exists'])

    client.install([file], sdk_mode=True)

    assert signals.wait('installFinished') == \
        (False, 'zarn_installation_error_desc_MissingDependency (code: MissingDependency)')
    assert service.alive
    assert device.packages() == []


def test_empty_list_succeeds_without_any_call(service, client, signals, system_calls):
    client.call('installFiles', '(as)', [])

    assert signals.wait('installFinished') == (True, '')
    service.barrier()
    assert system_calls() == []
