# SPDX-FileCopyrightText: velmora-installationhandler contributors
# SPDX-License-Identifier: BSD-3-Clause
"""The service ends itself after 30 idle seconds, and not earlier. All cases wait at the same time."""

import os
import time
from pathlib import Path

import pytest
from gi.repository import GLib
from harness.client import NAME
from support.devicestate import REFUSING_POLICY
from support.removalrequests import KNOWN
from support.transactionsignals import error_code, finished, package_found

pytestmark = pytest.mark.side_by_side

# The toolkit's timers may be off by a twentieth.
EARLIEST, LATEST = 28, 32
# Longer than the service stays when it is idle.
LONG = 33
# Enough to tell an end 30 seconds after the start of the service from one 30 seconds after its work.
SHORT = 6

FOLDER = Path('/usr/share/applications')
TRANSACTION = 'org.freedesktop.PackageKit.Transaction'
ASKED = ('warning default: "Unable install package without confirm: The installation is not running in sdk mode. '
         'Silent software instalation is not allowed"')
NO_DEVELOPER_MODE = ('warning default: Could not fetch developer mode state:  '
                     '"The name ru.quon.developermode was not provided by any .service files"')
# The number of calls that the bus lets a program have in flight.
PENDING = 128


class IdleTime:
    """The service becomes idle in the course of a `with` block, and ends 30 seconds later."""

    def __init__(self, program, session_bus):
        self._program = program
        self._session_bus = session_bus

    def __enter__(self):
        self._before = time.monotonic()

    def __exit__(self, *_):
        self._after = time.monotonic()

    def wait_exit(self):
        """Waits until the service has left the bus, or has ended where there is no bus; returns its exit status."""
        self._program.process.end_awaited = True
        if self._session_bus.alive:
            self._session_bus.wait_owner(NAME, owned=False)
        else:
            self._program.wait_exit()
        now = time.monotonic()
        assert now - self._before >= EARLIEST
        assert now - self._after <= LATEST
        return self._program.wait_exit()


@pytest.fixture(autouse=True)
def precedence():
    """Other programs of a busy machine do not delay the end of the service, nor the test that sees it."""
    os.setpriority(os.PRIO_PROCESS, 0, -20)


@pytest.fixture
def idle(program, session_bus):
    return IdleTime(program, session_bus)


@pytest.fixture
def pass_time(processes):
    """Lets time pass, in which no process may end."""
    return lambda seconds: processes.happens(lambda: False, seconds)


def log_without_dialog(service):
    return [line for line in service.log() if ' qml: ' not in line]


def test_after_start(pass_time, program, session_bus, install_and_wait, idle):
    """A look at the service does not count. The next request starts a new process: Known behaviour 10."""
    session_bus.allow_activation()
    with idle:
        program.start()
    pass_time(SHORT)
    program.barrier()

    assert idle.wait_exit() == 0

    assert program.log() == []
    assert install_and_wait([]) == (True, '')
    assert session_bus.has_owner(NAME)


def test_after_installation(pass_time, platform, service, client, signals, dialog, package, idle):
    dialog.use('Confirming')
    file = package('last')
    pass_time(SHORT)

    with idle:
        client.install([file])
        assert signals.wait('installFinished') == (True, '')

    assert idle.wait_exit() == 0
    assert log_without_dialog(service) == [
        'debug default: RPM Package info: "last" "1.0" "The application last"', ASKED]


def test_after_requests_that_end_inside_their_own_start(pass_time, service, client, signals, device, idle):
    pass_time(SHORT)

    with idle:
        for policy in ('', REFUSING_POLICY, ''):
            device.set_policy(policy)
            for _ in range(5):
                client.install([])
        signals.wait('installFinished', 15)

    assert idle.wait_exit() == 0
    assert service.log() == []


def test_after_removals_of_every_outcome(pass_time, standins, manager, service, client, signals, idle):
    """No request is still counted, also none that ended twice or before its beginning was counted."""
    packagekit = standins.start('package-kit')
    pass_time(SHORT)
    found = package_found('a;1;noarch;installed')
    manager.answer('GetPackage', KNOWN, times=2)
    manager.refuse('Remove', 'a.b.Busy', 'in use', times=1)
    packagekit.script('Resolve', [error_code('No.')], times=1)
    packagekit.script('Resolve', [found, finished()], times=2)
    packagekit.script('RemovePackages', [error_code('No.')], times=1)

    client.remove(['1', '2', '3', '4', '5', '6'])
    signals.wait('removalFinished', 6)
    packagekit.kill()
    with idle:
        client.remove(['7'])
        signals.wait('removalFinished', 8)

    assert idle.wait_exit() == 0
    assert sorted(signals.arguments('removalFinished')[:6]) == \
        [(False, 'No.'), (False, 'No.'), (False, 'in use')] + [(True, '')] * 3


def test_after_removals_by_launcher(pass_time, standins, manager, service, client, remove_launcher_and_wait, applications,
                                    idle):
    """No way to remove leaves the count raised."""
    android, packagekit, _ = standins.start('android-support', 'package-kit', 'runtime-manager')
    own = applications / 'own.desktop'
    own.touch()
    for name, text in (('known', ''), ('native', ''), ('android', '[Desktop Entry]\nX-zindro-apkfile=/a.apk\n')):
        (FOLDER / f'{name}.desktop').write_text(text, encoding='utf-8')
    manager.answer('GetPackage', KNOWN, times=2)
    pass_time(SHORT)

    client.remove_launcher(own)
    assert remove_launcher_and_wait(FOLDER / 'known.desktop') == (True, '')
    packagekit.script('SearchFiles', [package_found('native;1-1;noarch;installed'), finished()], times=1)
    assert remove_launcher_and_wait(FOLDER / 'native.desktop') == (True, '')
    with idle:
        client.remove_launcher(FOLDER / 'android.desktop')
        android.wait_call('removeFile')
        service.barrier()

    assert idle.wait_exit() == 0
    assert service.warnings() == []


def test_after_more_removals_than_the_bus_lets_be_in_flight(standins, manager, service, client, signals, idle):
    """A removal that the bus refuses is uncounted twice, but the count is right in the end. Known behaviour 25, 30."""
    names = [f'name{number}' for number in range(1000)]
    standins.start('package-kit')
    manager.answer('GetPackage', KNOWN, times=PENDING)
    manager.hang('Remove', PENDING)
    client.start('removePackages', '(as)', names).wait()
    refused = 2 * (len(names) - PENDING)
    signals.wait('removalFinished', refused)

    with idle:
        manager.release('Remove')
        signals.wait('removalFinished', refused + PENDING)

    assert idle.wait_exit() == 0
    assert len(signals.all) == refused + PENDING


def test_after_every_fault_of_the_peers(platform, service, client, signals, dialog, device, idle):
    """No request is still counted."""
    dialog.use('Confirming')

    def request(success):
        number = len(signals.arguments('installFinished')) + 1
        client.install(['/absent.rpm'])
        assert signals.wait('installFinished', number)[0] is success

    calls = [(platform.developer_mode, 'IsSilentInstallationEnabled'), (platform.mce, 'notification_begin_req'),
             (platform.mce, 'notification_end_req'), (platform.package_manager, 'Install')]
    for peer, method in calls:
        peer.refuse(method, 'a.b.Refused', times=1)
    request(success=False)
    for peer, method in calls:
        peer.answer(method, GLib.Variant('(a{sv})', ({},)), times=1)
    request(success=True)

    device.forbid_installing()
    platform.notifications.refuse('Notify', 'a.b.Refused')
    request(success=False)
    platform.notifications.exit_on('Notify', 'before')
    request(success=False)
    platform.notifications.wait_exit()
    device.set_policy(None)

    platform.mce.exit_on('notification_end_req', 'before')
    platform.package_manager.answer('Install', GLib.Variant('()', ()))
    request(success=True)
    platform.mce.wait_exit()
    platform.package_manager.hang('Install')
    client.install(['/absent.rpm'])
    platform.package_manager.wait_call('Install', 4)
    platform.package_manager.kill()
    signals.wait('installFinished', 6)
    platform.developer_mode.kill()
    with idle:
        request(success=False)

    assert idle.wait_exit() == 0
    assert len(signals.arguments('installFinished')) == 7


def test_after_work_without_session_bus(processes, manager, service, session_bus, client, device, idle):
    manager.hang('Install', 1)
    device.mark_as_emulator()
    client.install(['/first.rpm', '/second.rpm'])
    manager.wait_call('Install')
    processes.kill(session_bus.process)

    with idle:
        manager.release('Install')
        manager.wait_call('Install', 2)

    assert idle.wait_exit() == 0
    assert [call.arguments[0] for call in manager.calls('Install')] == ['/first.rpm', '/second.rpm']


@pytest.mark.parametrize('late', [False, True], ids=['nobody waits', 'a request waits'])
def test_below_forgotten_dialog(manager, service, client, signals, dialog, idle, late):
    """Two answers at once leave a dialog on screen whose request has ended. A request that waits for this dialog is
    lost, since nobody receives the answer that would start it. Known behaviour 59."""
    manager.hang('Install')
    dialog.use('Controlled')
    client.install(['/first.rpm', '/second.rpm'])
    dialog.wait_shown(1)
    dialog.answer('requestInstall', 'dismissed', number=1)
    dialog.wait_shown(2)
    manager.wait_call('Install')

    with idle:
        manager.release('Install')
        assert signals.wait('installFinished') == (False, 'The user cancelled the installation')
    assert 'dialog 2 hides' not in service.process.text
    if late:
        client.install(['/late.rpm'])
        dialog.answer('dismissed', number=2)

    assert idle.wait_exit() == 0
    assert signals.names() == ['needConfirm', 'needConfirm', 'installFinished']
    assert log_without_dialog(service) == [NO_DEVELOPER_MODE] * 2


def test_not_after_search_that_finds_nobody(pass_time, standins, service, client, remove_and_wait, announced):
    """Other removals that end do not change that. Known behaviour 22."""
    packagekit = standins.start('package-kit')
    launcher = FOLDER / 'nobodys.desktop'
    launcher.touch()
    client.remove_launcher(launcher)
    packagekit.wait_call('SearchFiles')
    assert remove_and_wait(['absent']) == (True, '')

    pass_time(LONG)

    assert announced() == ['removalFinished']
    assert service.warnings() == []


def test_not_after_request_without_dialog(pass_time, service, client, announced, dialog):
    """Other requests that end do not change that. Known behaviour 52."""
    dialog.remove()
    client.install(['/stuck.rpm'])
    client.install([])

    pass_time(LONG)

    assert announced() == ['needConfirm', 'installFinished']


def test_not_while_asking(pass_time, service, client, announced, dialog):
    """After the answer the service does what has been waiting."""
    dialog.use('Controlled')
    client.install(['/first.rpm'])
    dialog.wait_shown(1)
    client.install(['/second.rpm'])

    pass_time(LONG)

    assert announced() == ['needConfirm']
    dialog.answer('dismissed', number=1)
    assert dialog.wait_shown(2)['fileName'] == '/second.rpm'


def test_not_while_installing(pass_time, manager, service, client, signals, device, idle):
    """Other requests that end meanwhile do not change that."""
    manager.hang('Install', 1)
    device.mark_as_emulator()
    client.install(['/slow.rpm'])
    manager.wait_call('Install')
    client.install([])
    client.install(['/quick.rpm'])
    signals.wait('installFinished', 2)

    pass_time(LONG)

    service.barrier()
    assert len(signals.all) == 2
    with idle:
        manager.release('Install')
        assert signals.wait('installFinished', 3) == (True, '')
    assert idle.wait_exit() == 0


def test_not_while_removing(pass_time, standins, manager, service, signals, remove_and_wait, idle):
    """However long the back ends take, and though other removals end meanwhile. No time-out of QtDBus ends the
    removals: Known behaviour 33."""
    packagekit = standins.start('package-kit')
    manager.answer('GetPackage', KNOWN, times=1)
    manager.hang('Remove', 1)
    packagekit.script('Resolve', [package_found('b;1;noarch;installed'), finished()], times=1)
    packagekit.script('RemovePackages', [], times=1)
    assert remove_and_wait(['a', 'b', 'c']) == (True, '')
    removal = packagekit.wait_call('RemovePackages')

    pass_time(LONG)

    service.barrier()
    assert len(signals.all) == 1
    packagekit.emit(removal.path, TRANSACTION, *finished())
    assert signals.wait('removalFinished', 2) == (True, '')
    with idle:
        manager.release('Remove')
        assert signals.wait('removalFinished', 3) == (True, '')
    assert idle.wait_exit() == 0
    assert service.warnings() == []
