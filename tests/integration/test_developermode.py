# SPDX-FileCopyrightText: velmora-installationhandler contributors
# SPDX-License-Identifier: BSD-3-Clause
"""The conditions under which the user is asked, and installations without a question."""

from pathlib import Path

import pytest

NO_SDK = '"Unable install package without confirm: The installation is not running in sdk mode. "'
NOT_ALLOWED = '"Unable install package without confirm: Silent software instalation is not allowed"'
NEITHER = ('"Unable install package without confirm: The installation is not running in sdk mode. '
           'Silent software instalation is not allowed"')
UNKNOWN = 'Could not fetch developer mode state:  '


@pytest.fixture
def asked(standins, service, client, signals, dialog):
    """Installs a file and tells whether the user was asked."""
    standins.start('package-manager', installs='nothing')
    standins.start('package-kit')
    dialog.use('Confirming')

    def install(sdk_mode):
        client.install(['/absent.rpm'], sdk_mode=sdk_mode)
        assert signals.wait('installFinished') == (True, '')
        service.barrier()
        return 'needConfirm' in signals.names()
    return install


@pytest.mark.parametrize('sdk_mode, silent, question, warnings', [
    (True, True, False, []), (True, False, True, [NOT_ALLOWED]), (False, True, True, [NO_SDK]),
    (False, False, True, [NEITHER]),
])
@pytest.mark.parametrize('emulator', [False, True], ids=['device', 'emulator'])
def test_question_depends_on(standins, service, device, asked, emulator, sdk_mode, silent, question, warnings):
    """On an emulator the user is not asked; the log is the same. Known behaviour 49."""
    standins.start('developer-mode', silent_installation=silent)
    if emulator:
        device.mark_as_emulator()

    assert asked(sdk_mode) == (question and not emulator)

    assert service.warnings() == warnings
    (call,) = standins.developer_mode.calls()
    assert (call.path, call.interface, call.method, call.signature) == \
        ('/', 'ru.quon.developermode', 'IsSilentInstallationEnabled', '')


@pytest.mark.parametrize('sdk_mode', [False, True], ids=['asking', 'sdk'])
@pytest.mark.parametrize('emulator', [False, True], ids=['device', 'emulator'])
def test_absent_developer_mode_allows_nothing(service, device, asked, emulator, sdk_mode):
    if emulator:
        device.mark_as_emulator()

    assert asked(sdk_mode) == (not emulator)

    assert service.warnings() == [UNKNOWN + '"The name ru.quon.developermode was not provided by any .service files"']


def test_failing_developer_mode_allows_nothing(standins, service, asked):
    standins.start('developer-mode', silent_installation=True).refuse('IsSilentInstallationEnabled', 'a.b.Failed',
                                                                      'out of order')
    assert asked(sdk_mode=True)
    assert service.warnings() == [UNKNOWN + '"out of order"']


def test_marker_is_looked_for_at_every_file(standins, service, client, signals, dialog, device):
    standins.start('package-manager', installs='nothing')
    dialog.use('Controlled')

    client.install(['/1.rpm', '/2.rpm'])
    dialog.wait_shown(1)
    device.mark_as_emulator()
    dialog.answer('dismissed', number=1)

    signals.wait('installFinished')
    assert signals.names() == ['needConfirm', 'installFinished']
    assert [call.arguments[0] for call in standins.package_manager.calls()] == ['/2.rpm']


@pytest.fixture
def silent_installation(standins):
    """The developer mode allows installing without a question."""
    standins.start('developer-mode', silent_installation=True)
    standins.start('package-kit')


def test_file_goes_straight_to_the_package_manager(silent_installation, standins, service, signals, install_and_wait,
                                                   device, package):
    standins.start('package-manager')
    standins.start('mce')
    file = package('quiet')

    assert install_and_wait([file], sdk_mode=True) == (True, '')
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


def test_refusal_is_reported_by_its_code(silent_installation, standins, service, install_and_wait, device, package):
    standins.start('package-manager')
    file = package('needy', requires=['nothing-that-exists'])

    assert install_and_wait([file], sdk_mode=True) == \
        (False, 'zarn_installation_error_desc_MissingDependency (code: MissingDependency)')
    assert service.alive
    assert device.packages() == []


def test_empty_list_succeeds_without_any_call(service, client, signals, system_calls):
    client.call('installFiles', '(as)', [])

    assert signals.wait('installFinished') == (True, '')
    assert system_calls() == []
