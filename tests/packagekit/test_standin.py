# SPDX-FileCopyrightText: velmora-installationhandler contributors
# SPDX-License-Identifier: BSD-3-Clause
"""PackageKit's stand-in, seen through the library that the service uses."""

import pytest
from harness.standins import SIMULATOR
from support.transactionsignals import (EXIT_FAILED, destroy, error_code, finished, item_progress, package_found,
                                        packages_found)

A, B = 'a;1-1;noarch;installed', 'b;2-1;aarch64;installed'


@pytest.fixture
def standin(standins):
    """PackageKit's stand-in, running."""
    return standins.start('package-kit')


def test_finds_no_package_without_a_script(standin, requests):
    for request in requests.run(['resolve', 'a'], ['search', '/a'], ['remove', A]):
        assert request.events == [['finished', 'ExitSuccess', 0]]


@pytest.mark.parametrize('request_, method, signature, arguments', [
    (['resolve', 'a', 'b'], 'Resolve', 'tas', (4, ['a', 'b'])),
    (['search', '/a'], 'SearchFiles', 'tas', (4, ['/a'])),
    (['remove', A, B], 'RemovePackages', 'tasbb', (2, [A, B], False, False)),
])
def test_records_a_request(standin, requests, request_, method, signature, arguments):
    requests.run(request_)
    (hints,), (call,) = standin.calls('SetHints'), standin.calls(method)
    assert call[2:] == (hints.path, 'org.freedesktop.PackageKit.Transaction', method, signature, arguments)
    assert len(standin.calls('CreateTransaction')) == 1


def test_transactions_have_different_paths(standin, requests):
    requests.run(['resolve', 'a'], ['resolve', 'b'])
    first, second = standin.calls('Resolve')
    assert first.path != second.path


def test_reports_two_packages(standin, requests):
    standin.script('SearchFiles', [package_found(A, 'Summary of a'), package_found(B, info=31), finished(runtime=7)])
    assert requests.search('/a').events == [
        ['package', 'InfoInstalled', A, 'Summary of a'], ['package', '', B, ''], ['finished', 'ExitSuccess', 7]]
    standin.script('Resolve', [packages_found(A, B), finished()])
    assert requests.resolve('a').ids == [A, B]


@pytest.mark.parametrize('order', [
    [error_code('No.\nReally not.'), package_found(A)],
    [package_found(A), error_code('No.\nReally not.')],
], ids=['before', 'after'])
def test_error_before_and_after_packages(standin, requests, order):
    standin.script('Resolve', [*order, finished(EXIT_FAILED)])
    request = requests.resolve('a')
    assert request.of('error') == [['ErrorPackageNotFound', 'No.\nReally not.']]
    assert request.ids == [A]
    assert [event for event, *_ in request.events].index('error') == [name for name, _ in order].index('ErrorCode')
    assert request.exit == 'ExitFailed'


@pytest.mark.parametrize('number, name', [(0, 'ExitUnknown'), (2, 'ExitFailed'), (3, 'ExitCancelled'),
                                          (6, 'ExitKilled'), (8, 'ExitNeedUntrusted'), (15, '')])
def test_ends_in_any_way_without_an_error(standin, requests, number, name):
    """The library reports no error then: Known behaviour 20."""
    standin.script('RemovePackages', [finished(number)])
    assert requests.remove(A).events == [['finished', name, 0]]


def test_progress_above_100(standin, requests):
    standin.script('RemovePackages', [item_progress(A, 50), item_progress(A, 101), item_progress(A, 4000000),
                                      finished()])
    assert requests.remove(A).of('progress') == [[A, 'StatusRemove', value] for value in (50, 101, 4000000)]


def test_scripts_are_used_in_their_order(standin, requests):
    standin.script('Resolve', [package_found(A), finished()], times=1)
    standin.script('Resolve', [package_found(B), finished()], times=1)
    assert [requests.resolve('x').ids for _ in range(3)] == [[A], [B], []]


def test_vanishes_during_a_request(standin, requests, processes):
    """The library reports an error and the end: Known behaviour 25."""
    standin.script('RemovePackages', [item_progress(A, 50)])
    (request,), process = requests.start(['remove', A])
    standin.wait_call('RemovePackages')
    standin.vanish()
    processes.wait_end(process)
    assert request.events == [['progress', A, 'StatusRemove', 50],
                              ['error', 'ErrorProcessKill', 'The PackageKit daemon has crashed'],
                              ['finished', 'ExitKilled', 0]]
    standin.come_back()
    assert requests.resolve('a').exit == 'ExitSuccess'


@pytest.mark.parametrize('method', ['CreateTransaction', 'Resolve'])
def test_answers_late(standin, requests, processes, method):
    standin.hang(method)
    (request,), process = requests.start(['resolve', 'a'])
    standin.wait_call(method)
    assert request.events == []
    standin.release(method)
    processes.wait_end(process)
    assert request.exit == 'ExitSuccess'


def test_emits_signals_when_told(standin, requests, processes):
    standin.script('Resolve', [package_found(A)])
    (request,), process = requests.start(['resolve', 'a'])
    path = standin.wait_call('Resolve').path
    processes.wait_until(lambda: request.ids == [A], 'the first package')
    for name, values in (package_found(B), finished(), destroy()):
        standin.emit(path, 'org.freedesktop.PackageKit.Transaction', name, values)
    processes.wait_end(process)
    assert request.ids == [A, B]


@pytest.mark.parametrize('method', ['CreateTransaction', 'Resolve'])
def test_refuses(standin, requests, method):
    """The library reports an error and the end: Known behaviour 25."""
    standin.refuse(method, 'org.freedesktop.PackageKit.Transaction.RefusedByPolicy', 'Not you')
    request = requests.resolve('a')
    assert [event for event, *_ in request.events] == ['error', 'finished']
    assert request.exit == 'ExitFailed'


def test_has_the_properties_of_daemon_and_transaction(standin, client, system_bus, processes):
    peer = type(client)(system_bus.connection, processes)
    daemon = {'name': 'org.freedesktop.PackageKit', 'path': '/org/freedesktop/PackageKit',
              'interface': 'org.freedesktop.DBus.Properties'}
    (version,) = peer.call('Get', '(ss)', 'org.freedesktop.PackageKit', 'VersionMajor', **daemon)
    assert version == 1
    (path,) = peer.call('CreateTransaction', **{**daemon, 'interface': 'org.freedesktop.PackageKit'})
    (properties,) = peer.call('GetAll', '(s)', 'org.freedesktop.PackageKit.Transaction', **{**daemon, 'path': path})
    assert properties['Percentage'] == 101
    assert standin.calls('GetAll')[0].path == path


def test_script_from_the_command_line(standin, requests, processes):
    program = processes.start('control', [SIMULATOR / 'control', 'package-kit', 'script', 'Resolve',
                                          "[('Package', <(uint32 1, 'a;1-1;noarch;installed', 'text')>),"
                                          " ('Finished', <(uint32 1, uint32 5)>)]", '1'])
    assert processes.wait_end(program) == 0
    assert requests.resolve('a').events == [['package', 'InfoInstalled', A, 'text'], ['finished', 'ExitSuccess', 5]]
