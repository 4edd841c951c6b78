# SPDX-FileCopyrightText: velmora-installationhandler contributors
# SPDX-License-Identifier: BSD-3-Clause
"""RPM packages that the real PackageKit removes, by name and by launcher."""

from pathlib import Path

import pytest
from support.packagekit import install

LAUNCHERS = '/usr/share/applications'
FIRST, SECOND = f'{LAUNCHERS}/folder/second.desktop', f'{LAUNCHERS}/native.desktop'
APK = '/opt/android/org.example.App.apk'
ANDROID_PACKAGE = 'ambrel-apk-org.example.App'
ANDROID_LAUNCHER = f'{LAUNCHERS}/zindro_launcher_org_example_App_Main.desktop'
ENTRY = '[Desktop Entry]\nType=Application\nName=App\nExec=/usr/bin/app\n'
ANDROID_ENTRY = f'{ENTRY}X-zindro-apkfile={APK}\n'

REMOVED = (True, '')
LOCKED = 'Unable to remove locked: Locked package.'
NEEDED = 'needing-1.0-1.noarch requires needed, but this requirement cannot be provided'


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


@pytest.mark.parametrize('keep_userdata', [False, True])
def test_by_name(installed, service, signals, remove_and_wait, device, told_launcher_model, asked_packagekit,
                 keep_userdata):
    """PackageKit ignores whether user data is to be kept. Known behaviour 16."""
    installed('native', **NATIVE)

    assert remove_and_wait(['native'], keep_userdata) == REMOVED
    assert device.packages() == ['keeper']
    assert not Path(FIRST).exists() and not Path(SECOND).exists()
    assert told_launcher_model() == [started('native', FIRST), started('native', SECOND), finished('native')]
    assert asked_packagekit() == [resolve('native'), remove('native')]
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


@pytest.mark.parametrize('launcher', [FIRST, SECOND])
def test_by_launcher(installed, service, signals, remove_launcher_and_wait, device, told_launcher_model,
                     asked_packagekit, launcher):
    """Any launcher of the package will do."""
    installed('native', **NATIVE)

    assert remove_launcher_and_wait(launcher) == REMOVED
    assert device.packages() == ['keeper']
    assert not Path(FIRST).exists() and not Path(SECOND).exists()
    assert told_launcher_model() == [started('native', FIRST), started('native', SECOND), finished('native')]
    assert asked_packagekit() == [search(launcher), resolve('native'), remove('native')]
    assert signals.names() == ['removalFinished']
    assert service.warnings() == []


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


@pytest.mark.parametrize('packages, name, text', [
    ({'locked': {}}, 'locked', LOCKED),
    ({'needed': {}, 'needing': {'requires': ['needed']}}, 'needed', NEEDED),
], ids=['itself', 'what needs it'])
@pytest.mark.parametrize('by_launcher', [False, True], ids=['by name', 'by launcher'])
def test_lock_refuses_the_removal(installed, packagekit, service, client, signals, device, told_launcher_model,
                                  packages, name, text, by_launcher):
    for package, contents in packages.items():
        installed(package, **contents)
    packagekit.lock(list(packages)[-1])

    if by_launcher:
        client.remove_launcher(f'{LAUNCHERS}/{name}.desktop')
    else:
        client.remove([name])

    assert signals.wait('removalFinished') == (False, text)
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
    assert 'first\nsecond\nerror: %preun(failing-1.0-1.noarch) scriptlet failed, exit status 3\n' in text
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
