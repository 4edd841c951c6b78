# SPDX-FileCopyrightText: velmora-installationhandler contributors
# SPDX-License-Identifier: BSD-3-Clause
"""The package manager's stand-in, which installs and removes packages with rpm."""

from pathlib import Path

import pytest
from gi.repository import GLib
from packages import damage
from standin.remoteerror import RemoteError
from support.packagekit import install as install_by_rpm

MANAGER = {'name': 'ru.quon.ZARN', 'path': '/ru/quon/ZARN', 'interface': 'ru.quon.ZARN'}
ERROR = 'ru.quon.ZARN.Error.'
SHARED = '/usr/share/applications/shared.desktop'
FAILING = 'error("no")'


@pytest.fixture
def manager(standins):
    return standins.start('package-manager')


@pytest.fixture
def ask(manager, peer):
    """Calls a method of the package manager: the reply's values, or the code and the text of an error."""
    def call(method, signature, *arguments):
        try:
            return peer.call(method, signature, *arguments, **MANAGER)
        except RemoteError as error:
            assert error.name.startswith(ERROR) and error.message
            return error.name.removeprefix(ERROR), error.message
    return call


@pytest.fixture
def install(ask):
    """Installs a file: (), or the code and the text of an error."""
    return lambda path: ask('Install', '(sa{sv})', str(path), {})


@pytest.fixture
def installed(install, package, device):
    """Builds and installs a package, and makes the application's data folder; the file in that folder."""
    def build_and_install(name, **properties):
        assert install(package(name, **properties)) == ()
        data = device.home / '.local/share' / name / 'file'
        data.touch()
        return data
    return build_and_install


def test_package_and_its_files_are_installed(installed, device):
    installed('real')
    assert device.packages() == ['real']
    assert Path('/usr/share/applications/real.desktop').read_text(encoding='utf-8').startswith('[Desktop Entry]')


@pytest.mark.parametrize('present, refused, code', [
    ({'version': '1'}, {'version': '1'}, 'AlreadyInstalled'),
    ({'version': '2'}, {'version': '1'}, 'AlreadyInstalled'),
    ({'name': 'other'}, {'requires': ['nothing-that-exists']}, 'MissingDependency'),
    ({'name': 'other'}, {'conflicts': ['other']}, 'Conflict'),
    ({'name': 'other', 'files': {SHARED: 'one'}}, {'files': {SHARED: 'two'}}, 'Conflict'),
    ({'name': 'other'}, {'scripts': {'pre -p <lua>': FAILING}}, 'ScriptFailed'),
], ids=['same version', 'older version', 'dependency', 'declared conflict', 'conflict of files', 'script'])
def test_package_is_refused(installed, install, package, device, present, refused, code):
    installed(**{'name': 'real', 'files': {SHARED: 'one'}, **present})
    before = device.packages()
    assert install(package(**{'name': 'real', **refused}))[0] == code
    assert device.packages() == before
    assert Path(SHARED).read_text(encoding='utf-8') == 'one'


@pytest.mark.parametrize('damaged', [damage.payload, lambda file: file[:200], lambda file: file[:1000],
                                     lambda file: file[:-100]], ids=['payload', 'cut 200', 'cut 1000', 'cut end'])
def test_damaged_file(install, package, device, damaged):
    file = package('damaged')
    file.write_bytes(damaged(file.read_bytes()))
    assert install(file)[0] == 'DamagedPackage'
    assert device.packages() == []


@pytest.mark.parametrize('contents', [b'', b'text\n', b'/usr/bin/env\n'], ids=['empty', 'text', 'list of files'])
def test_file_that_is_no_package(install, tmp_path, contents):
    file = tmp_path / 'other.rpm'
    file.write_bytes(contents)
    assert install(file)[0] == install(tmp_path)[0] == 'NotAPackage'


@pytest.mark.parametrize('path', ['/nowhere/absent.rpm', '', 'relative.rpm', '-qa', '/tmp/*', 'http://localhost/x.rpm',
                                  '/' + 'a' * 300, '/tmp' + '/a' * 5000])
def test_missing_file(install, path):
    assert install(path)[0] == 'FileNotFound'


def test_paths_are_taken_literally(install, package, device, tmp_path):
    file = package('literal').rename(tmp_path / ' a\'b"c [d] *?\\\n%1 ü.rpm')
    assert install(file) == ()
    assert device.packages() == ['literal']


def test_other_calls_are_answered_during_an_installation(manager, peer, package, device, tmp_path):
    lock = tmp_path / 'go'
    slow = package('slow', scripts={'pre -p <lua>': f'while not posix.access("{lock}") do posix.sleep(0) end'})

    installing = peer.start('Install', '(sa{sv})', str(slow), {}, **MANAGER)
    manager.wait_call('Install')
    assert manager.calls()[0].method == 'Install'
    assert not installing.answered
    lock.touch()
    assert installing.wait() == ()
    assert device.packages() == ['slow']


def test_installed_packages_are_known(ask, installed, device):
    assert ask('GetPackage', '(s)', 'known') == ('UnknownPackage', 'known has not been installed')
    for version in ('3.1', '3.2'):
        installed('known', version=version)
        assert ask('GetPackage', '(s)', 'known') == ({'Name': 'known', 'Version': version},)
        assert device.packages() == ['known']


def test_packages_of_others_are_unknown(ask, package, device):
    install_by_rpm(package('native'))
    for method, signature, *options in (('GetPackage', '(s)'), ('Remove', '(sa{sv})', {})):
        assert ask(method, signature, 'native', *options) == ('UnknownPackage', 'native has not been installed')
    assert device.packages() == ['native']


def test_refused_packages_are_unknown(ask, install, package):
    install(package('needy', requires=['absent']))
    assert ask('GetPackage', '(s)', 'needy')[0] == 'UnknownPackage'


@pytest.mark.parametrize('options, kept', [({}, False), ({'KeepUserData': GLib.Variant('b', False)}, False),
                                           ({'KeepUserData': GLib.Variant('b', True)}, True)])
def test_removal(ask, installed, device, options, kept):
    data = installed('real')
    assert ask('Remove', '(sa{sv})', 'real', options) == ()
    assert device.packages() == []
    assert not Path('/usr/share/applications/real.desktop').exists()
    assert data.exists() == data.parent.exists() == kept
    assert ask('GetPackage', '(s)', 'real')[0] == 'UnknownPackage'


def test_package_that_others_need_stays(ask, installed, device):
    data = installed('needed')
    installed('needing', requires=['needed'])
    code, text = ask('Remove', '(sa{sv})', 'needed', {})
    assert code == 'MissingDependency'
    assert 'needed is needed by (installed) needing-1.0-1.noarch' in text
    assert sorted(device.packages()) == ['needed', 'needing']
    assert data.exists()
    assert ask('GetPackage', '(s)', 'needed')[0]['Name'] == 'needed'


def test_package_with_a_failing_script_stays(ask, installed, device):
    installed('failing', scripts={'preun -p <lua>': FAILING})
    assert ask('Remove', '(sa{sv})', 'failing', {})[0] == 'ScriptFailed'
    assert device.packages() == ['failing']


def test_recording_alone_changes_nothing(ask, install, manager, package, device):
    install(package('stays'))
    manager.configure('installs', 'nothing')
    assert install('/nowhere.rpm') == ()
    assert manager.calls('Install')[1].arguments == ('/nowhere.rpm', {})
    for name in ('stays', 'unknown'):
        assert ask('Remove', '(sa{sv})', name, {}) == ()
    assert device.packages() == ['stays']
    manager.configure('installs', 'rpm')
    assert install('/nowhere.rpm')[0] == 'FileNotFound'
