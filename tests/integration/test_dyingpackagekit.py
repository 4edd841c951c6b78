# SPDX-FileCopyrightText: velmora-installationhandler contributors
# SPDX-License-Identifier: BSD-3-Clause
"""The real PackageKit, absent or killed, and back for the next request."""

from pathlib import Path

import pytest
from support.packagekit import install

LAUNCHER = '/usr/share/applications/native.desktop'
REMOVED = (True, '')
ABSENT = 'The name org.freedesktop.PackageKit was not provided by any .service files'
CRASHED = 'The PackageKit daemon has crashed'
OUT_OF_SYNC = 'Transaction count out of sync!'


@pytest.fixture(autouse=True)
def packages(packagekit, package, scriptlet):
    """The package that is removed first, when the scriptlet has been released, and the package of the next request."""
    install(package('native', scripts={'preun': scriptlet.commands}))
    install(package('next'))


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


@pytest.fixture
def requests(service, system_calls):
    """The requests at PackageKit."""
    return lambda: [call.member for call in system_calls()
                    if call.interface == 'org.freedesktop.PackageKit.Transaction' and call.member != 'SetHints']


@pytest.fixture(params=['absent', 'killed'])
def ask_in_vain(request, packagekit, service, scriptlet, requests):
    """Makes a request at a PackageKit that is absent or is killed meanwhile; the code and the text of the error."""
    def ask(make_request, method):
        if request.param == 'absent':
            packagekit.make_absent()
            make_request()
            return 'ErrorInternalError', ABSENT
        packagekit.run_in_next_request(scriptlet.commands)
        make_request()
        scriptlet.wait_running()
        assert requests() == [method]
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


def test_killed_while_removing(packagekit, service, client, signals, announced, device, scriptlet, check_next_request):
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
    code, text = ask_in_vain(lambda: client.remove_launcher(LAUNCHER), 'SearchFiles')

    service.wait_for_log('Error on resolving desktop file owner')
    service.barrier()
    assert service.log() == [
        f'warning default: Error on resolving desktop file owner PackageKit::Transaction::{code} "{text}"']
    assert signals.names() == []
    assert 'native' in device.packages()
    assert Path(LAUNCHER).is_file()
    packagekit.repair()
    check_next_request()
