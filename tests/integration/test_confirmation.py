# SPDX-FileCopyrightText: velmora-installationhandler contributors
# SPDX-License-Identifier: BSD-3-Clause
"""Installations that the user is asked about."""

from gi.repository import GLib

NOT_SDK_NOT_SILENT = ('"Unable install package without confirm: The installation is not running in sdk mode. '
                      'Silent software instalation is not allowed"')


def test_accepted_package_is_installed(platform, service, client, signals, dialog, device, package):
    dialog.use('Controlled')
    file = package('wanted', version='1.2', summary='Does <b>things</b>')

    client.install([file])

    assert signals.wait('needConfirm') == ()
    assert dialog.wait_shown() == {'name': 'wanted', 'version': '1.2', 'summary': 'Does <b>things</b>',
                                   'fileName': str(file)}
    assert service.warnings() == [NOT_SDK_NOT_SILENT]
    service.barrier()
    assert not platform.package_manager.calls()
    assert [call.arguments for call in platform.mce.calls('notification_begin_req')] == [('wanted', 30000, 30000)]

    dialog.answer('requestInstall')

    assert signals.wait('installFinished') == (True, '')
    service.barrier()
    assert [call.arguments for call in platform.mce.calls('notification_end_req')] == [('wanted', 3000000)]
    assert signals.names() == ['needConfirm', 'installFinished']
    assert device.packages() == ['wanted']


def test_mce_is_looked_at_before_each_request(platform, service, client, signals, dialog, system_bus, system_monitor,
                                              package):
    """With a proxy for each. The bus library would only remember what MCE says of itself, if it said anything."""
    dialog.use('Dismissing')
    platform.mce.answer('Introspect', GLib.Variant('(s)', ('<node/>',)))

    client.install([package('first'), package('second')])

    assert signals.wait('installFinished')[0] is False
    service.barrier()
    sent = system_monitor.messages(system_bus.name_of_process(service.process.pid), 'method-call')
    assert [(call.path, call.member) for call in sent if call.destination == 'com.nokia.mce'] == 2 * [
        ('/com/nokia/mce/request', 'Introspect'),
        ('/com/nokia/mce/request', 'notification_begin_req'),
        ('/com/nokia/mce/request', 'Introspect'),
        ('/com/nokia/mce/request', 'notification_end_req')]


def test_declined_package_is_not_installed(platform, service, client, signals, dialog, device, package):
    dialog.use('Dismissing')

    client.install([package('unwanted')])

    assert signals.wait('installFinished')[0] is False
    service.barrier()
    assert [call.arguments for call in platform.mce.calls('notification_end_req')] == [('unwanted', 1000000)]
    assert not platform.package_manager.calls()
    assert device.packages() == []


def test_display_turned_off_declines(platform, service, client, signals, dialog, package):
    dialog.use('Controlled')
    client.install([package('unseen')])
    dialog.wait_shown()

    platform.mce.configure('display', 'dimmed')
    service.barrier()
    assert signals.names() == ['needConfirm']

    platform.mce.configure('display', 'off')
    assert signals.wait('installFinished')[0] is False
    service.barrier()
    assert [call.arguments for call in platform.mce.calls('notification_end_req')] == [('unseen', 0)]


def test_second_answer_of_a_dialog_is_handled_again(platform, service, client, signals, dialog, system_bus,
                                                    system_monitor, package):
    dialog.use('AnsweringTwice')
    platform.package_manager.hang('Install')

    client.install([package('double')])

    assert signals.wait('installFinished')[0] is False
    service.barrier()
    assert [(call.member, call.arguments)
            for call in system_monitor.calls(system_bus.name_of_process(service.process.pid))][-3:] == [
        ('Install', (str(package('double')), {})),
        ('notification_end_req', ('double', 3000000)),
        ('notification_end_req', ('double', 1000000))]


def test_real_dialog_is_confirmed_by_keyboard(platform, screen, program, client, signals, device, package):
    program.start(environment=screen.environment())

    client.install([package('typed')])

    window = screen.wait_for_window(program.process.pid)
    screen.press_keys(window, 'Tab', 'Return')
    assert signals.wait('installFinished') == (True, '')
    assert device.packages() == ['typed']


def test_real_dialog_is_declined_by_escape(platform, screen, program, client, signals, device, package):
    program.start(environment=screen.environment())

    client.install([package('escaped')])

    window = screen.wait_for_window(program.process.pid)
    screen.press_keys(window, 'Escape')
    assert signals.wait('installFinished')[0] is False
    assert device.packages() == []
