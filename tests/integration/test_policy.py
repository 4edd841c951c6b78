# SPDX-FileCopyrightText: velmora-installationhandler contributors
# SPDX-License-Identifier: BSD-3-Clause
"""Devices on which the policy forbids installing."""

import platform as machine
import re

import documents
import pytest
from gi.repository import GLib
from support.devicestate import POLICY_FILE, REFUSING_POLICY
from support.records import besides_removals

ALLOWING_POLICY = '[Applications]\nInstallationEnabled=true\n'
SYSTEM = machine.freedesktop_os_release()['NAME']
TEXT = f"This device's policy does not allow installing apps ({SYSTEM})."
NOTIFICATIONS = 'org.freedesktop.Notifications'


def test_user_and_caller_are_told(standins, service, signals, install_and_wait, device, package, system_calls):
    standins.start('notifications')
    device.forbid_installing()

    assert install_and_wait([package('forbidden')]) == (False, TEXT)
    notification = standins.notifications.wait_call('Notify')
    assert notification.signature == 'susssasa{sv}i'
    assert notification.arguments == (
        '', 0, 'icon-lock-warning', SYSTEM, TEXT, [],
        {'image-path': 'dialog-warning', 'urgency': 2, 'transient': True}, -1)
    service.barrier()
    assert len(standins.notifications.calls()) == 1
    assert signals.names() == ['installFinished']
    assert system_calls() == []
    assert service.log() == []


def test_notification_takes_the_place_of_the_one_that_is_shown(
        standins, service, install_and_wait, device, session_bus):
    standins.start('notifications')
    device.forbid_installing()

    def replaced():
        """The number of the notification whose place the next one takes; 0 for none."""
        install_and_wait([])
        # The number that the notification gets has reached the service after these round trips.
        session_bus.ping(NOTIFICATIONS)
        service.barrier()
        return standins.notifications.calls('Notify')[-1].arguments[1]

    assert [replaced(), replaced(), replaced()] == [0, 1, 1]
    standins.notifications.emit('/org/freedesktop/Notifications', NOTIFICATIONS, 'NotificationClosed',
                                GLib.Variant('(uu)', (1, 2)))
    assert [replaced(), replaced()] == [0, 2]
    standins.notifications.vanish()
    standins.notifications.come_back()
    assert [replaced(), replaced()] == [0, 3]
    assert service.log() == []


def test_notifications_in_quick_succession_are_two(standins, service, client, device):
    """The number of the first one has not arrived yet. Known behaviour 73."""
    standins.start('notifications')
    standins.notifications.hang('Notify')
    device.forbid_installing()

    client.install([])
    client.install([])

    standins.notifications.wait_call('Notify', 2)
    assert [call.arguments[1] for call in standins.notifications.calls('Notify')] == [0, 0]
    assert service.log() == []


def test_icons_are_seen_as_documented(standins, service, client, device):
    """As docs/integration.md tells the integrator."""
    text = (documents.SOURCE / 'docs/integration.md').read_text(encoding='utf-8')
    icon, known_icon, setting, file = re.search(
        r'^\| the icons `(.*?)` and `(.*?)`.*\| none in the log; with `(.*?)` in `(.*?)` ', text, re.MULTILINE).groups()
    standins.start('notifications')
    assert file == str(POLICY_FILE)
    device.set_policy(f'[Applications]\n{setting}\n')

    client.install([])

    arguments = standins.notifications.wait_call('Notify').arguments
    assert (arguments[2], arguments[6]['image-path']) == (icon, known_icon)
    assert service.log() == []


@pytest.mark.parametrize('files', [[], ['/absent.rpm'], ['/one.rpm', '/two.rpm']], ids=len)
@pytest.mark.parametrize('sdk_mode', [False, True], ids=['asking', 'sdk'])
@pytest.mark.parametrize('emulator', [False, True], ids=['device', 'emulator'])
def test_nothing_else_matters(standins, service, client, signals, device, files, sdk_mode, emulator):
    standins.start('developer-mode', silent_installation=True)
    standins.start('package-kit')
    device.forbid_installing()
    if emulator:
        device.mark_as_emulator()

    client.install(files, sdk_mode=sdk_mode)

    assert signals.all[0] == ('installFinished', 'bs', (False, TEXT))
    service.barrier()
    assert len(signals.arguments('installFinished')) == 1
    assert besides_removals(service.log()) == []
    assert standins.developer_mode.calls() == []


def test_policy_is_read_for_each_request(service, client, signals, device):
    for policy in (REFUSING_POLICY, ALLOWING_POLICY, REFUSING_POLICY, None):
        device.set_policy(policy)
        client.install([])

    service.barrier()
    assert signals.arguments('installFinished') == [(False, TEXT), (True, ''), (False, TEXT), (True, '')]


def test_policy_that_makes_no_sense_forbids(service, install_and_wait, device):
    device.set_policy('[Applications]\nInstallationEnabled=perhaps\n')

    assert install_and_wait([]) == (False, TEXT)
    (warning,) = service.warnings()
    assert '/etc/velmora/access-policy.conf' in warning


@pytest.mark.parametrize('language, text', [
    ('de_DE.UTF-8', 'Die Geräterichtlinie von {} verbietet das Installieren von Apps.'),
    ('C.UTF-8', "This device's policy does not allow installing apps ({})."),
])
def test_text_is_in_the_users_language(standins, program, client, signals, device, language, text):
    standins.start('notifications')
    device.forbid_installing()
    program.start(environment={'LANG': language})

    client.install([])

    text = text.format(SYSTEM)
    assert signals.wait('installFinished') == (False, text)
    assert standins.notifications.wait_call('Notify').arguments[4] == text
