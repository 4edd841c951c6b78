# SPDX-FileCopyrightText: velmora-installationhandler contributors
# SPDX-License-Identifier: BSD-3-Clause
"""Requests of one and of several files, and the questions that they ask."""

import pytest
from gi.repository import GLib

NOT_SDK_NOT_SILENT = ('"Unable install package without confirm: The installation is not running in sdk mode. '
                      'Silent software instalation is not allowed"')
NOTHING = GLib.Variant('()', ())
ABORTED = 'The user cancelled the installation'
ONE_FAILS, TWO_FAILS = 'org.example.Error.NoSpace', 'org.example.Error.Conflict'
NO_SPACE = 'zarn_installation_error_desc_NoSpace (code: NoSpace)'
CONFLICT = 'zarn_installation_error_desc_Conflict (code: Conflict)'

# The fate of each file, in turn; the outcome; the files that the package manager gets.
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
def test_request_ends_with(service, client, signals, announced, dialog, manager, fates, outcome, handed_over):
    """Known behaviour 50, 51."""
    dialog.use('Controlled')
    for fate in fates:
        if fate == INSTALLED:
            manager.answer('Install', NOTHING, times=1)
        elif fate != DECLINED:
            manager.refuse('Install', fate, 'for a reason', times=1)

    client.install([f'/{number}.rpm' for number in range(1, len(fates) + 1)])

    for number, fate in enumerate(fates, 1):
        assert dialog.wait_shown(number)['fileName'] == f'/{number}.rpm'
        dialog.answer('dismissed' if fate == DECLINED else 'requestInstall', number=number)
    assert signals.wait('installFinished') == outcome
    assert announced() == ['needConfirm'] * len(fates) + ['installFinished']
    assert [call.arguments for call in manager.calls('Install')] == [(f'/{number}.rpm', {}) for number in handed_over]


def test_several_files_take_turns(standins, service, client, signals, device, manager, system_calls):
    """The next file is asked about when the one before has been installed. The developer mode is asked for each
    file."""
    standins.start('developer-mode', silent_installation=True)
    device.mark_as_emulator()
    manager.hang('Install', 1)

    client.install(['/1.rpm', '/2.rpm'])
    manager.wait_call('Install')
    service.barrier()
    assert len(manager.calls('Install')) == 1
    assert len(standins.developer_mode.calls()) == 1
    manager.release('Install')

    assert signals.wait('installFinished') == (True, '')
    calls = system_calls()
    assert [call.member for call in calls if call.destination.startswith('ru.quon.')] == \
        ['IsSilentInstallationEnabled', 'Install'] * 2


def test_files_are_really_installed(platform, service, install_and_wait, dialog, device, package):
    """The good files of a request are installed, also after a bad one."""
    dialog.use('Confirming')

    assert install_and_wait([package('good'), package('needy', requires=['nothing-that-exists']), package('fine')]) == \
        (False, 'zarn_installation_error_desc_MissingDependency (code: MissingDependency)')
    assert sorted(device.packages()) == ['fine', 'good']


def test_one_file_goes_this_way(platform, service, client, signals, dialog, device, package, system_calls):
    """Known behaviour 49, 62."""
    dialog.use('Controlled')
    file = package('traced', version='3.4', summary='Leaves <b>traces</b>')

    client.install([file])

    assert signals.wait('needConfirm') == ()
    assert dialog.wait_shown() == {'name': 'traced', 'version': '3.4', 'summary': 'Leaves <b>traces</b>',
                                   'fileName': str(file)}
    assert service.warnings() == [NOT_SDK_NOT_SILENT]
    service.barrier()
    assert not platform.package_manager.calls()
    assert [call.arguments for call in platform.mce.calls('notification_begin_req')] == [('traced', 30000, 30000)]

    dialog.answer('requestInstall')

    assert signals.wait('installFinished') == (True, '')
    calls = system_calls()
    assert [(call.destination, call.path, call.interface, call.member, call.signature, call.arguments)
            for call in calls if call.member != 'get_display_status'] == [
        ('ru.quon.developermode', '/', 'ru.quon.developermode', 'IsSilentInstallationEnabled', '', ()),
        ('com.nokia.mce', '/com/nokia/mce/request', 'com.nokia.mce.request', 'notification_begin_req', 'sii',
         ('traced', 30000, 30000)),
        ('ru.quon.ZARN', '/ru/quon/ZARN', 'ru.quon.ZARN', 'Install', 'sa{sv}', (str(file), {})),
        ('com.nokia.mce', '/com/nokia/mce/request', 'com.nokia.mce.request', 'notification_end_req', 'si',
         ('traced', 3000000))]
    assert [line for line in service.log() if ' qml: ' not in line] == [
        'debug default: RPM Package info: "traced" "3.4" "Leaves <b>traces</b>"',
        f'warning default: {NOT_SDK_NOT_SILENT}']
    assert signals.names() == ['needConfirm', 'installFinished']
    assert device.packages() == ['traced']


def test_mce_is_looked_at_before_each_request(platform, service, install_and_wait, dialog, system_bus, system_monitor,
                                              package):
    """Each request to MCE has a proxy of its own. An introspection with contents would be remembered, so it has none
    here."""
    dialog.use('Dismissing')
    platform.mce.answer('Introspect', GLib.Variant('(s)', ('<node/>',)))

    assert install_and_wait([package('first'), package('second')])[0] is False
    service.barrier()
    sent = system_monitor.messages(system_bus.name_of_process(service.process.pid), 'method-call')
    assert [(call.path, call.member) for call in sent if call.destination == 'com.nokia.mce'] == 2 * [
        ('/com/nokia/mce/request', 'Introspect'),
        ('/com/nokia/mce/request', 'notification_begin_req'),
        ('/com/nokia/mce/request', 'Introspect'),
        ('/com/nokia/mce/request', 'notification_end_req')]


def test_declined_package_is_not_installed(platform, service, install_and_wait, dialog, device, package):
    dialog.use('Dismissing')

    assert install_and_wait([package('unwanted')])[0] is False
    service.barrier()
    assert [call.arguments for call in platform.mce.calls('notification_end_req')] == [('unwanted', 1000000)]
    assert not platform.package_manager.calls()
    assert device.packages() == []


def test_display_turned_off_declines(platform, service, client, signals, announced, dialog, package):
    dialog.use('Controlled')
    client.install([package('unseen')])
    dialog.wait_shown()

    platform.mce.configure('display', 'dimmed')
    assert announced() == ['needConfirm']

    platform.mce.configure('display', 'off')
    assert signals.wait('installFinished')[0] is False
    service.barrier()
    assert [call.arguments for call in platform.mce.calls('notification_end_req')] == [('unseen', 0)]


def test_second_answer_of_a_dialog_is_handled_again(platform, service, install_and_wait, dialog, package, system_calls):
    """Known behaviour 63."""
    dialog.use('AnsweringTwice')
    platform.package_manager.hang('Install')

    assert install_and_wait([package('double')])[0] is False
    assert [(call.member, call.arguments) for call in system_calls()][-3:] == [
        ('Install', (str(package('double')), {})),
        ('notification_end_req', ('double', 3000000)),
        ('notification_end_req', ('double', 1000000))]
