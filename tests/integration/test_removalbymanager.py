# SPDX-FileCopyrightText: velmora-installationhandler contributors
# SPDX-License-Identifier: BSD-3-Clause
"""Removals of what the package manager knows."""

import pytest
from gi.repository import GLib
from harness.client import Client
from support.records import calls_in_order
from support.removalrequests import KNOWN


@pytest.fixture
def manager(manager):
    """The package manager knows every name."""
    manager.answer('GetPackage', KNOWN)
    return manager


@pytest.fixture
def own_launcher(applications):
    """Writes a launcher into the user's own folder, and gives its path."""
    def write(name):
        path = applications / f'{name}.desktop'
        path.write_text('[Desktop Entry]\n', encoding='ascii')
        return str(path)
    return write


@pytest.mark.parametrize('signature, flags, options', [
    ('as', (), {}),
    ('asb', (False,), {}),
    ('asb', (True,), {'KeepUserData': True}),
])
def test_package_is_asked_about_and_removed(service, client, signals, manager, session_monitor, session_messages,
                                            signature, flags, options, system_calls):
    """The key is missing where the data may go; it is never false."""
    assert client.call('removePackages', f'({signature})', ['a.b'], *flags) == ()

    assert signals.wait('removalFinished') == (True, '')
    assert [(call.destination, call.path, call.interface, call.member, call.signature, call.arguments)
            for call in system_calls()] == [
        ('ru.quon.ZARN', '/ru/quon/ZARN', 'ru.quon.ZARN', 'GetPackage', 's', ('a.b',)),
        ('ru.quon.ZARN', '/ru/quon/ZARN', 'ru.quon.ZARN', 'Remove', 'sa{sv}', ('a.b', options))]
    # A number would be equal to the boolean.
    assert str(manager.calls('Remove')[0].arguments) == str(('a.b', options))
    (call,) = [message for message in session_monitor.messages(kind='method-call')
               if message.member == 'removePackages']
    (reply,) = [message for message in session_messages() if message.reply_serial == call.serial]
    assert (call.signature, reply.kind, reply.signature) == (signature, 'method-return', '')


def test_home_screen_hears_of_it(service, remove_and_wait, manager, launcher_model, own_launcher, session_messages):
    """It is called before the package manager, and hears of the end before everybody else."""
    path = own_launcher('a.b')

    assert remove_and_wait(['a.b']) == (True, '')
    assert calls_in_order(manager, launcher_model) == [
        ('GetPackage', ('a.b',)), ('updatingStarted', ('a.b', '', '', path)), ('Remove', ('a.b', {})),
        ('updatingFinished', ('a.b',))]
    target = ('org.orrinmobile.rozzle', '/LauncherModel', 'org.orrinmobile.rozzle.LauncherModel')
    own = (None, '/org/velmoraos/installationhandler', 'org.velmoraos.installationhandler')
    assert [(message.kind, message.destination, message.path, message.interface, message.member, message.signature,
             message.arguments) for message in session_messages() if message.interface in (target[2], own[2])] == [
        ('method-call', *target, 'updatingStarted', 'ssss', ('a.b', '', '', path)),
        ('method-call', *target, 'updatingFinished', 's', ('a.b',)),
        ('signal', *own, 'removalFinished', 'bs', (True, ''))]


def test_home_screen_is_waited_for(service, client, signals, manager, launcher_model, own_launcher):
    """The service waits for it before and after the removal. Known behaviour 3."""
    own_launcher('a')
    launcher_model.hang('updatingStarted')
    launcher_model.hang('updatingFinished')

    request = client.start('removePackages', '(as)', ['a'])
    launcher_model.wait_call('updatingStarted')
    assert [call.method for call in manager.calls()] == ['GetPackage']
    launcher_model.release('updatingStarted')
    launcher_model.wait_call('updatingFinished')
    assert len(manager.calls('Remove')) == 1
    assert signals.all == []
    launcher_model.release('updatingFinished')

    assert signals.wait('removalFinished') == (True, '')
    assert request.wait() == ()


def test_other_requests_wait_for_the_home_screen(service, client, signals, manager, launcher_model, own_launcher,
                                                 session_bus, session_monitor):
    """Known behaviour 4."""
    own_launcher('a')
    launcher_model.hang('updatingStarted')
    removal = client.start('removePackages', '(as)', ['a'])
    launcher_model.wait_call('updatingStarted')
    installation = client.start('installFiles', '(as)', [])
    launcher_model.release('updatingStarted')

    assert installation.wait() == removal.wait() == ()
    sent = session_monitor.messages(session_bus.name_of_process(service.process.pid))
    assert [message.kind for message in sent
            if message.member == 'installFinished' or message.destination == session_bus.connection.get_unique_name()
            and message.kind == 'method-return'] == ['method-return', 'signal', 'method-return']
    signals.wait('removalFinished')


def test_package_without_launcher_is_only_finished(service, remove_and_wait, manager, launcher_model, own_launcher,
                                                   applications):
    """Neither a launcher of a similar name nor a folder counts."""
    own_launcher('a')
    own_launcher('a.b.c')
    (applications / 'a.b.desktop').mkdir()

    assert remove_and_wait(['a.b']) == (True, '')
    assert calls_in_order(launcher_model) == [('updatingFinished', ('a.b',))]


def test_launcher_of_the_user_comes_before_that_of_the_system(service, client, signals, manager, launcher_model,
                                                              own_launcher, installed):
    """The home screen is told of one launcher only."""
    installed('both')
    installed('system')
    path = own_launcher('both')

    client.remove(['both', 'system'])

    signals.wait('removalFinished', 2)
    assert [call.arguments[3] for call in launcher_model.calls('updatingStarted')] == \
        [path, '/usr/share/applications/system.desktop']


@pytest.fixture
def installed(standins, system_bus, processes, package):
    """Lets the package manager install a package."""
    peer = Client(system_bus.connect(), processes)

    def install(name, **properties):
        manager = standins.package_manager
        manager.configure('installs', 'rpm')
        peer.call('Install', '(sa{sv})', str(package(name, **properties)), {}, name='ru.quon.ZARN',
                  path='/ru/quon/ZARN', interface='ru.quon.ZARN')
        manager.clear()
    return install


@pytest.mark.parametrize('keep', [False, True])
def test_package_is_really_removed(platform, service, remove_and_wait, device, installed, keep):
    installed('real')
    data = device.home / '.local/share/real/file'
    data.touch()

    assert remove_and_wait(['real'], keep_userdata=keep) == (True, '')
    assert device.packages() == []
    assert data.exists() == keep
    assert calls_in_order(platform.package_manager, platform.launcher_model) == [
        ('GetPackage', ('real',)),
        ('updatingStarted', ('real', '', '', '/usr/share/applications/real.desktop')),
        ('Remove', ('real', {'KeepUserData': True} if keep else {})),
        ('updatingFinished', ('real',))]
    service.barrier()
    assert service.log() == ['debug default: Uninstall "real" via ZARN', 'debug default: Uninstalled "real"']


def test_refusal_is_told_in_its_own_words(service, remove_and_wait, announced, manager, launcher_model):
    manager.refuse('Remove', 'ru.quon.ZARN.Error.Busy', 'Not "now".\nLater, größer.')

    assert remove_and_wait(['a']) == (False, 'Not "now".\nLater, größer.')
    assert announced() == ['removalFinished']
    assert service.log() == ['debug default: Uninstall "a" via ZARN',
                             'debug default: Failed to uninstall "a" "Not \\"now\\".\\nLater, größer."']
    assert calls_in_order(launcher_model) == [('updatingFinished', ('a',))]


@pytest.mark.parametrize('plan', [lambda manager: manager.refuse('Remove', 'ru.quon.ZARN.Error.Busy', ''),
                                  lambda manager: manager.answer('Remove', GLib.Variant('(bs)', (False, 'no')))],
                         ids=['refusal without words', 'answer with values'])
def test_only_the_text_of_an_error_counts(service, remove_and_wait, manager, plan):
    """Known behaviour 34."""
    plan(manager)

    assert remove_and_wait(['a']) == (True, '')
    assert service.debugs() == ['Uninstall "a" via ZARN', 'Uninstalled "a"']


def test_no_names_no_removal(service, client, announced, manager, launcher_model):
    client.call('removePackages', '(as)', [])
    client.remove([], keep_userdata=True)

    assert announced() == []
    assert calls_in_order(manager, launcher_model) == []
    assert service.log() == []


def test_two_names_end_as_their_answers_come(service, client, signals, announced, manager, launcher_model,
                                             own_launcher):
    first, second = own_launcher('first'), own_launcher('second')
    manager.hang('Remove')

    client.remove(['first', 'second'], keep_userdata=True)

    assert manager.wait_call('Remove', 2).arguments == ('second', {'KeepUserData': True})
    assert calls_in_order(manager, launcher_model) == [
        ('GetPackage', ('first',)), ('updatingStarted', ('first', '', '', first)),
        ('Remove', ('first', {'KeepUserData': True})),
        ('GetPackage', ('second',)), ('updatingStarted', ('second', '', '', second)),
        ('Remove', ('second', {'KeepUserData': True}))]
    assert signals.all == []
    manager.release_refusing('Remove', 'a.b.Second', 'second failed', which=1)
    assert signals.wait('removalFinished') == (False, 'second failed')
    manager.release('Remove')
    assert signals.wait('removalFinished', 2) == (True, '')
    assert announced() == ['removalFinished'] * 2
    assert [call.arguments for call in launcher_model.calls('updatingFinished')] == [('second',), ('first',)]


def test_same_name_twice_is_removed_twice(standins, service, signals, remove_and_wait, device, installed):
    """The second removal finds nothing any more. Known behaviour 24."""
    manager = standins.start('package-manager')
    installed('twice')
    manager.hang('Remove', 1)

    assert remove_and_wait(['twice', 'twice']) == (True, '')
    assert [call.method for call in manager.calls()] == ['GetPackage', 'Remove', 'GetPackage', 'Remove']
    assert device.packages() == []
    manager.release('Remove')
    assert signals.wait('removalFinished', 2) == (False, 'twice has not been installed')


def test_other_requests_are_answered_meanwhile(service, client, signals, manager):
    manager.hang('Remove')
    client.remove(['slow'])
    manager.wait_call('Remove')

    client.install([])

    assert signals.wait('installFinished') == (True, '')
    assert signals.names() == ['installFinished']
    manager.release('Remove')
    assert signals.wait('removalFinished') == (True, '')
