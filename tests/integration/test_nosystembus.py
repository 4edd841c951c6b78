# SPDX-FileCopyrightText: velmora-installationhandler contributors
# SPDX-License-Identifier: BSD-3-Clause
"""Devices whose system bus is missing, or goes away: every call there fails in its own way."""

from pathlib import Path

import pytest
from support.transactionsignals import finished, package_found

UNKNOWN = 'Could not fetch developer mode state:  "Not connected to D-Bus server"'
A = 'a;1-1;noarch;installed'
TEXT = 'Not connected to the system bus'
LOST = 'Not connected to D-Bus server'
UNKNOWN_OWNER = f'Error on resolving desktop file owner PackageKit::Transaction::ErrorInternalError "{TEXT}"'
END = 'deleting UninstallTransactionPkgKit'
DISCONNECTED = (False, 'zarn_installation_error_desc_Disconnected (code: Disconnected)')


@pytest.fixture(params=['missing', 'lost'])
def lonely_service(request, processes, system_bus, program):
    """The service without a system bus, from the start on or since then."""
    if request.param == 'lost':
        program.start()
    processes.kill(system_bus.process)
    return program if request.param == 'lost' else program.start()


def test_service_is_there(lonely_service, install_and_wait):
    """Known behaviour 9."""
    assert install_and_wait([]) == (True, '')
    assert lonely_service.log() == []


def test_user_is_asked_and_nothing_can_be_installed(lonely_service, signals, install_and_wait, dialog):
    dialog.use('Confirming')

    assert install_and_wait(['/absent.rpm'], sdk_mode=True) == DISCONNECTED
    assert sorted(signals.names()) == ['installFinished', 'needConfirm', 'removalFinished']
    assert signals.arguments('removalFinished') == [(False, TEXT)]
    lonely_service.barrier()
    assert lonely_service.warnings() == [UNKNOWN]


def test_user_may_decline(lonely_service, install_and_wait, dialog):
    dialog.use('Dismissing')

    assert install_and_wait(['/absent.rpm']) == (False, 'The user cancelled the installation')
    assert lonely_service.warnings() == [UNKNOWN]


def test_emulator_installs_nothing_either(lonely_service, signals, install_and_wait, device):
    device.mark_as_emulator()

    assert install_and_wait(['/one.rpm', '/two.rpm']) == (False, f'{DISCONNECTED[1]}\n{DISCONNECTED[1]}')
    assert signals.names() == ['installFinished']
    assert lonely_service.warnings() == [UNKNOWN] * 2


def test_policy_still_holds(lonely_service, install_and_wait, device, session_monitor):
    device.forbid_installing()

    assert install_and_wait(['/absent.rpm'])[0] is False
    assert 'Notify' in [message.member for message in session_monitor.messages(kind='method-call')]


@pytest.fixture
def launcher():
    """Writes a launcher of the system."""
    path = Path('/usr/share/applications/a.desktop')

    def write(text='[Desktop Entry]\n'):
        path.write_text(text, encoding='ascii')
        return path
    yield write
    path.unlink()


def test_every_name_fails_once(launcher_model, lonely_service, client, signals):
    """Known behaviour 42."""
    client.remove(['a', 'b'])

    signals.wait('removalFinished', 2)
    lonely_service.wait_for_log(END, 2)
    assert signals.arguments('removalFinished') == [(False, TEXT)] * 2
    assert [call.arguments for call in launcher_model.calls('updatingFinished')] == [('a',), ('b',)]
    lines = [[f'Uninstall "{name}" via RPM',
              f'UninstallTransactionPkgKit::start: ("{name}")',
              f'Resolve Error: ("{name}") PackageKit::Transaction::ErrorInternalError "{TEXT}"',
              f'void Package::UninstallTransactionPkgKit::giveUp(const QString&) "{TEXT}"',
              f'Failed to uninstall "{name}" "{TEXT}"', END] for name in 'ab']
    assert sorted(lonely_service.log()) == sorted('debug default: ' + line for line in sum(lines, []))


def test_launcher_has_no_owner(lonely_service, client, signals, launcher):
    assert client.remove_launcher(launcher()) == ()

    lonely_service.wait_for_log(UNKNOWN_OWNER)
    lonely_service.barrier()
    assert lonely_service.warnings() == [UNKNOWN_OWNER]
    assert signals.all == []
    assert launcher().exists()


def test_android_application_stays(lonely_service, client, signals, launcher):
    path = launcher('[Desktop Entry]\nX-zindro-apkfile=/a.apk\n')

    client.remove_launcher(path)

    last = ('InstallationHandler::removePackageByDesktopFile(const QString&)::<lambda(const QString&, const QString&)> '
            f'failed to remove android app: "{path}"')
    lonely_service.wait_for_log(last)
    assert lonely_service.warnings() == [UNKNOWN_OWNER, last]
    assert signals.all == []


def test_launcher_of_the_user_goes_without_its_hook(lonely_service, client, signals, applications):
    path = applications / 'a.desktop'
    path.touch()

    client.remove_launcher(path)

    assert not path.exists()
    assert lonely_service.warnings() == [
        f'Failed to call ZARN hook \'OnRemove\' for Runtime Manager service:  "{LOST}"']
    assert signals.all == []


@pytest.fixture
def peers(standins):
    """Both back ends; their exit does not fail the test."""
    both = standins.start('package-manager', 'package-kit')
    for peer in both:
        peer.process.end_awaited = True
    standins.package_manager.configure('installs', 'nothing')
    for method in ('Resolve', 'SearchFiles'):
        standins.package_kit.script(method, [package_found(A), finished()])
    yield standins
    for peer in both:
        peer.wait_exit()


def check_next_request(service, client, signals):
    """It fails, as it must, and the service goes on."""
    count = len(signals.arguments('removalFinished'))
    client.remove(['next'])
    assert signals.wait('removalFinished', count + 1) == (False, TEXT)
    installed = len(signals.arguments('installFinished'))
    client.install([])
    assert signals.wait('installFinished', installed + 1) == (True, '')
    assert service.alive


def test_bus_is_lost_before_packagekit_answers(peers, processes, system_bus, service, client, signals):
    """The library reports both the error and the end, and each is answered. Known behaviour 25."""
    peers.package_kit.hang('Resolve')
    client.remove(['a'])
    peers.package_kit.wait_call('Resolve')

    processes.kill(system_bus.process)

    signals.wait('removalFinished', 2)
    service.wait_for_log(END)
    assert signals.arguments('removalFinished') == [(False, LOST), (True, '')]
    check_next_request(service, client, signals)


def test_bus_is_lost_between_packagekits_answers(peers, processes, system_bus, service, client, signals):
    """A package has been found, so the removal goes on after the error and fails a second time. Known behaviour 29."""
    peers.package_kit.hang('Resolve')
    client.remove(['a'])
    path = peers.package_kit.wait_call('Resolve').path
    peers.package_kit.emit(path, 'org.freedesktop.PackageKit.Transaction', *package_found(A))
    service.wait_for_log('Resolved: ')

    processes.kill(system_bus.process)

    signals.wait('removalFinished', 2)
    service.wait_for_log(END)
    assert signals.arguments('removalFinished') == [(False, LOST), (False, TEXT)]
    assert service.warnings() == ['Transaction count out of sync!']
    assert service.debugs()[3:] == [
        f'Resolve Error: ("a") PackageKit::Transaction::ErrorInternalError "{LOST}"',
        f'void Package::UninstallTransactionPkgKit::giveUp(const QString&) "{LOST}"',
        f'Failed to uninstall "a" "{LOST}"',
        f'Uninstall Error: ("a") PackageKit::Transaction::ErrorInternalError "{TEXT}"',
        f'void Package::UninstallTransactionPkgKit::giveUp(const QString&) "{TEXT}"',
        f'Failed to uninstall "a" "{TEXT}"',
        END]
    check_next_request(service, client, signals)


def test_bus_is_lost_while_packagekit_searches(
        peers, processes, system_bus, service, client, signals, install_and_wait):
    """The library does not notice, so the removal has no end."""
    peers.package_kit.script('Resolve', [package_found(A)])
    client.remove(['a'])
    service.wait_for_log('Resolved: ')

    processes.kill(system_bus.process)

    assert install_and_wait([]) == (True, '')
    assert signals.names() == ['installFinished']
    check_next_request(service, client, signals)


def test_bus_is_lost_while_the_owner_is_searched(peers, processes, system_bus, service, client, signals, launcher):
    peers.package_kit.hang('SearchFiles')
    client.remove_launcher(launcher())
    peers.package_kit.wait_call('SearchFiles')

    processes.kill(system_bus.process)

    service.wait_for_log(f'Error on resolving desktop file owner PackageKit::Transaction::ErrorInternalError "{LOST}"')
    check_next_request(service, client, signals)
