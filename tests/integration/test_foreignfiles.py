# SPDX-FileCopyrightText: velmora-installationhandler contributors
# SPDX-License-Identifier: BSD-3-Clause
"""Files that the session's user may not read, and those of other users."""

import shutil
from pathlib import Path

import pytest
from support.packagekit import install
from support.removalrequests import KNOWN

LAUNCHER = Path('/usr/share/applications/native.desktop')
ANDROID_LAUNCHER = Path('/usr/share/applications/zindro_launcher_org_example_App_Main.desktop')
RPM_DATABASE = Path('/var/lib/rpm')
HOME_OF_ANOTHER = Path('/home/user')
REMOVED = (True, '')


def bad(path):
    return f'void InstallationHandler::removePackageByDesktopFile(const QString&) bad desktop file: "{path}"'


@pytest.mark.parametrize('hide', [lambda file: file.chmod(0o600), lambda file: file.parent.chmod(0o700)],
                         ids=['file', 'folder'])
def test_package(platform, service, client, signals, dialog, device, package, hide):
    """The dialog knows nothing of it. The package manager, which may read it, installs it. Known behaviour 67."""
    file = package('secret')
    hide(file)
    dialog.use('Controlled')

    client.install([file])

    assert dialog.wait_shown() == {'name': '', 'version': '', 'summary': '', 'fileName': str(file)}
    assert device.packages() == []
    dialog.answer('requestInstall')
    assert signals.wait('installFinished') == (True, '')
    assert device.packages() == ['secret']


@pytest.fixture
def native(packagekit, package):
    """A native package is installed, whose launcher only root may read."""
    install(package('native'))
    LAUNCHER.chmod(0o600)


def test_launcher_of_a_native_package(native, service, remove_launcher_and_wait, device):
    """Nobody has to read it: PackageKit knows its owner."""
    assert remove_launcher_and_wait(LAUNCHER) == REMOVED

    assert device.packages() == ['keeper']
    assert not LAUNCHER.exists()
    assert service.warnings() == []


@pytest.fixture
def android_launcher():
    ANDROID_LAUNCHER.write_text('[Desktop Entry]\nX-zindro-apkfile=/app.apk\n', encoding='ascii')
    ANDROID_LAUNCHER.chmod(0o600)
    yield ANDROID_LAUNCHER
    ANDROID_LAUNCHER.unlink(missing_ok=True)


def test_launcher_of_an_android_application(standins, service, client, signals, android_launcher):
    """It starts no Android application, as far as the service knows. Its owner is searched for instead of that of the
    application. Known behaviour 68."""
    android, packagekit = standins.start('android-support', 'package-kit')

    client.remove_launcher(android_launcher)

    assert packagekit.wait_call('SearchFiles').arguments == (4, [str(android_launcher)])
    service.barrier()
    assert android.calls() == []
    assert android_launcher.exists()
    assert (service.log(), signals.names()) == ([], [])


@pytest.fixture
def launcher_of_another():
    """A launcher of another user's own, in a HOME that everybody may enter."""
    launcher = HOME_OF_ANOTHER / '.local/share/applications/org.example.App.desktop'
    launcher.parent.mkdir(parents=True)
    launcher.write_text('[Desktop Entry]\n', encoding='ascii')
    for path in (HOME_OF_ANOTHER, *HOME_OF_ANOTHER.rglob('*')):
        shutil.chown(path, 100002, 100002)
    yield launcher
    shutil.rmtree(HOME_OF_ANOTHER)


def test_launcher_of_another_user(standins, service, client, signals, launcher_of_another):
    """It counts as one of the system. Nobody owns it, and it stays. Known behaviour 69."""
    hooks, manager, packagekit = standins.start('runtime-manager', 'package-manager', 'package-kit')

    client.remove_launcher(launcher_of_another)

    assert packagekit.wait_call('SearchFiles').arguments == (4, [str(launcher_of_another)])
    service.barrier()
    assert [(call.method, call.arguments) for call in manager.calls()] == [('GetPackage', ('org.example.App',))]
    assert hooks.calls() == []
    assert launcher_of_another.exists()
    assert (service.log(), signals.names()) == ([], [])


def test_launcher_of_another_user_named_like_a_package(
        standins, service, remove_launcher_and_wait, launcher_of_another):
    """The package goes, and the launcher stays. Known behaviour 69."""
    manager = standins.start('package-manager', installs='nothing')
    manager.answer('GetPackage', KNOWN)

    assert remove_launcher_and_wait(launcher_of_another) == REMOVED

    assert [call.arguments for call in manager.calls('Remove')] == [('org.example.App', {})]
    assert launcher_of_another.exists()


def test_launcher_in_a_closed_home(standins, service, client, announced, launcher_of_another):
    """The service cannot see it."""
    manager = standins.start('package-manager')
    HOME_OF_ANOTHER.chmod(0o700)

    client.remove_launcher(launcher_of_another)

    assert announced() == []
    assert service.warnings() == [bad(launcher_of_another)]
    assert manager.calls() == []
    assert launcher_of_another.exists()


def test_own_launcher_in_a_folder_of_root(standins, service, client, announced, applications):
    """The user may not delete there. The hook is called all the same."""
    hooks = standins.start('runtime-manager')
    folder = applications / 'given'
    folder.mkdir()
    # Root may have let everybody write to what it makes.
    folder.chmod(0o755)
    launcher = folder / 'org.example.App.desktop'
    launcher.touch()

    client.remove_launcher(launcher)

    assert announced() == []
    assert service.warnings() == [f'Failed to remove desktopFile: "{launcher}"']
    assert [call.arguments for call in hooks.calls('OnRemove')] == [('org',)]
    assert launcher.exists()


def check_removal(remove_and_wait, launcher_model):
    """PackageKit removes the package. The service has not found the launcher that the home screen is to be told of."""
    assert remove_and_wait(['native']) == REMOVED
    assert [call.method for call in launcher_model.calls()] == ['updatingFinished']


def test_closed_rpm_database(native, service, remove_and_wait, launcher_model):
    RPM_DATABASE.chmod(0o700)
    try:
        check_removal(remove_and_wait, launcher_model)
    finally:
        RPM_DATABASE.chmod(0o755)

    assert any(line.startswith('error: cannot open Packages index') for line in service.log())


def test_rpm_database_elsewhere(native, device, service, remove_and_wait, launcher_model):
    """The log does not tell."""
    (device.home / '.rpmmacros').write_text('%_dbpath %{getenv:HOME}/.rpmdb\n', encoding='ascii')

    check_removal(remove_and_wait, launcher_model)

    assert not [line for line in service.log() if line.startswith(('error:', 'warning'))]
