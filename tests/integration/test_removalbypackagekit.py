# SPDX-FileCopyrightText: velmora-installationhandler contributors
# SPDX-License-Identifier: BSD-3-Clause
"""Removals of native packages by name, where PackageKit does what it is told."""

from pathlib import Path

import pytest
from gi.repository import GLib
from support.records import calls_in_order
from support.packagekit import install
from support.transactionsignals import EXIT_FAILED, error_code, finished, item_progress, package_found, packages_found

APPLICATIONS = Path('/usr/share/applications')
TRANSACTION = 'org.freedesktop.PackageKit.Transaction'
A, B = 'a;1-1;aarch64;installed', 'a;1-1;noarch;installed'
REQUESTS = ('GetPackage', 'updatingStarted', 'updatingFinished', 'Resolve', 'RemovePackages')
GIVE_UP = 'void Package::UninstallTransactionPkgKit::giveUp(const QString&) '

BEGINNING = ['Uninstall "a" via RPM', 'UninstallTransactionPkgKit::start: ("a")']
END = 'deleting UninstallTransactionPkgKit'


@pytest.fixture
def packagekit(standins):
    """The stand-in, without the package manager."""
    return standins.start('package-kit')


def requests_in_order(*standins):
    """The requests among the calls; the library of PackageKit makes many more."""
    return [step for step in calls_in_order(*standins) if step[0] in REQUESTS]


def test_package_is_resolved_and_removed(packagekit, service, remove_and_wait, announced, system_calls):
    packagekit.script('Resolve', [package_found(A, 'An "odd" summary'), finished()])
    packagekit.script('RemovePackages', [item_progress(A, 50), finished(runtime=17)])

    assert remove_and_wait(['a']) == (True, '')
    assert announced() == ['removalFinished']
    calls = [call for call in system_calls() if call.member in REQUESTS]
    resolve, remove = packagekit.calls('Resolve') + packagekit.calls('RemovePackages')
    assert resolve.path != remove.path
    assert [(call.destination, call.path, call.interface, call.member, call.signature, call.arguments)
            for call in calls] == [
        ('ru.quon.ZARN', '/ru/quon/ZARN', 'ru.quon.ZARN', 'GetPackage', 's', ('a',)),
        ('org.freedesktop.PackageKit', resolve.path, TRANSACTION, 'Resolve', 'tas', (4, ['a'])),
        ('org.freedesktop.PackageKit', remove.path, TRANSACTION, 'RemovePackages', 'tasbb', (2, [A], False, False))]
    service.wait_for_log(END)
    assert service.log() == ['debug default: ' + line for line in (
        *BEGINNING,
        f'Resolved: PackageKit::Transaction::InfoInstalled "{A}" "An \\"odd\\" summary"',
        'slotUninstallFinished: ("a") PackageKit::Transaction::ExitSuccess 17',
        'Uninstalled "a"',
        END)]


@pytest.mark.parametrize('found', [[package_found(A), package_found(B, info=31)], [packages_found(A, B)]],
                         ids=['one by one', 'at once'])
def test_whatever_is_found_goes_together(packagekit, service, remove_and_wait, found):
    packagekit.script('Resolve', [*found, finished()])

    assert remove_and_wait(['a']) == (True, '')
    assert [call.arguments for call in packagekit.calls('RemovePackages')] == [(2, [A, B], False, False)]


def test_home_screen_hears_of_every_launcher_first(standins, packagekit, launcher_model, service, client, signals,
                                                   package):
    """It also hears of the end before everybody else."""
    manager = standins.start('package-manager')
    one, two, sub = (str(APPLICATIONS / name) for name in ('a.desktop', 'b.desktop', 'folder/c.desktop'))
    other = ['/usr/share/applications/a.DESKTOP', '/usr/share/applications/a.desktop.old',
             '/usr/share/Applications/a.desktop', '/opt/usr/share/applications/a.desktop',
             '/usr/share/applicationsb.desktop']
    install(package('a', files=dict.fromkeys([one, two, sub, *other], 'x')))
    packagekit.script('Resolve', [package_found(A), finished()])
    launcher_model.hang('updatingFinished')

    client.remove(['a'])
    launcher_model.wait_call('updatingFinished')

    assert signals.all == []
    launcher_model.release('updatingFinished')
    assert signals.wait('removalFinished') == (True, '')
    assert requests_in_order(manager, packagekit, launcher_model) == [
        ('GetPackage', ('a',)),
        ('updatingStarted', ('a', '', '', one)),
        ('updatingStarted', ('a', '', '', two)),
        ('updatingStarted', ('a', '', '', sub)),
        ('Resolve', (4, ['a'])),
        ('RemovePackages', (2, [A], False, False)),
        ('updatingFinished', ('a',))]
    started = min(call.stamp for call in packagekit.calls('CreateTransaction'))
    assert all(call.stamp < started for call in launcher_model.calls('updatingStarted'))


def test_first_of_two_versions_speaks_for_both(packagekit, launcher_model, service, remove_and_wait, package, device):
    """The first header that the database returns is read. Known behaviour 19."""
    for version in ('1', '2'):
        files = {f'/usr/share/applications/a{version}.desktop': 'x'}
        install(package('a', version=version, files=files), '-i', '--force')

    remove_and_wait(['a'])
    assert len(launcher_model.calls('updatingStarted')) == 1


def test_android_application_has_its_launchers_by_name(packagekit, launcher_model, service, client, signals, package):
    """Letter case does not matter, and the order is that of a listing. The package itself is not read. Known behaviour
    35."""
    name = 'ambrel-apk-a.b.C'
    install(package(name, files={'/usr/share/applications/native.desktop': 'x'}))
    launchers = [APPLICATIONS / launcher for launcher in (
        'zindro_launcher_a_b_C_2.desktop', 'zindro_launcher_a_b_C.desktop', 'zindro_launcher_a_b_CD.desktop',
        'Zindro_launcher_a_b_c_1.desktop', 'zindro_launcher_a_b.desktop', 'zindro_launcher_a.b.C.desktop',
        'zindro_launcher_a_b_C.desktop.old')]
    for launcher in launchers:
        launcher.touch()

    client.remove([name, 'Ambrel-apk-a.b.C'])

    signals.wait('removalFinished', 2)
    assert [call.arguments for call in launcher_model.calls('updatingStarted')] == [
        (name, '', '', f'/usr/share/applications/{launcher}') for launcher in
        ('zindro_launcher_a_b_C.desktop', 'Zindro_launcher_a_b_c_1.desktop', 'zindro_launcher_a_b_C_2.desktop',
         'zindro_launcher_a_b_CD.desktop')]
    for launcher in launchers:
        launcher.unlink()


def test_failed_search(packagekit, launcher_model, service, remove_and_wait, announced):
    packagekit.script('Resolve', [error_code('No "database".\nNone.')])

    assert remove_and_wait(['a']) == (False, 'No "database".\nNone.')
    service.wait_for_log(END)
    assert service.debugs() == [
        *BEGINNING,
        'Resolve Error: ("a") PackageKit::Transaction::ErrorPackageNotFound "No \\"database\\".\\nNone."',
        GIVE_UP + '"No \\"database\\".\\nNone."',
        'Failed to uninstall "a" "No \\"database\\".\\nNone."',
        END]
    call = packagekit.wait_call('Resolve')
    name, values = finished(EXIT_FAILED)
    packagekit.emit(call.path, TRANSACTION, name, values)
    assert announced() == ['removalFinished']
    assert not packagekit.calls('RemovePackages')
    assert [call.method for call in launcher_model.calls()] == ['updatingFinished']


def test_failed_removal(packagekit, service, signals, remove_and_wait):
    packagekit.script('Resolve', [package_found(A), finished()])
    packagekit.script('RemovePackages', [item_progress(A, 250), error_code('Locked.')])

    assert remove_and_wait(['a']) == (False, 'Locked.')
    service.wait_for_log(END)
    assert service.debugs() == [
        *BEGINNING,
        f'Resolved: PackageKit::Transaction::InfoInstalled "{A}" ""',
        'Uninstall Error: ("a") PackageKit::Transaction::ErrorPackageNotFound "Locked."',
        GIVE_UP + '"Locked."',
        'Failed to uninstall "a" "Locked."',
        END]
    assert signals.names() == ['removalFinished']


@pytest.mark.parametrize('status, name', [
    (0, 'PackageKit::Transaction::ExitUnknown'), (2, 'PackageKit::Transaction::ExitFailed'),
    (3, 'PackageKit::Transaction::ExitCancelled'), (6, 'PackageKit::Transaction::ExitKilled'),
])
def test_removal_that_ends_without_a_word(packagekit, launcher_model, service, client, signals, status, name):
    """It has neither failed nor succeeded, so nobody is told. Known behaviour 20."""
    packagekit.script('Resolve', [package_found(A), finished()])
    packagekit.script('RemovePackages', [finished(status, 4)], times=1)

    client.remove(['a'])

    service.wait_for_log(END)
    service.barrier()
    assert service.debugs()[-2:] == [f'slotUninstallFinished: ("a") {name} 4', END]
    assert signals.all == []
    assert launcher_model.calls() == []
    client.remove(['a'])
    assert signals.wait('removalFinished') == (True, '')


@pytest.mark.parametrize('status', [0, 2, 3, 6])
def test_how_the_search_ends_does_not_matter(packagekit, service, remove_and_wait, status):
    packagekit.script('Resolve', [package_found(A), finished(status)], times=1)
    packagekit.script('Resolve', [finished(status)])

    assert remove_and_wait(['a']) == (True, '')
    assert remove_and_wait(['a']) == (True, '')

    assert len(packagekit.calls('RemovePackages')) == 1


def test_two_names_end_as_their_answers_come(packagekit, service, client, signals):
    """There are two searches and two removals."""
    packagekit.hang('Resolve')

    client.remove(['first', 'second'])

    packagekit.wait_call('Resolve', 2)
    calls = {call.arguments[1][0]: number for number, call in enumerate(packagekit.calls('Resolve'))}
    packagekit.release_refusing('Resolve', 'a.b.Busy', 'second is busy', which=calls['second'])
    assert signals.wait('removalFinished')[0] is False
    (failure,) = [line for line in service.debugs() if line.startswith('Failed')]
    assert failure.startswith('Failed to uninstall "second" ')
    packagekit.release('Resolve')
    service.wait_for_log('Uninstalled "first"')


def test_each_back_end_removes_its_own(standins, packagekit, service, client, signals):
    manager = standins.start('package-manager', installs='nothing')
    manager.answer('GetPackage', GLib.Variant('(a{ss})', ({'Name': 'other'},)), times=1)
    packagekit.script('Resolve', [package_found(A), finished()])

    client.remove(['managed', 'a'], keep_userdata=True)

    signals.wait('removalFinished', 2)
    assert [call.arguments for call in manager.calls('Remove')] == [('managed', {'KeepUserData': True})]
    assert packagekit.wait_call('RemovePackages').arguments == (2, [A], False, False)
