# SPDX-FileCopyrightText: velmora-installationhandler contributors
# SPDX-License-Identifier: BSD-3-Clause
"""The real PackageKit on the device's own RPM database."""

from pathlib import Path

import pytest
from support.packagekit import install, without_indentation, wordings_of_conflict

LAUNCHERS = '/usr/share/applications'


@pytest.fixture
def installed(packagekit, package):
    """Installs a package and returns its id."""
    def installed_id(name, version='1.0', **contents):
        install(package(name, version, **contents))
        return f'{name};{version}-1;noarch;installed:'
    return installed_id


def test_is_started_by_the_first_request(packagekit, requests):
    assert not packagekit.running
    assert requests.resolve('nothing').events[-1][:2] == ['finished', 'ExitSuccess']
    assert packagekit.running


def test_resolves_installed_packages(installed, requests):
    ids = [installed('first'), installed('second', version='2.5')]
    assert requests.resolve('first', 'absent', 'second').ids == ids
    assert requests.resolve('absent').ids == []


def test_finds_all_owners_of_a_launcher(installed, requests):
    one = installed('one', files={f'{LAUNCHERS}/folder/one.desktop': '', f'{LAUNCHERS}/shared.desktop': 'same'})
    other = installed('other', files={f'{LAUNCHERS}/shared.desktop': 'same'})
    for launcher, owners in (('folder/one', [one]), ('shared', [one, other]), ('absent', [])):
        assert sorted(requests.search(f'{LAUNCHERS}/{launcher}.desktop').ids) == owners


def test_removes_an_installed_package(installed, requests, device):
    doomed, kept = installed('doomed'), installed('kept')
    request = requests.remove(doomed)
    assert request.exit == 'ExitSuccess'
    assert request.of('error') == []
    assert request.of('progress')[-1] == [doomed, 'StatusRemove', 100]
    assert 'doomed' not in device.packages()
    assert not Path(LAUNCHERS, 'doomed.desktop').exists()
    assert requests.resolve('doomed', 'kept').ids == [kept]


def test_notices_changes_made_by_rpm(installed, requests, device):
    assert requests.resolve('late').ids == []
    late = installed('late')
    assert requests.resolve('late').ids == [late]
    assert requests.search(f'{LAUNCHERS}/late.desktop').ids == [late]
    device.reset()
    assert requests.resolve('late').ids == []


def test_removes_dependants_too(installed, requests, device):
    """Known behaviour 17."""
    needed = installed('needed')
    installed('needing', requires=['needed'])
    assert requests.remove(needed).exit == 'ExitSuccess'
    assert device.packages() == ['keeper']


def test_refuses_to_remove_locked_packages_and_those_that_they_need(installed, packagekit, requests, device):
    needed, locked, free = installed('needed'), installed('locked', requires=['needed']), installed('free')
    packagekit.lock('locked')
    for package_id, code, texts in (
            (needed, 'ErrorDepResolutionFailed', wordings_of_conflict('locked', 'needed')),
            (locked, 'ErrorPackageFailedToRemove', ['Unable to remove locked: Locked package.'])):
        request = requests.remove(package_id)
        assert request.of('error')[0] in [[code, text] for text in texts]
        assert request.exit == 'ExitFailed'
    assert {'needed', 'locked'} < set(device.packages())
    assert requests.remove(free).exit == 'ExitSuccess'


def test_refuses_to_remove_what_is_not_installed(packagekit, requests):
    assert requests.remove('absent;1-1;noarch;installed:').events[0] == [
        'error', 'ErrorPackageNotFound', "couldn't find package"]


def test_reports_the_output_of_a_failing_scriptlet(installed, requests, device):
    failing = installed('failing', scripts={'preun': 'echo first; echo second >&2; exit 3'})
    ((code, details),) = requests.remove(failing).of('error')
    assert code == 'ErrorCannotRemoveSystemPackage'
    assert 'first\nsecond\nerror: %preun(failing-1.0-1.noarch) scriptlet failed, exit status 3\n' in \
        without_indentation(details)
    assert 'failing' in device.packages()


def test_two_removals_at_once(installed, requests, device):
    ids = [installed('one'), installed('other')]
    for request in requests.run(*(['remove', package_id] for package_id in ids)):
        assert request.exit == 'ExitSuccess'
    assert device.packages() == ['keeper']


def test_is_started_again_after_it_was_killed(installed, packagekit, requests, processes, device, scriptlet):
    other, slow = installed('other'), installed('slow', scripts={'preun': scriptlet.commands})
    (request,), process = requests.start(['remove', slow])
    scriptlet.wait_running()
    packagekit.kill()
    processes.wait_end(process)
    assert request.events[-2:] == [['error', 'ErrorProcessKill', 'The PackageKit daemon has crashed'],
                                   ['finished', 'ExitKilled', 0]]
    assert 'slow' in device.packages()
    assert requests.resolve('other').ids == [other]
    assert packagekit.running

    scriptlet.finish()
    assert 'slow' not in device.packages(), 'rpm goes on without the daemon'
    assert requests.remove(other).exit == 'ExitSuccess'
