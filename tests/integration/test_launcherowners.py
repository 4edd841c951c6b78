# SPDX-FileCopyrightText: velmora-installationhandler contributors
# SPDX-License-Identifier: BSD-3-Clause
"""Launchers of the system: who owns the application, and who is asked to remove it."""

from pathlib import Path

import pytest
from gi.repository import GLib
from support.transactionsignals import EXIT_FAILED, EXIT_SUCCESS, error_code, finished, package_found

LAUNCHER = Path('/usr/share/applications/foo.bar.desktop')
APK = '/data/app/foo.apk'
PLAIN, ANDROID = '[Desktop Entry]\n', f'[Desktop Entry]\nX-zindro-apkfile={APK}\n'
A, B = 'a;1-1;noarch;installed', 'b;2-1;aarch64;installed'

REMOVED = (True, '')
KNOWN = GLib.Variant('(a{ss})', ({'Name': 'another'},))
EXIT_CANCELLED, INFO_AVAILABLE = 3, 2
ERROR = 'Error on resolving desktop file owner PackageKit::Transaction::ErrorPackageNotFound "No."'
OUT_OF_SYNC = 'Transaction count out of sync!'
ANDROID_FAILED = ('InstallationHandler::removePackageByDesktopFile(const QString&)::'
                  '<lambda(const QString&, const QString&)> '
                  f'failed to remove android app: "{LAUNCHER}"')


@pytest.fixture
def packagekit(standins):
    """PackageKit, which finds what it is told to."""
    return standins.start('package-kit')


@pytest.fixture
def android(standins):
    """Android support, which deletes launchers."""
    return standins.start('android-support')


@pytest.fixture
def launcher():
    LAUNCHER.write_text(PLAIN, encoding='utf-8')
    yield LAUNCHER
    LAUNCHER.unlink(missing_ok=True)


@pytest.fixture
def android_launcher(launcher):
    launcher.write_text(ANDROID, encoding='utf-8')
    return launcher


@pytest.fixture
def search(packagekit, service, client):
    """Removes by launcher and waits until the search for its owner has ended."""
    def removed():
        client.remove_launcher(LAUNCHER)
        packagekit.wait_call('SearchFiles')
        # Its answer comes after all that it reports of the search.
        (call,) = packagekit.calls('SearchFiles')
        service.barrier()
        return call
    return removed


def arguments(standin, method):
    return [call.arguments for call in standin.calls(method)]


@pytest.mark.parametrize('path', [LAUNCHER, Path('/opt/foo.bar.desktop'), Path('/opt/foo.bar.txt')])
def test_package_of_the_package_manager(manager, service, client, signals, path, system_calls, session_calls):
    """The launcher's name up to its last dot counts, wherever the launcher is. The record itself does not matter. Known
    behaviour 40."""
    path.write_text(PLAIN, encoding='utf-8')
    manager.answer('GetPackage', KNOWN)

    assert client.remove_launcher(path) == ()

    assert signals.wait('removalFinished') == REMOVED
    assert [(call.member, call.signature, call.arguments)
            for call in system_calls() if call.destination != 'com.nokia.mce'] == [
        ('GetPackage', 's', ('foo.bar',)), ('GetPackage', 's', ('foo.bar',)), ('Remove', 'sa{sv}', ('foo.bar', {}))]
    assert [(call.member, call.arguments) for call in session_calls()] == [
        *([('updatingStarted', ('foo.bar', '', '', str(path)))] if path == LAUNCHER else []),
        ('updatingFinished', ('foo.bar',))]
    assert signals.names() == ['removalFinished']
    assert service.log() == ['debug default: Uninstall "foo.bar" via ZARN', 'debug default: Uninstalled "foo.bar"']
    path.unlink()


def test_package_manager_is_asked_again(manager, packagekit, launcher, service, remove_launcher_and_wait):
    """The removal by name asks the package manager itself."""
    manager.answer('GetPackage', KNOWN, times=1)

    assert remove_launcher_and_wait(launcher) == REMOVED
    assert arguments(manager, 'GetPackage') == [('foo.bar',), ('foo.bar',)]
    assert arguments(packagekit, 'SearchFiles') == []
    assert arguments(packagekit, 'Resolve') == [(4, ['foo.bar'])]


def test_package_manager_removes_for_real(standins, launcher, service, install_and_wait, remove_launcher_and_wait,
                                          dialog, device, package):
    standins.start('package-manager')
    dialog.use('Confirming')
    assert install_and_wait([package('foo.bar')]) == REMOVED
    assert device.packages() == ['foo.bar']

    assert remove_launcher_and_wait(launcher) == REMOVED
    assert device.packages() == []
    assert not launcher.exists()


@pytest.mark.parametrize('values', ["('foo.bar',)", '(true,)', "({'a': 1},)", '()', '([1],)', None])
def test_refusal_and_answer_that_is_no_record_count_as_unknown(manager, launcher, service, search, values):
    """The owner is looked for elsewhere, without a word."""
    if values:
        manager.answer('GetPackage', GLib.Variant.parse(None, values, None, None))
    else:
        manager.refuse('GetPackage', 'a.b.Refused', 'not today')

    assert search().arguments == (4, [str(LAUNCHER)])

    assert service.log() == []


@pytest.mark.parametrize('script, names, warnings', [
    ([package_found(A)], ['a'], []),
    ([package_found(A, info=INFO_AVAILABLE)], ['a'], []),
    # Each owner lowers the count, which was raised once. Known behaviour 23.
    ([package_found(A), package_found(B)], ['a', 'b'], [OUT_OF_SYNC]),
    # Known behaviour 24.
    ([package_found(A), package_found(A)], ['a', 'a'], [OUT_OF_SYNC]),
    ([package_found(A), error_code('No.')], ['a'], [ERROR]),
], ids=['one', 'in another state', 'two', 'twice the same', 'before an error'])
def test_native_owners(manager, packagekit, launcher, service, client, signals, script, names, warnings):
    packagekit.script('SearchFiles', [*script, finished(EXIT_FAILED if ERROR in warnings else EXIT_SUCCESS)])
    packagekit.script('Resolve', [package_found(A), finished()])

    client.remove_launcher(launcher)

    signals.wait('removalFinished', len(names))
    service.barrier()
    assert signals.all == [('removalFinished', 'bs', REMOVED)] * len(names)
    (search,) = packagekit.calls('SearchFiles')
    assert (search.signature, search.arguments) == ('tas', (4, [str(LAUNCHER)]))
    assert arguments(manager, 'GetPackage') == [('foo.bar',), *((name,) for name in names)]
    assert sorted(arguments(packagekit, 'Resolve')) == [(4, [name]) for name in names]
    assert arguments(packagekit, 'RemovePackages') == [(2, [A], False, False)] * len(names)
    assert service.warnings() == warnings


def test_owner_that_the_package_manager_knows(manager, packagekit, launcher, service, remove_launcher_and_wait):
    manager.refuse('GetPackage', 'a.b.Unknown', '', times=1)
    manager.answer('GetPackage', KNOWN, times=1)
    packagekit.script('SearchFiles', [package_found(A), finished()])

    assert remove_launcher_and_wait(launcher) == REMOVED
    assert arguments(manager, 'Remove') == [('a', {})]
    assert arguments(packagekit, 'Resolve') == []


def test_owner_of_an_android_application(packagekit, android, android_launcher, service, signals,
                                         remove_launcher_and_wait):
    """It is found by the Android package file, and removed like a native package."""
    packagekit.script('SearchFiles', [package_found(A), finished()])

    assert remove_launcher_and_wait(android_launcher) == REMOVED
    service.barrier()
    assert arguments(packagekit, 'SearchFiles') == [(4, [APK])]
    assert android.calls() == []
    assert signals.names() == ['removalFinished']


@pytest.mark.parametrize('script, warnings', [
    ([finished()], []), ([package_found(';1-1;noarch;installed'), finished()], []),
    ([error_code('No.'), finished(EXIT_FAILED)], [ERROR]), ([finished(EXIT_FAILED)], []),
    ([finished(EXIT_CANCELLED)], []),
], ids=['no owner', 'owner without a name', 'error', 'failed', 'cancelled'])
def test_android_application(packagekit, android, android_launcher, service, client, signals, script, warnings):
    """Android support gets the launcher's path; nobody else hears of the end. Known behaviour 21, 41."""
    packagekit.script('SearchFiles', script)

    client.remove_launcher(android_launcher)

    call = android.wait_call('removeFile')
    service.barrier()
    assert call[2:] == ('/com/zelka/zindro', 'com.zelka.zindro', 'removeFile', 's', (str(LAUNCHER),))
    assert arguments(packagekit, 'SearchFiles') == [(4, [APK])]
    assert arguments(packagekit, 'Resolve') == []
    assert not android_launcher.exists()
    assert (service.log(), signals.names()) == ([f'warning default: {text}' for text in warnings], [])


TRUE = ['(true,)', "('true',)", "('yes',)", '(1,)', '(-1,)', '(0.5,)', "(true, 'more')"]
FALSE = ['(false,)', "('false',)", "('0',)", "('',)", '(0,)', '()', '([true],)', "({'a': true},)", '((true,),)',
         '(<true>,)', '(0.0,)', "(false, 'more')"]


@pytest.mark.parametrize('values', [*TRUE, *FALSE, None])
def test_answer_of_android_support(packagekit, android, android_launcher, service, client, signals, values):
    """It is true if Qt can convert it to a true boolean. A refusal counts as false."""
    if values:
        android.answer('removeFile', GLib.Variant.parse(None, values, None, None))
    else:
        android.refuse('removeFile', 'a.b.Refused', 'not today')

    client.remove_launcher(android_launcher)

    android.wait_call('removeFile')
    service.barrier()
    assert service.log() == ([] if values in TRUE else [f'warning default: {ANDROID_FAILED}'])
    assert signals.names() == []
    assert android_launcher.exists()


def test_android_support_is_looked_at_before_each_call(packagekit, android, android_launcher, service, client,
                                                       system_bus, system_monitor):
    """Each call has a proxy of its own. An introspection with contents would be remembered, so it has none here."""
    android.answer('Introspect', GLib.Variant('(s)', ('<node/>',)))
    android.answer('removeFile', GLib.Variant('(b)', (True,)))

    for number in (1, 2):
        client.remove_launcher(android_launcher)
        android.wait_call('removeFile', number)
        service.barrier()

    sent = system_monitor.messages(system_bus.name_of_process(service.process.pid), 'method-call')
    assert [call.member for call in sent if call.destination == 'com.zelka.zindro'] == 2 * ['Introspect', 'removeFile']


@pytest.mark.parametrize('text', [
    PLAIN, '', 'X-zindro-apkfile=/a.apk\n', '[Desktop Entry]\nX-zindro-apkfile=\n',
    '[Other]\nX-zindro-apkfile=/a.apk\n', '[Desktop Entry]\nx-zindro-apkfile=/a.apk\n', '\0\1\2\n',
])
def test_launcher_without_android_key_is_searched_for_itself(packagekit, launcher, search, signals, service, text):
    launcher.write_text(text, encoding='utf-8')

    assert search().arguments == (4, [str(LAUNCHER)])

    assert (service.log(), signals.names()) == ([], [])
    assert launcher.exists()


def test_android_key_that_comes_during_the_search(packagekit, android, launcher, service, client):
    """The launcher is read again at the end."""
    packagekit.hang('SearchFiles')
    client.remove_launcher(launcher)
    packagekit.wait_call('SearchFiles')

    launcher.write_text(ANDROID, encoding='utf-8')
    packagekit.release('SearchFiles')

    assert android.wait_call('removeFile').arguments == (str(LAUNCHER),)


@pytest.mark.parametrize('change', [Path.unlink, lambda path: path.write_text(PLAIN, encoding='utf-8')],
                         ids=['deleted', 'rewritten'])
def test_android_key_that_goes_during_the_search(packagekit, android, android_launcher, service, client, signals,
                                                 change):
    packagekit.script('SearchFiles', [])
    client.remove_launcher(android_launcher)
    call = packagekit.wait_call('SearchFiles')

    change(android_launcher)
    packagekit.emit(call.path, 'org.freedesktop.PackageKit.Transaction', *finished())

    service.barrier()
    assert android.calls() == []
    assert (service.log(), signals.names()) == ([], [])


@pytest.mark.parametrize('script', [
    [finished()], [finished(EXIT_FAILED)], [error_code('No.'), finished(EXIT_FAILED)], [],
], ids=['found nothing', 'failed', 'error', 'endless'])
def test_nobody_s_launcher_leaves_the_count_raised(packagekit, launcher, service, client, signals, search, script):
    """The count stays one too high: the next search with two owners lowers it once too often without a warning, and
    only the one after that warns. Known behaviour 22, 23."""
    packagekit.script('SearchFiles', script, times=1)
    packagekit.script('SearchFiles', [package_found(A), package_found(B), finished()], times=2)

    search()
    assert signals.names() == []
    assert service.warnings() == ([ERROR] if len(script) == 2 else [])
    client.remove_launcher(launcher)
    signals.wait('removalFinished', 2)
    service.barrier()
    assert OUT_OF_SYNC not in service.warnings()

    client.remove_launcher(launcher)
    signals.wait('removalFinished', 4)
    service.barrier()
    assert service.warnings()[-1] == OUT_OF_SYNC


def test_two_searches_side_by_side(packagekit, launcher, service, client, signals):
    other = LAUNCHER.with_name('other.desktop')
    other.write_text(PLAIN, encoding='utf-8')
    packagekit.script('SearchFiles', [], times=2)
    for path in (launcher, other):
        client.remove_launcher(path)
    calls = [packagekit.wait_call('SearchFiles', number) for number in (1, 2)]

    for package_id, path in ((B, str(other)), (A, str(launcher))):
        (call,) = [call for call in calls if call.arguments == (4, [path])]
        packagekit.emit(call.path, 'org.freedesktop.PackageKit.Transaction', *package_found(package_id))
        packagekit.emit(call.path, 'org.freedesktop.PackageKit.Transaction', *finished())

    signals.wait('removalFinished', 2)
    service.barrier()
    assert arguments(packagekit, 'Resolve') == [(4, ['b']), (4, ['a'])]
    assert service.warnings() == []
    other.unlink()
