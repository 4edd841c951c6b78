# SPDX-FileCopyrightText: velmora-installationhandler contributors
# SPDX-License-Identifier: BSD-3-Clause
"""Installations in sdk mode, which first ask for the removal of the installed version."""

import pytest
from harness.client import Client
from support.records import calls_in_order
from support.packagekit import install
from support.removalrequests import KNOWN


@pytest.fixture(autouse=True)
def developer_mode(standins):
    """Nobody is asked."""
    return standins.start('developer-mode', silent_installation=True)


@pytest.fixture
def manager(manager):
    """The package manager knows every name."""
    manager.answer('GetPackage', KNOWN)
    return manager


def removed(manager):
    """The names and options of all removals."""
    return [call.arguments for call in manager.calls('Remove')]


def test_two_files_two_removals_and_one_installation(service, signals, install_and_wait, announced, manager, package,
                                                     system_calls):
    """The removals are sent before anything else, and nothing waits for their end. Known behaviour 13."""
    files = [package('first'), package('second')]
    manager.hang('Remove')

    assert install_and_wait(files, sdk_mode=True) == (True, '')
    assert announced() == ['installFinished']
    manager.release('Remove')
    signals.wait('removalFinished', 2)
    assert signals.all[1:] == [('removalFinished', 'bs', (True, ''))] * 2
    calls = system_calls()
    assert [(call.member, call.signature, call.arguments) for call in calls] == [
        ('GetPackage', 's', ('first',)), ('Remove', 'sa{sv}', ('first', {})),
        ('GetPackage', 's', ('second',)), ('Remove', 'sa{sv}', ('second', {})),
        ('IsSilentInstallationEnabled', '', ()), ('Install', 'sa{sv}', (str(files[0]), {})),
        ('IsSilentInstallationEnabled', '', ()), ('Install', 'sa{sv}', (str(files[1]), {}))]
    assert [line for line in service.debugs() if line.startswith('RPM Package info')] == \
        [f'RPM Package info: "{name}" "1.0" "The application {name}"' for name in ('first', 'second')] * 2


@pytest.mark.parametrize('signature, flags, options', [
    ('asb', (True,), {}),
    ('asbb', (True, False), {}),
    ('asbb', (True, True), {'KeepUserData': True}),
])
def test_user_data_flag_is_for_the_removal(service, client, signals, manager, package, signature, flags, options):
    """Known behaviour 6."""
    client.call('installFiles', f'({signature})', [str(package('app'))], *flags)

    signals.wait('removalFinished')
    signals.wait('installFinished')
    assert removed(manager) == [('app', options)]
    assert [call.arguments[1] for call in manager.calls('Install')] == [{}]


@pytest.mark.parametrize('signature, flags', [('as', ()), ('asb', (False,)), ('asbb', (False, True))])
def test_nothing_is_removed_without_sdk_mode(service, client, signals, manager, package, dialog, signature, flags):
    """Known behaviour 6."""
    dialog.use('Confirming')

    client.call('installFiles', f'({signature})', [str(package('app'))], *flags)

    assert signals.wait('installFinished') == (True, '')
    service.barrier()
    assert [call.method for call in manager.calls()] == ['Install']
    assert signals.names() == ['needConfirm', 'installFinished']


def test_file_that_cannot_be_read_has_no_name(service, client, signals, manager, package, tmp_path):
    """The back ends are asked nevertheless."""
    text = tmp_path / 'text.rpm'
    text.write_text('no package', encoding='ascii')

    client.install(['/absent.rpm', package('app'), text], sdk_mode=True)

    signals.wait('removalFinished', 3)
    assert signals.wait('installFinished') == (True, '')
    assert [call.arguments for call in manager.calls('GetPackage')] == [('',), ('app',), ('',)]
    assert removed(manager) == [('', {}), ('app', {}), ('', {})]
    assert service.debugs().count('Uninstall "" via ZARN') == service.debugs().count('Uninstalled ""') == 2


def test_unknown_file_is_left_to_packagekit(standins, service, client, signals, system_bus):
    standins.start('package-manager', installs='nothing')
    packagekit = standins.start('package-kit')

    client.install(['/absent.rpm'], sdk_mode=True)

    assert signals.wait('removalFinished') == (True, '')
    signals.wait('installFinished')
    assert packagekit.wait_call('Resolve').arguments == (4, [''])
    service.barrier()
    assert sorted(service.log()) == sorted('debug default: ' + line for line in (
        'Uninstall "" via RPM', 'UninstallTransactionPkgKit::start: ("")', 'Uninstalled ""',
        'deleting UninstallTransactionPkgKit'))


@pytest.mark.parametrize('removed_before', [False, True], ids=['first', 'after a removal'])
def test_native_package_is_told_of_each_time(standins, service, client, signals, package, removed_before):
    """Reading a package file leaves librpm in a state in which the installed packages' launchers are found, and the
    other way round."""
    manager, packagekit, launcher_model = standins.start('package-manager', 'package-kit', 'launcher-model')
    manager.configure('installs', 'nothing')
    launchers = [f'/usr/share/applications/{name}.desktop' for name in ('one', 'other')]
    file = package('native', files=dict.fromkeys(launchers, '[Desktop Entry]\n'))
    install(file)
    requests = [lambda: client.install([file], sdk_mode=True)] * 2
    if removed_before:
        requests.insert(0, lambda: client.remove(['native']))

    for count, request in enumerate(requests, 1):
        request()
        assert signals.wait('removalFinished', count) == (True, '')

    signals.wait('installFinished', 2)
    told = [('updatingStarted', ('native', '', '', launcher)) for launcher in launchers]
    seen = [call for call in calls_in_order(packagekit, launcher_model) if call[0] in ('updatingStarted', 'Resolve')]
    assert seen == [*told, ('Resolve', (4, ['native']))] * len(requests)
    assert service.warnings() == []


def test_names_are_read_as_the_caller_wrote_them(service, client, signals, manager, package):
    """A URL is a file for the installation, but none for the removal. Known behaviour 14."""
    file = package('app')

    client.install([file.as_uri(), f' {file}', file], sdk_mode=True)

    signals.wait('removalFinished', 3)
    signals.wait('installFinished')
    assert removed(manager) == [('', {}), ('', {}), ('app', {})]
    assert [call.arguments[0] for call in manager.calls('Install')] == [str(file)] * 3


def test_empty_list_removes_nothing(service, install_and_wait, announced, manager):
    assert install_and_wait([], sdk_mode=True, keep_userdata=True) == (True, '')
    assert announced() == ['installFinished']
    assert manager.calls() == []


def test_failed_removal_does_not_stop_the_installation(service, client, signals, manager, package):
    manager.refuse('Remove', 'a.b.Busy', 'in use')

    client.install([package('app')], sdk_mode=True)

    assert signals.wait('removalFinished') == (False, 'in use')
    assert signals.wait('installFinished') == (True, '')
    service.barrier()
    assert sorted(signals.names()) == ['installFinished', 'removalFinished']


def test_installed_version_goes_even_where_installing_is_forbidden(service, signals, install_and_wait, manager, device,
                                                                   package):
    """The policy is read when the installation begins. Known behaviour 15."""
    device.forbid_installing()

    assert install_and_wait([package('app')], sdk_mode=True)[0] is False
    assert signals.wait('removalFinished') == (True, '')
    assert [call.method for call in manager.calls()] == ['GetPackage', 'Remove']


def test_removal_comes_before_the_queue(service, client, signals, manager, dialog, package):
    """It does not wait for the dialog, though its request does."""
    dialog.use('Controlled')
    client.install(['/asking.rpm'])
    dialog.wait_shown()

    client.install([package('app')], sdk_mode=True)

    assert signals.wait('removalFinished') == (True, '')
    service.barrier()
    assert [call.method for call in manager.calls()] == ['GetPackage', 'Remove']
    dialog.answer('dismissed')
    signals.wait('installFinished', 2)
    assert len(manager.calls('Install')) == 1


@pytest.mark.parametrize('keep', [False, True])
def test_older_version_makes_room(standins, service, client, signals, device, package, system_bus, processes, keep):
    """The newer version would refuse to be replaced."""
    manager = standins.start('package-manager')
    peer = Client(system_bus.connect(), processes)
    peer.call('Install', '(sa{sv})', str(package('app', version='2')), {}, name='ru.quon.ZARN', path='/ru/quon/ZARN',
              interface='ru.quon.ZARN')
    data = device.home / '.local/share/app/file'
    data.touch()
    manager.hang('Install')

    client.install([package('app', version='1')], sdk_mode=True, keep_userdata=keep)
    assert signals.wait('removalFinished') == (True, '')
    assert device.packages() == []
    manager.release('Install')

    assert signals.wait('installFinished') == (True, '')
    assert device.packages() == ['app']
    assert data.exists() == keep
