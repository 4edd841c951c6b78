# SPDX-FileCopyrightText: velmora-installationhandler contributors
# SPDX-License-Identifier: BSD-3-Clause
"""Removals by the real PackageKit, which asks polkit whether the session's user may remove packages."""

import shutil
from pathlib import Path

import pytest
from harness.bus import Bus
from harness.client import NAME, Client
from harness.service import PROGRAM, Service
from harness.signalrecorder import SignalRecorder
from support.packagekit import install
from support.polkit import LoginSession, Rules

RULE, LOCAL_RULE = '50-velmora-installationhandler.rules', '50-velmora-installationhandler-local.rules'
LAUNCHER = Path('/usr/share/applications/native.desktop')
REMOVED = (True, '')
REFUSED = (False, 'Failed to obtain authentication.')
GROUPS, USERS = Path('/etc/group'), Path('/etc/passwd')


@pytest.fixture
def rules(tmp_path):
    """The rules of polkit."""
    changed = Rules(tmp_path / 'rules')
    yield changed
    changed.restore()


@pytest.fixture(autouse=True)
def native(packagekit, package):
    """A native package is installed, which has a launcher."""
    install(package('native'))


def is_installed(device):
    return 'native' in device.packages() and LAUNCHER.is_file()


ASKING = pytest.mark.parametrize('ask', [
    lambda client: client.remove(['native']), lambda client: client.remove_launcher(LAUNCHER),
], ids=['by name', 'by launcher'])


@ASKING
def test_with_the_rule(rules, service, client, signals, device, ask):
    rules.use_only(RULE)

    ask(client)

    assert signals.wait('removalFinished') == REMOVED
    assert not is_installed(device)


@ASKING
def test_without_the_rule(rules, standins, service, client, signals, announced, device, ask):
    """The package stays, and the home screen is told of the end."""
    rules.use_only()
    launcher_model = standins.start('launcher-model')

    ask(client)

    assert signals.wait('removalFinished') == REFUSED
    assert announced() == ['removalFinished']
    assert is_installed(device)
    assert [(call.method, call.arguments) for call in launcher_model.calls()] == [
        ('updatingStarted', ('native', '', '', str(LAUNCHER))), ('updatingFinished', ('native',))]
    text = REFUSED[1]
    service.wait_for_log('deleting UninstallTransactionPkgKit')
    assert f'Uninstall Error: ("native") PackageKit::Transaction::ErrorNotAuthorized "{text}"' in service.debugs()
    assert f'Failed to uninstall "native" "{text}"' in service.debugs()


def test_in_sdk_mode_without_the_rule(rules, standins, service, client, signals, device, package):
    """The installation goes on beside the removal that is refused."""
    rules.use_only()
    manager = standins.start('package-manager', installs='nothing')
    device.mark_as_emulator()

    client.install([package('native', version='2')], sdk_mode=True)

    assert signals.wait('installFinished') == (True, '')
    assert signals.wait('removalFinished') == REFUSED
    assert len(manager.calls('Install')) == 1
    assert is_installed(device)


@pytest.fixture
def log_in():
    """Puts a process into a login session of a state, at a seat."""
    sessions = []

    def start(process, state, seat):
        sessions.append(LoginSession(state, seat))
        sessions[-1].add(process)
    yield start
    for session in sessions:
        session.end()


@pytest.mark.parametrize('state, seat, outcome', [
    ('active', 'seat0', REMOVED), ('online', 'seat0', REFUSED), ('active', None, REFUSED),
], ids=['active and local', 'in the background', 'remote'])
def test_with_the_narrow_rule(rules, log_in, service, remove_and_wait, device, state, seat, outcome):
    rules.use_only(LOCAL_RULE)
    log_in(service.process, state, seat)

    assert remove_and_wait(['native']) == outcome
    assert is_installed(device) == (outcome == REFUSED)


def test_with_the_narrow_rule_and_without_login_sessions(rules, remove_and_wait, service, device):
    """Where logind does not run, no session is active and local."""
    rules.use_only(LOCAL_RULE)

    assert remove_and_wait(['native']) == REFUSED
    assert is_installed(device)


@pytest.fixture
def start_session(processes, system_bus, environment):
    """Starts the session of another user, with the service: its client and its signals."""
    before = GROUPS.read_bytes(), USERS.read_bytes()
    number, runtime = 100002, Path('/run/user/100002')

    def start(groups):
        with USERS.open('a', encoding='ascii') as users:
            print(f'guest:x:{number}:{number}::{runtime}:/bin/sh', file=users)
        GROUPS.write_text(groups, encoding='ascii')
        runtime.mkdir(mode=0o700)
        shutil.chown(runtime, number, number)
        address = f'unix:path={runtime}/bus'
        prefix = ['setpriv', '--reuid=guest', f'--regid={number}', '--init-groups', 'env', f'HOME={runtime}',
                  f'XDG_RUNTIME_DIR={runtime}', f'DBUS_SESSION_BUS_ADDRESS={address}']
        daemon = processes.start('bus of the guest', [*prefix, 'dbus-daemon', '--session', '--address=unix:runtime=yes',
                                                      '--nofork', '--print-address'])
        processes.wait_until(lambda: address in daemon.text, 'start of the bus')
        bus = Bus(address, number, processes)
        service = Service(processes, bus, system_bus, environment)
        service.process = processes.start('service', [*prefix, PROGRAM], environment)
        bus.wait_owner(NAME)
        assert Path(f'/proc/{service.process.pid}').owner() == 'guest'
        return Client(bus.connection, processes), SignalRecorder(bus.connection, processes)
    yield start
    GROUPS.write_bytes(before[0])
    USERS.write_bytes(before[1])
    shutil.rmtree(runtime)


@pytest.mark.parametrize('group, outcome', [('velmora:x:100000:', REFUSED), ('velmora:x:100000:guest', REMOVED)],
                         ids=['not in the group', 'in the group'])
def test_session_of_another_user(rules, start_session, device, group, outcome):
    """The rule is for members of the group, whatever their own group is."""
    rules.use_only(RULE)
    client, signals = start_session(GROUPS.read_text(encoding='ascii').replace('velmora:x:100000:', group))

    client.remove(['native'])

    assert signals.wait('removalFinished') == outcome
    assert is_installed(device) == (outcome == REFUSED)
