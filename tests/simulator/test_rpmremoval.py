# SPDX-FileCopyrightText: velmora-installationhandler contributors
# SPDX-License-Identifier: BSD-3-Clause
"""The package manager's stand-in knows what it has installed, and really removes it."""

from pathlib import Path

import pytest
from gi.repository import GLib
from harness.client import Client
from standin.remoteerror import RemoteError
from support.packagekit import install

MANAGER = {'name': 'ru.quon.ZARN', 'path': '/ru/quon/ZARN', 'interface': 'ru.quon.ZARN'}
KEEP = {'KeepUserData': GLib.Variant('b', True)}
UNKNOWN = 'ru.quon.ZARN.Error.UnknownPackage'


@pytest.fixture
def ask(standins, system_bus, processes):
    """Calls a method of the package manager; an error gives its name and text."""
    standins.start('package-manager')
    peer = Client(system_bus.connect(), processes)

    def call(method, signature, *arguments):
        try:
            return peer.call(method, signature, *arguments, **MANAGER)
        except RemoteError as error:
            return error.name, error.message
    return call


@pytest.fixture
def installed(ask, package):
    """Has a package installed by the package manager."""
    def build_and_install(name, **properties):
        assert ask('Install', '(sa{sv})', str(package(name, **properties)), {}) == ()
    return build_and_install


@pytest.fixture
def data(device):
    """The data folder of an application."""
    return lambda name: device.home / '.local/share' / name


def test_it_knows_what_it_has_installed(ask, installed):
    assert ask('GetPackage', '(s)', 'known') == (UNKNOWN, 'known has not been installed')
    installed('known', version='3.1')
    assert ask('GetPackage', '(s)', 'known') == ({'Name': 'known', 'Version': '3.1'},)
    installed('known', version='3.2')
    assert ask('GetPackage', '(s)', 'known') == ({'Name': 'known', 'Version': '3.2'},)


def test_it_does_not_know_what_others_have_installed(ask, package, device):
    install(package('native'))
    assert ask('GetPackage', '(s)', 'native') == (UNKNOWN, 'native has not been installed')
    assert ask('Remove', '(sa{sv})', 'native', {}) == (UNKNOWN, 'native has not been installed')
    assert device.packages() == ['native']


def test_nothing_is_known_after_a_refused_installation(ask, package):
    ask('Install', '(sa{sv})', str(package('needy', requires=['absent'])), {})
    assert ask('GetPackage', '(s)', 'needy')[0] == UNKNOWN


def test_package_and_data_are_removed(ask, installed, device, data):
    installed('real')
    (data('real') / 'file').touch()
    assert ask('Remove', '(sa{sv})', 'real', {}) == ()
    assert device.packages() == []
    assert not Path('/usr/share/applications/real.desktop').exists()
    assert not data('real').exists()
    assert ask('GetPackage', '(s)', 'real')[0] == UNKNOWN


def test_data_is_kept_when_asked(ask, installed, device, data):
    installed('real')
    (data('real') / 'file').touch()
    assert ask('Remove', '(sa{sv})', 'real', KEEP) == ()
    assert device.packages() == []
    assert (data('real') / 'file').exists()


def test_data_is_not_kept_when_asked_not_to(ask, installed, data):
    installed('real')
    assert ask('Remove', '(sa{sv})', 'real', {'KeepUserData': GLib.Variant('b', False)}) == ()
    assert not data('real').exists()


def test_package_that_others_need_stays(ask, installed, device, data):
    installed('needed')
    installed('needing', requires=['needed'])
    name, text = ask('Remove', '(sa{sv})', 'needed', {})
    assert name == 'ru.quon.ZARN.Error.MissingDependency'
    assert 'needed is needed by (installed) needing-1.0-1.noarch' in text
    assert sorted(device.packages()) == ['needed', 'needing']
    assert data('needed').exists()
    assert ask('GetPackage', '(s)', 'needed')[0]['Name'] == 'needed'


def test_failing_script(ask, installed, device):
    installed('failing', scripts={'preun -p <lua>': 'error("no")'})
    assert ask('Remove', '(sa{sv})', 'failing', {})[0] == 'ru.quon.ZARN.Error.ScriptFailed'
    assert device.packages() == ['failing']
