# SPDX-FileCopyrightText: velmora-installationhandler contributors
# SPDX-License-Identifier: BSD-3-Clause
"""What each stand-in does by itself, and the commands for people."""

import os
import re
import signal
from pathlib import Path

import pytest
from gi.repository import GLib
from harness.client import Client
from standin.remoteerror import RemoteError

SIMULATOR = Path(__file__).resolve().parents[2] / 'simulator'
MCE = {'name': 'com.nokia.mce', 'path': '/com/nokia/mce/request', 'interface': 'com.nokia.mce.request'}
NOTIFICATIONS = {'name': 'org.freedesktop.Notifications', 'path': '/org/freedesktop/Notifications',
                 'interface': 'org.freedesktop.Notifications'}
MANAGER = {'name': 'ru.quon.ZARN', 'path': '/ru/quon/ZARN', 'interface': 'ru.quon.ZARN'}


@pytest.fixture
def run(processes, environment):
    """Runs a command of the simulator to its end: its exit status and its lines."""
    def to_the_end(command, *arguments):
        process = processes.start(command, [SIMULATOR / command, *arguments], environment)
        return processes.wait_end(process), process.lines()
    return to_the_end


@pytest.fixture
def system_peer(system_bus, processes):
    """A program on the system bus."""
    return Client(system_bus.connect(), processes)


def test_mce_tells_the_display_state_and_its_changes(standins, system_peer, processes):
    mce = standins.start('mce', display='dimmed')
    changes = []
    system_peer.connection.signal_subscribe(
        'com.nokia.mce', 'com.nokia.mce.signal', 'display_status_ind', '/com/nokia/mce/signal', None, 0,
        lambda _c, _s, _p, _i, _n, values: changes.append((values.get_type_string(), values.unpack())))
    assert system_peer.call('get_display_status', **MCE) == ('dimmed',)
    for state in ('off', 'off', 'on'):
        mce.configure('display', state)
    assert system_peer.call('get_display_status', **MCE) == ('on',)
    processes.run_pending()
    assert changes == [('(s)', ('off',)), ('(s)', ('on',))]


def test_mce_takes_notification_requests(standins, system_peer):
    mce = standins.start('mce')
    assert system_peer.call('notification_begin_req', '(sii)', 'name', 30000, 30000, **MCE) == ()
    assert system_peer.call('notification_end_req', '(si)', 'name', 1000000, **MCE) == ()
    assert [(call.method, call.arguments) for call in mce.calls()] == [
        ('notification_begin_req', ('name', 30000, 30000)), ('notification_end_req', ('name', 1000000))]


def test_notifications_are_recorded_with_their_hints(standins, client):
    notifications = standins.start('notifications')
    hints = {'urgency': GLib.Variant('y', 2), 'transient': GLib.Variant('b', True)}
    arguments = ('app', 0, 'icon', 'summary', 'body', [], hints, -1)
    assert client.call('Notify', '(susssasa{sv}i)', *arguments, **NOTIFICATIONS) == (1,)
    assert client.call('Notify', '(susssasa{sv}i)', *arguments, **NOTIFICATIONS) == (2,)
    assert client.call('Notify', '(susssasa{sv}i)', *arguments[:1], 1, *arguments[2:], **NOTIFICATIONS) == (1,)
    assert notifications.calls('Notify')[0].arguments == \
        ('app', 0, 'icon', 'summary', 'body', [], {'urgency': 2, 'transient': True}, -1)


def test_package_manager_that_only_records(standins, system_peer, device):
    manager = standins.start('package-manager', installs='nothing')
    assert system_peer.call('Install', '(sa{sv})', '/nowhere.rpm', {}, **MANAGER) == ()
    assert manager.calls()[0].arguments == ('/nowhere.rpm', {})
    assert device.packages() == []
    manager.configure('installs', 'rpm')
    with pytest.raises(RemoteError, match='ru.quon.ZARN.Error.FileNotFound'):
        system_peer.call('Install', '(sa{sv})', '/nowhere.rpm', {}, **MANAGER)


def test_package_manager_that_only_records_removes_nothing(standins, system_peer, device, package):
    manager = standins.start('package-manager')
    system_peer.call('Install', '(sa{sv})', str(package('stays')), {}, **MANAGER)
    manager.configure('installs', 'nothing')
    for name in ('stays', 'unknown'):
        assert system_peer.call('Remove', '(sa{sv})', name, {}, **MANAGER) == ()
    assert device.packages() == ['stays']


def test_launcher_model_takes_both_notes(standins, client):
    model = standins.start('launcher-model')
    target = {'name': 'org.orrinmobile.rozzle', 'path': '/LauncherModel',
              'interface': 'org.orrinmobile.rozzle.LauncherModel'}
    assert client.call('updatingStarted', '(ssss)', 'a', '', '', '/a.desktop', **target) == ()
    assert client.call('updatingFinished', '(s)', 'a', **target) == ()
    assert [(call.method, call.arguments) for call in model.calls()] == [
        ('updatingStarted', ('a', '', '', '/a.desktop')), ('updatingFinished', ('a',))]


def test_runtime_manager_takes_the_hook(standins, system_peer):
    hooks = standins.start('runtime-manager')
    assert system_peer.call('OnRemove', '(s)', 'org', name='ru.quon.RuntimeManager', path='/ru/quon/ZARN/Hooks',
                            interface='ru.quon.ZARN.Hooks') == ()
    assert [(call.method, call.arguments) for call in hooks.calls()] == [('OnRemove', ('org',))]


def test_android_support_removes_launchers(standins, system_peer, tmp_path):
    standins.start('android-support')
    launcher = tmp_path / 'zindro_launcher_a.desktop'
    launcher.touch()

    def remove(path):
        return system_peer.call('removeFile', '(s)', str(path), name='com.zelka.zindro', path='/com/zelka/zindro',
                                interface='com.zelka.zindro')

    assert remove(launcher) == (True,)
    assert not launcher.exists()
    for path in (launcher, tmp_path, ''):
        assert remove(path) == (False,)
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


def test_control_from_the_command_line(standins, run, system_peer, environment):
    mce = standins.start('mce')
    assert run('control', 'mce', 'configure', 'display', 'off') == (0, [])
    assert system_peer.call('get_display_status', **MCE) == ('off',)
    assert run('control', 'mce', 'answer', 'get_display_status', '(uint32 5, "x")', '1') == (0, [])
    assert system_peer.call('get_display_status', **MCE) == (5, 'x')
    assert run('control', 'mce', 'refuse', 'get_display_status', 'a.b.C', 'not now') == (0, [])
    with pytest.raises(RemoteError, match='a.b.C: not now'):
        system_peer.call('get_display_status', **MCE)
    assert run('control', 'mce', 'restore', 'get_display_status') == (0, [])
    assert run('control', 'mce', 'delay', 'get_display_status', '1') == (0, [])
    assert run('control', 'mce', 'hang', 'get_display_status') == (0, [])
    hanging = system_peer.start('get_display_status', **MCE)
    mce.wait_call('get_display_status', 4)
    assert run('control', 'mce', 'release', 'get_display_status')[0] == 0
    assert hanging.wait() == ('off',)
    status, lines = run('control', 'mce', 'calls')
    assert status == 0
    assert len(lines) == 4
    assert re.fullmatch(r'\d+\.\d{6} /com/nokia/mce/request com\.nokia\.mce\.request\.get_display_status\(\) \[\] '
                        r'from :1\.\d+', lines[0])
    assert run('control', 'mce', 'vanish') == (0, [])
    assert run('control', 'mce', 'come-back') == (0, [])
    assert run('control', 'mce', 'clear') == (0, [])
    assert run('control', 'mce', 'calls') == (0, [])


def test_control_tells_what_is_wrong(standins, run):
    standin = standins.start('mce')
    assert run('control', 'mce', 'explode')[0] == 1
    assert run('control', 'mce', 'hang')[0] == 1
    assert run('control', 'mce', 'delay', 'get_display_status', 'long')[0] == 1
    assert run('control', 'mce', 'hang', 'Nothing') == (1, ['mce: no method "Nothing"'])
    assert run('control', 'mce', 'unexpected') == (0, ['control: no method "Nothing"'])
    assert standin.unexpected() == ['control: no method "Nothing"']
    standin.unexpected = lambda: []


def test_start_all_and_its_end(processes, environment, system_bus, session_bus):
    everything = processes.start('start-all', [SIMULATOR / 'start-all'], environment)
    processes.wait_until(lambda: 'ready all' in everything.lines(), 'all stand-ins')
    for name in ('ru.quon.developermode', 'com.nokia.mce', 'ru.quon.ZARN',
                 'ru.quon.RuntimeManager', 'com.zelka.zindro'):
        assert system_bus.has_owner(name)
    for name in ('org.freedesktop.Notifications', 'org.orrinmobile.rozzle'):
        assert session_bus.has_owner(name)

    everything.send_signal(signal.SIGTERM)

    assert processes.wait_end(everything) == 0
    system_bus.wait_owner('ru.quon.ZARN', owned=False)
    session_bus.wait_owner('org.freedesktop.Notifications', owned=False)


def test_start_all_ends_when_one_of_them_dies(processes, environment, system_bus, session_bus):
    everything = processes.start('start-all', [SIMULATOR / 'start-all'], environment)
    processes.wait_until(lambda: 'ready all' in everything.lines(), 'all stand-ins')

    os.kill(system_bus.ask('GetConnectionUnixProcessID', '(s)', 'com.nokia.mce')[0], signal.SIGKILL)

    assert processes.wait_end(everything) == 0
    assert 'mce: has ended' in everything.lines()
    assert not system_bus.has_owner('ru.quon.ZARN')
