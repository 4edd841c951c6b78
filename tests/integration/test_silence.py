# SPDX-FileCopyrightText: velmora-installationhandler contributors
# SPDX-License-Identifier: BSD-3-Clause
"""Peers that never answer: QtDBus's time-out ends the call. All cases wait at the same time."""

import time
from pathlib import Path

import pytest
from support.otherservice import OtherService
from support.removalrequests import KNOWN
from support.transactionsignals import finished, package_found

pytestmark = pytest.mark.side_by_side

# QtDBus waits 25 seconds for a reply. Other programs measure a little less when they begin later.
SHORTEST = 24

LAUNCHER = Path('/usr/share/applications/foo.desktop')
NO_REPLY = ('"Did not receive a reply. Possible causes include: the remote application did not send a reply, the message '
            'bus security policy blocked the reply, the reply timeout expired, or the network connection was broken."')


@pytest.fixture
def own_launcher(applications):
    """A launcher of the user's own."""
    launcher = applications / 'foo.desktop'
    launcher.touch()
    return launcher


class Silence:
    """A `with` block that lasts as long as QtDBus waits for a reply."""

    def __enter__(self):
        self._before = time.monotonic()

    def __exit__(self, *error):
        if error[0] is None:
            assert time.monotonic() - self._before >= SHORTEST


def test_of_developer_mode(standins, manager, service, client, signals, dialog):
    """The service blocks meanwhile; other requests wait for it."""
    developer_mode = standins.start('developer-mode', silent_installation=True)
    standins.start('package-kit')
    developer_mode.hang('IsSilentInstallationEnabled', 1)
    dialog.use('Confirming')

    with Silence():
        request = client.start('installFiles', '(asb)', ['/absent.rpm'], True)
        developer_mode.wait_call('IsSilentInstallationEnabled')
        other = client.start('installFiles', '(asb)', ['/other.rpm'], True)
        request.wait()

    signals.wait('installFinished', 2)
    signals.wait('removalFinished', 2)
    other.wait()
    assert sorted(set(signals.names())) == ['installFinished', 'needConfirm', 'removalFinished']
    assert signals.arguments('installFinished') == [(True, '')] * 2
    service.barrier()
    assert service.warnings() == ['Could not fetch developer mode state:  ' + NO_REPLY]
    assert sorted(call.arguments[0] for call in manager.calls('Install')) == ['/absent.rpm', '/other.rpm']


@pytest.mark.parametrize('method', ['Introspect', 'notification_begin_req'])
def test_of_mce(standins, manager, service, client, signals, announced, dialog, method):
    """The dialog is shown after all."""
    mce = standins.start('mce')
    mce.hang(method, 1)
    dialog.use('Confirming')

    with Silence():
        client.start('installFiles', '(as)', ['/absent.rpm']).wait()

    assert signals.wait('installFinished') == (True, '')
    assert announced() == ['needConfirm', 'installFinished']
    assert [call.method for call in mce.calls()] == \
        ['get_display_status', 'notification_begin_req', 'notification_end_req']


def test_of_launcher_model(launcher_model, manager, service, client, signals, remove_and_wait, own_launcher):
    """It delays a removal and does no more. Known behaviour 3."""
    manager.answer('GetPackage', KNOWN)
    for method in ('updatingStarted', 'updatingFinished'):
        launcher_model.hang(method, 1)

    with Silence():
        client.start('removePackages', '(as)', ['foo']).wait()
    with Silence():
        assert signals.wait('removalFinished') == (True, '')

    assert len(manager.calls('Remove')) == 1
    assert service.warnings() == []
    assert remove_and_wait(['foo']) == (True, '')


def test_of_runtime_manager(standins, service, client, signals, own_launcher):
    """The launcher is deleted after all. A search without an end keeps the service from ending after its own 30 idle
    seconds, which no removal of an own launcher starts anew. Known behaviour 3, 33."""
    hooks, packagekit = standins.start('runtime-manager', 'package-kit')
    packagekit.script('SearchFiles', [])
    LAUNCHER.touch()
    client.remove_launcher(LAUNCHER)
    packagekit.wait_call('SearchFiles')
    hooks.hang('OnRemove', 1)

    with Silence():
        client.start('removePackageByDesktopFile', '(s)', str(own_launcher)).wait()

    warning = f"Failed to call ZARN hook 'OnRemove' for Runtime Manager service:  {NO_REPLY}"
    assert service.warnings() == [warning]
    assert not own_launcher.exists()
    own_launcher.touch()
    client.remove_launcher(own_launcher)
    service.barrier()
    assert service.warnings() == [warning]
    assert signals.names() == []


def test_of_android_support(standins, service, client, signals):
    android, _ = standins.start('android-support', 'package-kit')
    android.hang('removeFile', 1)
    LAUNCHER.write_text('[Desktop Entry]\nX-zindro-apkfile=/foo.apk\n', encoding='utf-8')

    with Silence():
        client.remove_launcher(LAUNCHER)
        service.wait_for_log('failed to remove android app')

    assert service.log() == ['warning default: InstallationHandler::removePackageByDesktopFile(const QString&)::'
                             '<lambda(const QString&, const QString&)> '
                             f'failed to remove android app: "{LAUNCHER}"']
    assert LAUNCHER.exists()
    client.remove_launcher(LAUNCHER)
    android.wait_call('removeFile', 2)
    service.barrier()
    assert not LAUNCHER.exists()
    assert signals.names() == []


def test_of_packagekit(standins, service, client, remove_and_wait, signals):
    """Four requests at once, each with a method of its own that does not answer. Known behaviour 32."""
    packagekit = standins.start('package-kit')
    packagekit.hang('CreateTransaction', 1)
    client.remove(['asked'])
    packagekit.wait_call('CreateTransaction')
    packagekit.hang('Resolve', 1)
    client.remove(['resolved'])
    packagekit.wait_call('Resolve')
    packagekit.script('Resolve', [package_found('removed;1-1;noarch;installed'), finished()], times=1)
    packagekit.hang('RemovePackages', 1)
    client.remove(['removed'])
    packagekit.wait_call('RemovePackages')
    packagekit.hang('SearchFiles', 1)
    LAUNCHER.write_text('[Desktop Entry]\n', encoding='utf-8')
    client.remove_launcher(LAUNCHER)
    packagekit.wait_call('SearchFiles')

    signals.wait('removalFinished', 5)
    service.wait_for_log('Error on resolving desktop file owner')
    service.barrier()

    silence = NO_REPLY.partition('Possible')[0]

    def reports(name):
        """How a removal was reported, one or more times."""
        return [line.replace(f'"{name}"', '').partition(silence)[0].split() for line in service.debugs()
                if line.startswith(('Uninstalled', 'Failed to uninstall')) and f'"{name}"' in line]

    failed, succeeded = ['Failed', 'to', 'uninstall'], ['Uninstalled']
    assert reports('asked') == [failed, succeeded]
    assert reports('resolved') == [failed, succeeded]
    assert reports('removed') == [failed]
    assert [line.partition(silence)[0].rstrip() for line in service.warnings()] == [
        'Transaction count out of sync!',
        'Error on resolving desktop file owner PackageKit::Transaction::ErrorInternalError']

    assert remove_and_wait(['next']) == (True, '')


def test_of_service(session_bus, run_client):
    """The program as a client gives up."""
    other = OtherService(session_bus.connection, lambda _invocation: None)

    with Silence():
        outcome = run_client('install', '/tmp/a.rpm')

    assert outcome == (1, ['warning default: int main(int, char**) failed to request file installation:'])
    assert len(other.calls) == 1
