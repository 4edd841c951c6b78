# SPDX-FileCopyrightText: velmora-installationhandler contributors
# SPDX-License-Identifier: BSD-3-Clause
"""RPM packages that the real PackageKit removes, by name and by launcher, or does not while it is absent or killed."""

from pathlib import Path

import pytest
from support.packagekit import install, without_indentation, wordings_of_conflict

LAUNCHERS = '/usr/share/applications'
FIRST, SECOND = f'{LAUNCHERS}/folder/second.desktop', f'{LAUNCHERS}/native.desktop'
APK = '/opt/android/org.example.App.apk'
ANDROID_PACKAGE = 'ambrel-apk-org.example.App'
ANDROID_LAUNCHER = f'{LAUNCHERS}/zindro_launcher_org_example_App_Main.desktop'
ENTRY = '[Desktop Entry]\nType=Application\nName=App\nExec=/usr/bin/app\n'
ANDROID_ENTRY = f'{ENTRY}X-zindro-apkfile={APK}\n'

REMOVED = (True, '')
LOCKED = 'Unable to remove locked: Locked package.'
ABSENT = 'The name org.freedesktop.PackageKit was not provided by any .service files'
CRASHED = 'The PackageKit daemon has crashed'
OUT_OF_SYNC = 'Transaction count out of sync!'


@pytest.fixture
def installed(packagekit, package):
    """Installs a package."""
    def install_package(name, **contents):
        install(package(name, **contents))
    return install_package


@pytest.fixture
def told_launcher_model(service, session_calls):
    """The calls of the home screen's launcher model, which is not there."""
    return lambda: [(call.member, call.signature, call.arguments) for call in session_calls()
                    if call.destination == 'org.orrinmobile.rozzle']


@pytest.fixture
def asked_packagekit(service, system_calls):
    """The requests at PackageKit."""
    return lambda: [(call.member, call.signature, call.arguments) for call in system_calls()
                    if call.interface == 'org.freedesktop.PackageKit.Transaction' and call.member != 'SetHints']


def resolve(name):
    return 'Resolve', 'tas', (4, [name])


def search(path):
    return 'SearchFiles', 'tas', (4, [path])


def remove(name):
    return 'RemovePackages', 'tasbb', (2, [f'{name};1.0-1;noarch;installed:'], False, False)


def started(name, launcher):
    return 'updatingStarted', 'ssss', (name, '', '', launcher)


def finished(name):
    return 'updatingFinished', 's', (name,)


NATIVE = {'files': {FIRST: ENTRY, SECOND: ENTRY}}


@pytest.mark.parametrize('ask, searches', [
    (lambda client: client.remove(['native']), []),
    (lambda client: client.remove(['native'], keep_userdata=True), []),
    *((lambda client, path=path: client.remove_launcher(path), [search(path)]) for path in (FIRST, SECOND)),
], ids=['by name', 'keeping user data', 'by launcher', 'by another launcher'])
def test_removal(installed, service, client, signals, device, told_launcher_model, asked_packagekit, ask, searches):
    """Any launcher of the package will do. PackageKit ignores whether user data is to be kept. Known behaviour 16."""
    installed('native', **NATIVE)

    ask(client)

    assert signals.wait('removalFinished') == REMOVED
    assert device.packages() == ['keeper']
    assert not Path(FIRST).exists() and not Path(SECOND).exists()
    assert told_launcher_model() == [started('native', FIRST), started('native', SECOND), finished('native')]
    assert asked_packagekit() == [*searches, resolve('native'), remove('native')]
    assert signals.names() == ['removalFinished']
    log = service.log()
    assert log.pop(3).startswith(
        'debug default: slotUninstallFinished: ("native") PackageKit::Transaction::ExitSuccess ')
    assert log == [
        'debug default: Uninstall "native" via RPM',
        'debug default: UninstallTransactionPkgKit::start: ("native")',
        'debug default: Resolved: PackageKit::Transaction::InfoInstalled "native;1.0-1;noarch;installed:" '
        '"The application native"',
        'debug default: Uninstalled "native"',
        'debug default: deleting UninstallTransactionPkgKit']


def test_launcher_is_told_of_before_the_removal_starts(installed, service, client, signals, scriptlet,
                                                       told_launcher_model):
    installed('native', scripts={'preun': scriptlet.commands}, **NATIVE)

    client.remove(['native'])
    scriptlet.wait_running()

    assert told_launcher_model() == [started('native', FIRST), started('native', SECOND)]
    assert signals.names() == []
    scriptlet.finish()
    assert signals.wait('removalFinished') == REMOVED
    assert told_launcher_model()[2:] == [finished('native')]


@pytest.mark.parametrize('packages, name, texts', [
    ({'locked': {}}, 'locked', [LOCKED]),
    ({'needed': {}, 'needing': {'requires': ['needed']}}, 'needed', wordings_of_conflict('needing', 'needed')),
], ids=['itself', 'what needs it'])
@pytest.mark.parametrize('by_launcher', [False, True], ids=['by name', 'by launcher'])
def test_lock_refuses_the_removal(installed, packagekit, service, client, signals, device, told_launcher_model,
                                  packages, name, texts, by_launcher):
    for package, contents in packages.items():
        installed(package, **contents)
    packagekit.lock(list(packages)[-1])

    if by_launcher:
        client.remove_launcher(f'{LAUNCHERS}/{name}.desktop')
    else:
        client.remove([name])

    success, text = signals.wait('removalFinished')
    assert not success and text in texts
    assert sorted(device.packages()) == sorted(['keeper', *packages])
    assert Path(f'{LAUNCHERS}/{name}.desktop').is_file()
    assert told_launcher_model() == [started(name, f'{LAUNCHERS}/{name}.desktop'), finished(name)]
    assert signals.names() == ['removalFinished']
    assert f'Failed to uninstall "{name}" "{text}"' in service.debugs()


def test_package_that_is_not_installed(packagekit, service, signals, remove_and_wait, device, told_launcher_model,
                                       asked_packagekit):
    """Its removal succeeds. Known behaviour 18."""
    assert remove_and_wait(['absent']) == REMOVED
    assert asked_packagekit() == [resolve('absent')]
    assert told_launcher_model() == [finished('absent')]
    assert signals.names() == ['removalFinished']
    assert device.packages() == ['keeper']
    assert service.log() == [
        'debug default: Uninstall "absent" via RPM',
        'debug default: UninstallTransactionPkgKit::start: ("absent")',
        'debug default: Uninstalled "absent"',
        'debug default: deleting UninstallTransactionPkgKit']


def test_failing_scriptlet_has_its_say(installed, service, client, signals, device):
    installed('failing', scripts={'preun': 'echo first; echo second >&2; exit 3'})

    client.remove(['failing'])

    success, text = signals.wait('removalFinished')
    assert not success
    assert 'first\nsecond\nerror: %preun(failing-1.0-1.noarch) scriptlet failed, exit status 3\n' in \
        without_indentation(text)
    assert 'failing' in device.packages()


@pytest.mark.parametrize('ask', [
    lambda client: client.remove(['one', 'other']),
    lambda client: [client.remove([name]) for name in ('one', 'other')],
    lambda client: [client.remove_launcher(f'{LAUNCHERS}/{name}.desktop') for name in ('one', 'other')],
    lambda client: [client.remove(['one']), client.remove_launcher(f'{LAUNCHERS}/other.desktop')],
], ids=['one call', 'two calls', 'two launchers', 'name and launcher'])
def test_two_at_once(installed, service, client, signals, device, told_launcher_model, ask):
    installed('one')
    installed('other')

    ask(client)

    signals.wait('removalFinished', 2)
    assert signals.arguments('removalFinished') == [REMOVED, REMOVED]
    assert device.packages() == ['keeper']
    assert sorted(told_launcher_model()) == sorted(
        call for name in ('one', 'other') for call in (started(name, f'{LAUNCHERS}/{name}.desktop'), finished(name)))
    assert signals.names() == ['removalFinished'] * 2


def test_one_of_two_is_refused(installed, packagekit, service, client, signals, device):
    installed('free')
    installed('locked')
    packagekit.lock('locked')

    client.remove(['locked', 'free'])

    signals.wait('removalFinished', 2)
    assert sorted(signals.arguments('removalFinished')) == [(False, LOCKED), REMOVED]
    assert sorted(device.packages()) == ['keeper', 'locked']


def test_two_versions_go_together(installed, service, remove_and_wait, device, package, asked_packagekit):
    installed('native', version='1.0', files={})
    second = package('native', version='2.0', files={})
    install(second, '-i')

    assert remove_and_wait(['native']) == REMOVED
    assert device.packages() == ['keeper']
    ((flags, ids, *rest),) = [arguments for member, _, arguments in asked_packagekit() if member == 'RemovePackages']
    assert sorted(ids) == [f'native;{version}-1;noarch;installed:' for version in ('1.0', '2.0')]
    assert (flags, rest) == (2, [False, False])


@pytest.mark.parametrize('files', [{APK: 'apk', ANDROID_LAUNCHER: ANDROID_ENTRY}, {APK: 'apk'}],
                         ids=['owned launcher', 'made launcher'])
def test_android_application_in_a_native_package(installed, service, remove_launcher_and_wait, device,
                                                 told_launcher_model, asked_packagekit, files):
    """It is removed as that package, whether or not the launcher is of the package too. A launcher that is not
    stays until Android support takes it away."""
    installed(ANDROID_PACKAGE, files=files)
    launcher = Path(ANDROID_LAUNCHER)
    launcher.write_text(ANDROID_ENTRY, encoding='utf-8')

    assert remove_launcher_and_wait(launcher) == REMOVED
    assert device.packages() == ['keeper']
    assert not Path(APK).exists()
    assert launcher.exists() == (ANDROID_LAUNCHER not in files)
    assert asked_packagekit() == [search(APK), resolve(ANDROID_PACKAGE), remove(ANDROID_PACKAGE)]
    assert told_launcher_model() == [started(ANDROID_PACKAGE, ANDROID_LAUNCHER), finished(ANDROID_PACKAGE)]
    assert service.warnings() == []
    launcher.unlink(missing_ok=True)


@pytest.fixture
def held_up(installed, scriptlet):
    """The package that is removed first, when the scriptlet has been released, and the package of the next request."""
    installed('native', scripts={'preun': scriptlet.commands})
    installed('next')


@pytest.fixture
def check_next_request(service, client, signals, device):
    """The fault has left no trace."""
    def check():
        signals.all.clear()
        client.remove(['next'])
        assert signals.wait('removalFinished') == REMOVED
        service.barrier()
        assert 'next' not in device.packages()
        assert signals.names() == ['removalFinished']
    return check


@pytest.fixture(params=['absent', 'killed'])
def ask_in_vain(request, held_up, packagekit, service, scriptlet, asked_packagekit):
    """Makes a request at a PackageKit that is absent or is killed meanwhile; the code and the text of the error."""
    def ask(make_request, method):
        if request.param == 'absent':
            packagekit.make_absent()
            make_request()
            return 'ErrorInternalError', ABSENT
        packagekit.run_in_next_request(scriptlet.commands)
        make_request()
        scriptlet.wait_running()
        assert [member for member, *_ in asked_packagekit()] == [method]
        packagekit.kill()
        return 'ErrorProcessKill', CRASHED
    return ask


def test_while_resolving(ask_in_vain, packagekit, service, client, signals, device, check_next_request):
    """The failure is reported, and then the end as a success. Each lowers the count. Known behaviour 25."""
    code, text = ask_in_vain(lambda: client.remove(['native']), 'Resolve')

    signals.wait('removalFinished', 2)
    service.barrier()
    assert signals.arguments('removalFinished') == [(False, text), REMOVED]
    assert service.debugs() == [
        'Uninstall "native" via RPM',
        'UninstallTransactionPkgKit::start: ("native")',
        f'Resolve Error: ("native") PackageKit::Transaction::{code} "{text}"',
        f'void Package::UninstallTransactionPkgKit::giveUp(const QString&) "{text}"',
        f'Failed to uninstall "native" "{text}"',
        'Uninstalled "native"',
        'deleting UninstallTransactionPkgKit']
    assert service.warnings() == [OUT_OF_SYNC]
    assert 'native' in device.packages()
    packagekit.repair()
    check_next_request()


def test_killed_while_removing(held_up, packagekit, service, client, signals, announced, device, scriptlet,
                               check_next_request):
    """The failure is reported once: the end that follows is not a success. The run of rpm goes on alone."""
    client.remove(['native'])
    scriptlet.wait_running()
    packagekit.kill()

    assert signals.wait('removalFinished') == (False, CRASHED)
    assert announced() == ['removalFinished']
    assert service.debugs()[3:] == [
        f'Uninstall Error: ("native") PackageKit::Transaction::ErrorProcessKill "{CRASHED}"',
        f'void Package::UninstallTransactionPkgKit::giveUp(const QString&) "{CRASHED}"',
        f'Failed to uninstall "native" "{CRASHED}"',
        'slotUninstallFinished: ("native") PackageKit::Transaction::ExitKilled 0',
        'deleting UninstallTransactionPkgKit']
    assert service.warnings() == []
    assert 'native' in device.packages()
    scriptlet.finish()
    assert 'native' not in device.packages()
    check_next_request()


def test_while_searching(ask_in_vain, packagekit, service, client, signals, device, check_next_request):
    code, text = ask_in_vain(lambda: client.remove_launcher(SECOND), 'SearchFiles')

    service.wait_for_log('Error on resolving desktop file owner')
    service.barrier()
    assert service.log() == [
        f'warning default: Error on resolving desktop file owner PackageKit::Transaction::{code} "{text}"']
    assert signals.names() == []
    assert 'native' in device.packages()
    assert Path(SECOND).is_file()
    packagekit.repair()
    check_next_request()
