# SPDX-FileCopyrightText: velmora-installationhandler contributors
# SPDX-License-Identifier: BSD-3-Clause
"""The control interface, operation by operation."""

import time

import pytest
from gi.repository import GLib
from standin.remoteerror import RemoteError

ASK = {'name': 'ru.quon.developermode', 'path': '/', 'interface': 'ru.quon.developermode'}
METHOD = 'IsSilentInstallationEnabled'
CONTROL = {'name': 'org.velmoraos.simulator.DeveloperMode', 'path': '/org/velmoraos/simulator',
           'interface': 'org.velmoraos.simulator.Control'}


@pytest.fixture
def standin(standins):
    """The simplest stand-in, running."""
    return standins.start('developer-mode')


def ask(peer):
    return peer.call(METHOD, **ASK)


def control(peer, operation, signature, *arguments):
    return peer.call(operation, signature, *arguments, **CONTROL)


@pytest.fixture
def mistakes(standin):
    """A list for the mistakes that the test makes; checks that the stand-in has reported these and no others."""
    made = []
    yield made
    assert standin.unexpected() == made
    standin.unexpected = lambda: []


def test_configure_changes_a_parameter(standin, peer):
    assert ask(peer) == (False,)
    standin.configure('silent-installation', True)
    assert ask(peer) == (True,)
    standin.configure('silent-installation', 'false')
    assert ask(peer) == (False,)


def test_refuse_until_restored(standin, peer):
    standin.refuse(METHOD, 'a.b.NotNow', 'come back later')
    for _ in range(2):
        with pytest.raises(RemoteError) as failure:
            ask(peer)
        assert (failure.value.name, failure.value.message) == ('a.b.NotNow', 'come back later')
    standin.restore(METHOD)
    assert ask(peer) == (False,)


def test_plans_for_a_number_of_calls_come_in_turn(standin, peer):
    standin.refuse(METHOD, 'a.b.First', times=1)
    standin.answer(METHOD, GLib.Variant('(s)', ('second',)), times=2)
    answers = []
    for _ in range(4):
        try:
            answers.append(ask(peer))
        except RemoteError as failure:
            answers.append(failure.name)
    assert answers == ['a.b.First', ('second',), ('second',), (False,)]


def test_later_plan_for_all_calls_replaces_the_former(standin, peer):
    standin.refuse(METHOD, 'a.b.Former')
    standin.answer(METHOD, GLib.Variant('(u)', (7,)))
    assert ask(peer) == (7,)


@pytest.mark.parametrize('values', [
    '()', "('text',)", '(uint32 3,)', "([1, 2], {'key': <'value'>}, (1.5, 'b'))", '(@as [], @a{ss} {}, <<true>>)',
    "(objectpath '/a', signature 'as', byte 0x07, int64 -5)",
])
def test_answer_of_any_type(standin, peer, values):
    answer = GLib.Variant.parse(None, values)
    standin.answer(METHOD, answer)

    raw = peer.connection.call_sync(ASK['name'], ASK['path'], ASK['interface'], METHOD, None, None, 0, 20000, None)

    assert raw.get_type_string() == answer.get_type_string()
    assert raw.equal(answer)


def test_answers_and_refusals_are_delayed(standin, peer):
    standin.delay(METHOD, 300)
    before = time.monotonic_ns()
    assert ask(peer) == (False,)
    assert time.monotonic_ns() - before >= 300_000_000
    assert standin.calls()[0].stamp - before < 300_000_000, 'the call is recorded when it arrives'
    standin.refuse(METHOD, 'a.b.Late')
    with pytest.raises(RemoteError, match='a.b.Late'):
        ask(peer)


def test_hanging_calls_are_released_one_by_one(standin, peer):
    standin.hang(METHOD)
    calls = [peer.start(METHOD, **ASK) for _ in range(4)]
    standin.wait_call(METHOD, 4)
    assert standin.hanging() == [METHOD] * 4
    assert not any(call.answered for call in calls)

    standin.release(METHOD, 1)
    assert calls[1].wait() == (False,)
    standin.release_refusing(METHOD, 'a.b.Never', 'no', which=0)
    with pytest.raises(RemoteError, match='a.b.Never: no'):
        calls[0].wait()
    assert not calls[2].answered and not calls[3].answered
    standin.configure('silent-installation', True)
    standin.release(METHOD)
    assert calls[2].wait() == calls[3].wait() == (True,)
    assert standin.hanging() == []


def test_hang_for_one_call_only(standin, peer):
    standin.hang(METHOD, times=1)
    first = peer.start(METHOD, **ASK)
    assert standin.wait_call(METHOD).sender == peer.connection.get_unique_name()
    assert ask(peer) == (False,)
    assert not first.answered
    standin.release(METHOD)
    assert first.wait() == (False,)


def test_introspection_can_hang_too_but_is_not_recorded(standin, peer):
    standin.hang('Introspect')
    introspection = peer.start('Introspect', name=ASK['name'], path='/',
                               interface='org.freedesktop.DBus.Introspectable')
    assert ask(peer) == (False,)
    assert not introspection.answered
    standin.release('Introspect')
    assert '<method name="IsSilentInstallationEnabled">' in introspection.wait()[0]
    assert [call.method for call in standin.calls()] == [METHOD]


@pytest.mark.parametrize('operation, signature, arguments, error, text', [
    ('Hang', '(su)', ('Install', 0), 'UnknownMethod', 'no method "Install"'),
    ('Delay', '(su)', ('Install', 0), 'UnknownMethod', 'no method "Install"'),
    ('Restore', '(s)', ('Install',), 'UnknownMethod', 'no method "Install"'),
    ('Refuse', '(sssu)', ('Install', 'a.b', '', 0), 'UnknownMethod', 'no method "Install"'),
    ('Release', '(si)', (METHOD, -1), 'NothingHangs', f'no such call of "{METHOD}" hangs'),
    ('ExitOn', '(ss)', (METHOD, 'sometime'), 'InvalidValue',
     'the process exits "before" or "after" the answer, not "sometime"'),
    ('Configure', '(sv)', ('speed', GLib.Variant('s', 'high')), 'UnknownParameter',
     'no parameter "speed", only silent-installation'),
    ('Configure', '(sv)', ('silent-installation', GLib.Variant('s', 'maybe')), 'UnknownParameter',
     'silent-installation is one of false, true, not "maybe"'),
])
def test_wrong_arguments_are_errors_and_recorded(standin, peer, mistakes, operation, signature, arguments, error, text):
    with pytest.raises(RemoteError) as failure:
        control(peer, operation, signature, *arguments)
    assert (failure.value.name, failure.value.message) == ('org.velmoraos.simulator.Error.' + error, text)
    mistakes.append('control: ' + text)


@pytest.mark.parametrize('method, signature, arguments, target', [
    ('Enable', '()', (), {}),
    (METHOD, '(i)', (1,), {}),
    (METHOD, '()', (), {'path': '/elsewhere'}),
    (METHOD, '()', (), {'interface': 'ru.quon.other'}),
    ('GetCalls', '()', (), {'interface': 'org.freedesktop.DBus.Mock'}),
    ('Explode', '()', (), CONTROL), ('Hang', '(s)', (METHOD,), CONTROL),
    ('Get', '(ss)', ('ru.quon.developermode', 'Silent'), {'interface': 'org.freedesktop.DBus.Properties'}),
])
def test_unknown_methods_are_errors_and_recorded(standin, peer, mistakes, method, signature, arguments, target):
    with pytest.raises(RemoteError, match='org.freedesktop.DBus.Error.UnknownMethod'):
        peer.call(method, signature, *arguments, **{**ASK, **target})
    if target is not CONTROL:
        (call,) = standin.calls()
        assert (call.method, call.signature, call.arguments) == (method, signature[1:-1], arguments)
    (text,) = standin.unexpected()
    assert f'{target.get("interface", ASK["interface"])}.{method}({signature[1:-1]})' in text
    mistakes.append(text)


def test_calls_are_listed_as_they_were_on_the_wire(standins, peer):
    manager = standins.start('package-manager', installs='nothing')
    before = time.monotonic_ns()

    peer.call('Install', '(sa{sv})', '/a file', {'option': GLib.Variant('au', [1, 2])}, name='ru.quon.ZARN',
              path='/ru/quon/ZARN', interface='ru.quon.ZARN')

    (call,) = manager.calls()
    assert call[1:] == (peer.connection.get_unique_name(), '/ru/quon/ZARN', 'ru.quon.ZARN', 'Install', 'sa{sv}',
                        ('/a file', {'option': [1, 2]}))
    assert before < call.stamp < time.monotonic_ns()
    assert manager.calls('Remove') == []
    manager.clear()
    assert manager.calls() == []


def test_stamps_of_two_stand_ins_are_comparable(standins, standin, peer):
    mce = standins.start('mce')
    for _ in range(3):
        ask(peer)
        peer.call('get_display_status', name='com.nokia.mce', path='/com/nokia/mce/request',
                  interface='com.nokia.mce.request')
    stamps = [call.stamp for pair in zip(standin.calls(), mce.calls()) for call in pair]
    assert len(stamps) == 6
    assert stamps == sorted(stamps)


def test_vanish_and_come_back(standin, peer, system_bus):
    standin.vanish()
    assert not system_bus.has_owner(ASK['name'])
    with pytest.raises(RemoteError, match='org.freedesktop.DBus.Error.ServiceUnknown'):
        ask(peer)
    assert standin.calls() == []
    standin.come_back()
    assert ask(peer) == (False,)


def test_cannot_come_back_when_somebody_else_is_there(standin, peer, system_bus):
    standin.vanish()
    system_bus.ask('RequestName', '(su)', ASK['name'], 4)
    with pytest.raises(RemoteError, match='somebody else owns ru.quon.developermode'):
        control(peer, 'Return', '()')


def test_exit_before_the_answer(standin, peer):
    standin.exit_on(METHOD, 'before')
    with pytest.raises(RemoteError, match='org.freedesktop.DBus.Error.NoReply'):
        ask(peer)
    standin.wait_exit()


def test_exit_after_the_answer(standin, standins, peer, system_bus):
    standin.exit_on(METHOD, 'after')
    assert ask(peer) == (False,)
    standin.wait_exit()
    system_bus.wait_owner(ASK['name'], owned=False)
    standins.start('developer-mode', silent_installation=True)
    assert ask(peer) == (True,)


def test_emit_sends_any_signal(standin, peer, processes):
    received = []
    peer.connection.signal_subscribe(None, 'a.b', None, None, None, 0,
                                     lambda _c, _s, path, _i, name, values: received.append(
                                         (path, name, values.get_type_string(), values.unpack())))
    peer.call('Ping', name='org.freedesktop.DBus', interface='org.freedesktop.DBus.Peer', path='/')
    standin.emit('/p', 'a.b', 'Odd', GLib.Variant('(ias)', (1, ['x'])))
    standin.emit('/p', 'a.b', 'Empty', GLib.Variant('()', ()), destination=peer.connection.get_unique_name())
    processes.wait_until(lambda: len(received) == 2, 'two signals')
    assert received == [('/p', 'Odd', '(ias)', (1, ['x'])), ('/p', 'Empty', '()', ())]
