# SPDX-FileCopyrightText: velmora-installationhandler contributors
# SPDX-License-Identifier: BSD-3-Clause
"""What is announced about requests of one and of several files."""

import pytest
from gi.repository import GLib

NOTHING = GLib.Variant('()', ())
ABORTED = 'The user cancelled the installation'
ONE_FAILS, TWO_FAILS = 'org.example.Error.NoSpace', 'org.example.Error.Conflict'
NO_SPACE = 'zarn_installation_error_desc_NoSpace (code: NoSpace)'
CONFLICT = 'zarn_installation_error_desc_Conflict (code: Conflict)'


@pytest.fixture
def package_manager(standins):
    """Installs nothing."""
    return standins.start('package-manager', installs='nothing')


# What is to happen to each file, in turn; the outcome; the files that the package manager gets.
DECLINED, INSTALLED = 'declined', 'installed'
CASES = [
    ([INSTALLED], (True, ''), [1]),
    ([DECLINED], (False, ABORTED), []),
    ([ONE_FAILS], (False, NO_SPACE), [1]),
    ([INSTALLED, INSTALLED], (True, ''), [1, 2]),
    ([INSTALLED, ONE_FAILS], (False, NO_SPACE), [1, 2]),
    ([ONE_FAILS, INSTALLED], (False, NO_SPACE), [1, 2]),
    ([ONE_FAILS, TWO_FAILS], (False, f'{NO_SPACE}\n{CONFLICT}'), [1, 2]),
    ([TWO_FAILS, ONE_FAILS], (False, f'{CONFLICT}\n{NO_SPACE}'), [1, 2]),
    ([ONE_FAILS, DECLINED], (False, ABORTED), [1]),
    ([DECLINED, INSTALLED], (False, ABORTED), [2]),
    ([DECLINED, DECLINED], (False, ABORTED), []),
    ([DECLINED, ONE_FAILS], (False, f'{ABORTED}\n{NO_SPACE}'), [2]),
    ([ONE_FAILS, DECLINED, TWO_FAILS], (False, f'{ABORTED}\n{CONFLICT}'), [1, 3]),
    ([ONE_FAILS, INSTALLED, ONE_FAILS], (False, f'{NO_SPACE}\n{NO_SPACE}'), [1, 2, 3]),
]


@pytest.mark.parametrize('fates, outcome, handed_over', CASES, ids=lambda value: '-'.join(map(str, value)))
def test_request_ends_with(service, client, signals, dialog, package_manager, fates, outcome, handed_over):
    dialog.use('Controlled')
    for fate in fates:
        if fate == INSTALLED:
            package_manager.answer('Install', NOTHING, times=1)
        elif fate != DECLINED:
            package_manager.refuse('Install', fate, 'for a reason', times=1)

    client.install([f'/{number}.rpm' for number in range(1, len(fates) + 1)])

    for number, fate in enumerate(fates, 1):
        assert dialog.wait_shown(number)['fileName'] == f'/{number}.rpm'
        dialog.answer('dismissed' if fate == DECLINED else 'requestInstall', number=number)
    assert signals.wait('installFinished') == outcome
    service.barrier()
    assert signals.names() == ['needConfirm'] * len(fates) + ['installFinished']
    assert [call.arguments for call in package_manager.calls('Install')] == \
        [(f'/{number}.rpm', {}) for number in handed_over]


def test_several_files_take_turns(standins, service, client, signals, device, system_bus, system_monitor,
                                  package_manager):
    """One is asked about when the one before has been installed, and the developer mode for each anew."""
    standins.start('developer-mode', silent_installation=True)
    device.mark_as_emulator()
    package_manager.hang('Install', 1)

    client.install(['/1.rpm', '/2.rpm'])
    package_manager.wait_call('Install')
    service.barrier()
    assert len(package_manager.calls('Install')) == 1
    assert len(standins.developer_mode.calls()) == 1
    package_manager.release('Install')

    assert signals.wait('installFinished') == (True, '')
    calls = system_monitor.calls(system_bus.name_of_process(service.process.pid))
    assert [call.member for call in calls if call.destination.startswith('ru.quon.')] == \
        ['IsSilentInstallationEnabled', 'Install'] * 2


def test_files_are_really_installed(platform, service, client, signals, dialog, device, package):
    """The good ones of a request with a bad one in between."""
    dialog.use('Confirming')

    client.install([package('good'), package('needy', requires=['nothing-that-exists']), package('fine')])

    assert signals.wait('installFinished') == \
        (False, 'zarn_installation_error_desc_MissingDependency (code: MissingDependency)')
    assert sorted(device.packages()) == ['fine', 'good']


def test_user_data_flag_changes_nothing(standins, service, client, signals, package_manager):
    standins.start('developer-mode', silent_installation=True)

    for keep in (False, True):
        client.install(['/a.rpm'], sdk_mode=True, keep_userdata=keep)

    signals.wait('installFinished', 2)
    assert signals.arguments('installFinished') == [(True, ''), (True, '')]
    assert [call.arguments for call in package_manager.calls('Install')] == [('/a.rpm', {}), ('/a.rpm', {})]


def test_one_file_goes_this_way(platform, service, client, signals, dialog, system_bus, system_monitor, package):
    dialog.use('Confirming')
    file = package('traced', version='3.4', summary='Leaves traces')

    client.install([file])

    assert signals.wait('installFinished') == (True, '')
    calls = system_monitor.calls(system_bus.name_of_process(service.process.pid))
    assert [(call.destination, call.path, call.interface, call.member, call.signature, call.arguments)
            for call in calls if call.member != 'get_display_status'] == [
        ('ru.quon.developermode', '/', 'ru.quon.developermode', 'IsSilentInstallationEnabled', '', ()),
        ('com.nokia.mce', '/com/nokia/mce/request', 'com.nokia.mce.request', 'notification_begin_req', 'sii',
         ('traced', 30000, 30000)),
        ('ru.quon.ZARN', '/ru/quon/ZARN', 'ru.quon.ZARN', 'Install', 'sa{sv}', (str(file), {})),
        ('com.nokia.mce', '/com/nokia/mce/request', 'com.nokia.mce.request', 'notification_end_req', 'si',
         ('traced', 3000000))]
    assert [line for line in service.log() if ' qml: ' not in line] == [
        'debug default: RPM Package info: "traced" "3.4" "Leaves traces"',
        'warning default: "Unable install package without confirm: The installation is not running in sdk mode. '
        'Silent software instalation is not allowed"']
