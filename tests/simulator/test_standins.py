# SPDX-FileCopyrightText: velmora-installationhandler contributors
# SPDX-License-Identifier: BSD-3-Clause
"""The built-in answers of each stand-in, and the commands for people."""

import os
import re
import signal
from pathlib import Path

import pytest
from gi.repository import GLib
from standin.remoteerror import RemoteError

SIMULATOR = Path(__file__).resolve().parents[2] / 'simulator'
MCE = {'name': 'com.nokia.mce', 'path': '/com/nokia/mce/request', 'interface': 'com.nokia.mce.request'}
NOTIFICATIONS = {'name': 'org.freedesktop.Notifications', 'path': '/org/freedesktop/Notifications',
                 'interface': 'org.freedesktop.Notifications'}
LAUNCHER_MODEL = {'name': 'org.orrinmobile.rozzle', 'path': '/LauncherModel',
                  'interface': 'org.orrinmobile.rozzle.LauncherModel'}
HOOKS = {'name': 'ru.quon.RuntimeManager', 'path': '/ru/quon/ZARN/Hooks', 'interface': 'ru.quon.ZARN.Hooks'}
ANDROID = {'name': 'com.zelka.zindro', 'path': '/com/zelka/zindro', 'interface': 'com.zelka.zindro'}


@pytest.fixture
def run(processes):
    """Runs a command of the simulator: its exit status and its lines."""
    def to_the_end(command, *arguments):
        process = processes.start(command, [SIMULATOR / command, *arguments])
        return processes.wait_end(process), process.lines()
    return to_the_end


def test_mce_tells_the_display_state_and_its_changes(standins, peer, processes):
    mce = standins.start('mce', display='dimmed')
    changes = []
    peer.connection.signal_subscribe(
        'com.nokia.mce', 'com.nokia.mce.signal', 'display_status_ind', '/com/nokia/mce/signal', None, 0,
        lambda _c, _s, _p, _i, _n, values: changes.append((values.get_type_string(), values.unpack())))
    assert peer.call('get_display_status', **MCE) == ('dimmed',)
    for state in ('off', 'off', 'on'):
        mce.configure('display', state)
    assert peer.call('get_display_status', **MCE) == ('on',)
    processes.run_pending()
    assert changes == [('(s)', ('off',)), ('(s)', ('on',))]


def test_notifications_are_recorded_with_their_hints(standins, client):
    notifications = standins.start('notifications')
    hints = {'urgency': GLib.Variant('y', 2), 'transient': GLib.Variant('b', True)}
    arguments = ('app', 0, 'icon', 'summary', 'body', [], hints, -1)
    assert client.call('Notify', '(susssasa{sv}i)', *arguments, **NOTIFICATIONS) == (1,)
    assert client.call('Notify', '(susssasa{sv}i)', *arguments, **NOTIFICATIONS) == (2,)
    assert client.call('Notify', '(susssasa{sv}i)', *arguments[:1], 1, *arguments[2:], **NOTIFICATIONS) == (1,)
    assert notifications.calls('Notify')[0].arguments == \
        ('app', 0, 'icon', 'summary', 'body', [], {'urgency': 2, 'transient': True}, -1)
    assert client.call('CloseNotification', '(u)', 1, **NOTIFICATIONS) == ()


@pytest.mark.parametrize('name, target, calls', [
    ('mce', MCE, [('notification_begin_req', '(sii)', ('name', 30000, 30000)),
                  ('notification_end_req', '(si)', ('name', 1000000))]),
    ('runtime-manager', HOOKS, [('OnRemove', '(s)', ('org',))]),
    ('launcher-model', LAUNCHER_MODEL, [('updatingStarted', '(ssss)', ('a', '', '', '/a.desktop')),
                                        ('updatingFinished', '(s)', ('a',))]),
], ids=['mce', 'runtime-manager', 'launcher-model'])
def test_calls_are_accepted_and_recorded(standins, peer, client, name, target, calls):
    standin = standins.start(name)
    caller = client if target is LAUNCHER_MODEL else peer
    for method, signature, arguments in calls:
        assert caller.call(method, signature, *arguments, **target) == ()
    assert [(call.method, f'({call.signature})', call.arguments) for call in standin.calls()] == calls


def test_android_support_removes_launchers(standins, peer, tmp_path):
    standins.start('android-support')
    launcher = tmp_path / 'zindro_launcher_a.desktop'
    launcher.touch()
    for path, removed in ((launcher, True), (launcher, False), (tmp_path, False), ('', False)):
        assert peer.call('removeFile', '(s)', str(path), **ANDROID) == (removed,)
    assert not launcher.exists()
    assert tmp_path.is_dir()


def test_start_refuses_what_it_does_not_know(run, system_bus):
    assert run('start', 'toaster')[1][-1] == 'NAME is one of: android-support, developer-mode, launcher-model, mce, ' \
        'notifications, package-kit, package-manager, runtime-manager'
    assert run('start', 'mce', '--display', 'blue') == (1, ['mce: display is one of on, dimmed, off, not "blue"'])
    assert run('start', 'mce', '--size', '5') == (1, ['mce: no parameter "size", only display'])
    assert run('start', 'mce', '--display') == (1, ['Parameters are given as --PARAMETER VALUE.'])


def test_start_refuses_a_name_that_is_taken(standins, run):
    standins.start('mce')
    assert run('start', 'mce') == (1, ['mce: somebody else owns org.velmoraos.simulator.Mce'])


def test_control_from_the_command_line(standins, run, peer):
    mce = standins.start('mce')
    method = 'get_display_status'

    def control(*arguments):
        assert run('control', 'mce', *arguments) == (0, [])

    control('configure', 'display', 'off')
    assert peer.call(method, **MCE) == ('off',)
    control('answer', method, '(uint32 5, "x")', '1')
    assert peer.call(method, **MCE) == (5, 'x')
    control('refuse', method, 'a.b.C', 'not now')
    with pytest.raises(RemoteError, match='a.b.C: not now'):
        peer.call(method, **MCE)
    control('restore', method)
    control('delay', method, '1')
    control('hang', method)
    hanging = peer.start(method, **MCE)
    mce.wait_call(method, 4)
    assert run('control', 'mce', 'release', method)[0] == 0
    assert hanging.wait() == ('off',)
    status, lines = run('control', 'mce', 'calls')
    assert (status, len(lines)) == (0, 4)
    assert re.fullmatch(r'\d+\.\d{6} /com/nokia/mce/request com\.nokia\.mce\.request\.get_display_status\(\) \[\] '
                        r'from :1\.\d+', lines[0])
    for operation in ('vanish', 'come-back', 'clear', 'calls'):
        control(operation)


def test_control_tells_what_is_wrong(standins, run):
    standin = standins.start('mce')
    assert run('control', 'mce', 'explode')[0] == 1
    assert run('control', 'mce', 'hang')[0] == 1
    assert run('control', 'mce', 'delay', 'get_display_status', 'long')[0] == 1
    assert run('control', 'mce', 'hang', 'Nothing') == (1, ['mce: no method "Nothing"'])
    assert run('control', 'mce', 'unexpected') == (0, ['control: no method "Nothing"'])
    assert standin.unexpected() == ['control: no method "Nothing"']
    standin.unexpected = lambda: []


@pytest.fixture
def everything(processes, system_bus, session_bus):
    """All stand-ins, started by one command."""
    process = processes.start('start-all', [SIMULATOR / 'start-all'])
    processes.wait_until(lambda: 'ready all' in process.lines(), 'all stand-ins')
    return process


def test_start_all_ends_on_a_signal(everything, processes, system_bus, session_bus):
    for name in ('ru.quon.developermode', 'com.nokia.mce', 'ru.quon.ZARN',
                 'ru.quon.RuntimeManager', 'com.zelka.zindro'):
        assert system_bus.has_owner(name)
    for name in ('org.freedesktop.Notifications', 'org.orrinmobile.rozzle'):
        assert session_bus.has_owner(name)

    everything.send_signal(signal.SIGTERM)

    assert processes.wait_end(everything) == 0
    system_bus.wait_owner('ru.quon.ZARN', owned=False)
    session_bus.wait_owner('org.freedesktop.Notifications', owned=False)


def test_start_all_ends_with_the_first_stand_in(everything, processes, system_bus):
    os.kill(system_bus.ask('GetConnectionUnixProcessID', '(s)', 'com.nokia.mce')[0], signal.SIGKILL)

    assert processes.wait_end(everything) == 0
    assert 'mce: has ended' in everything.lines()
    assert not system_bus.has_owner('ru.quon.ZARN')
