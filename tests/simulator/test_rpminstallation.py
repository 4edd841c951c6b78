# SPDX-FileCopyrightText: velmora-installationhandler contributors
# SPDX-License-Identifier: BSD-3-Clause
"""The package manager's stand-in really installs, and tells rpm's refusals apart."""

from pathlib import Path

import pytest
from harness.client import Client
from packages import damage
from standin.remoteerror import RemoteError

MANAGER = {'name': 'ru.quon.ZARN', 'path': '/ru/quon/ZARN', 'interface': 'ru.quon.ZARN'}


@pytest.fixture
def install(standins, system_bus, processes):
    """Asks for an installation: "" when it succeeds, else the last part of the error's name."""
    standins.start('package-manager')
    peer = Client(system_bus.connect(), processes)

    def ask(path):
        try:
            peer.call('Install', '(sa{sv})', str(path), {}, **MANAGER)
        except RemoteError as error:
            prefix, _, code = error.name.rpartition('.')
            assert prefix == 'ru.quon.ZARN.Error'
            assert error.message
            return code
        return ''
    return ask


def test_package_and_its_files_are_installed(install, package, device):
    assert install(package('real')) == ''
    assert device.packages() == ['real']
    assert Path('/usr/share/applications/real.desktop').read_text(encoding='utf-8').startswith('[Desktop Entry]')


def test_newer_version_replaces_the_older(install, package, device):
    assert install(package('real', version='1')) == ''
    assert install(package('real', version='2')) == ''
    assert device.packages() == ['real']
    assert install(package('real', version='1')) == 'AlreadyInstalled'


def test_same_version_is_refused(install, package):
    assert install(package('twice')) == ''
    assert install(package('twice')) == 'AlreadyInstalled'


def test_missing_dependency(install, package, device):
    assert install(package('needy', requires=['nothing-that-exists'])) == 'MissingDependency'
    assert device.packages() == []


def test_declared_conflict(install, package):
    assert install(package('first')) == ''
    assert install(package('second', conflicts=['first'])) == 'Conflict'


def test_conflict_of_files(install, package):
    shared = '/usr/share/applications/shared.desktop'
    assert install(package('first', files={shared: 'one'})) == ''
    assert install(package('second', files={shared: 'two'})) == 'Conflict'
    assert Path(shared).read_text(encoding='utf-8') == 'one'


def test_failing_script(install, package, device):
    assert install(package('failing', requires=[], scripts={'pre -p <lua>': 'error("no")'})) == 'ScriptFailed'
    assert device.packages() == []


def test_damaged_payload(install, package, device):
    file = package('damaged')
    file.write_bytes(damage.payload(file.read_bytes()))
    assert install(file) == 'DamagedPackage'
    assert device.packages() == []


@pytest.mark.parametrize('length', [200, 1000, -100])
def test_truncated_file(install, package, device, length):
    file = package('cut')
    file.write_bytes(file.read_bytes()[:length])
    assert install(file) == 'DamagedPackage'
    assert device.packages() == []


@pytest.mark.parametrize('contents', [b'', b'text\n', b'/usr/bin/env\n'], ids=['empty', 'text', 'list of files'])
def test_something_else_than_a_package(install, tmp_path, contents):
    file = tmp_path / 'other.rpm'
    file.write_bytes(contents)
    assert install(file) == 'NotAPackage'


def test_folder(install, tmp_path):
    assert install(tmp_path) == 'NotAPackage'


@pytest.mark.parametrize('path', ['/nowhere/absent.rpm', '', 'relative.rpm', '-qa', '/tmp/*', 'http://localhost/x.rpm',
                                  '/' + 'a' * 300, '/tmp' + '/a' * 5000])
def test_missing_file(install, path):
    assert install(path) == 'FileNotFound'


def test_names_are_taken_literally(install, package, device, tmp_path):
    file = package('literal').rename(tmp_path / ' a\'b"c [d] *?\\\n%1 ü.rpm')
    assert install(file) == ''
    assert device.packages() == ['literal']


def test_other_calls_are_answered_while_one_installs(standins, system_bus, processes, package, device, tmp_path):
    manager = standins.start('package-manager')
    peer = Client(system_bus.connect(), processes)
    lock = tmp_path / 'go'
    slow = package('slow', scripts={'pre -p <lua>': f'while not posix.access("{lock}") do posix.sleep(0) end'})

    installing = peer.start('Install', '(sa{sv})', str(slow), {}, **MANAGER)
    manager.wait_call('Install')
    assert manager.calls()[0].method == 'Install'
    assert not installing.answered
    lock.touch()
    assert installing.wait() == ()
    assert device.packages() == ['slow']
