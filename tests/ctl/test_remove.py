# SPDX-FileCopyrightText: velmora-installationhandler contributors
# SPDX-License-Identifier: BSD-3-Clause
"""Removals by name and by launcher."""

from pathlib import Path

import pytest
from support.removalrequests import KNOWN

LAUNCHER = Path('/usr/share/applications/app.desktop')
REFUSAL = 'ru.quon.ZARN.Error.NoSpace'
GONE = 'the launcher is gone, and the service has reported nothing'

# Names, and how lines show them.
NAMES = {
    **{name: name for name in ('app', 'two  words', ' ', '100%', '%1', 'größer 文', '-dash', '--sdk', 'remove', '*', '/a', 'App')},
    'line\nfeed': 'line\\x0afeed', '\x1b[31m': '\\x1b[31m', 'a\u202eb': 'a\\u202eb',
}


@pytest.fixture
def managed(manager):
    """The package manager knows every name."""
    manager.answer('GetPackage', KNOWN)
    return manager


@pytest.fixture
def launcher():
    """A launcher of the system."""
    LAUNCHER.write_text('[Desktop Entry]\n', encoding='utf-8')
    yield LAUNCHER
    LAUNCHER.unlink(missing_ok=True)


def test_names(managed, service, ctl, session_monitor):
    """Each name is a request of its own, a name that is given twice one request."""
    assert ctl('remove', 'app') == (0, ['app: removing', 'app: removed'], [])
    assert ctl('remove', '--quiet', 'app') == (0, [], [])

    managed.clear()
    before = len(session_monitor.messages())
    run = ctl('remove', '--', *NAMES, 'app')
    assert (run.status, run.err) == (0, [])
    assert run.out == [line for number, shown in enumerate(NAMES.values(), 1)
                       for line in (f'{shown}: removing {number} of {len(NAMES)}', f'{shown}: removed')]
    assert [call.arguments[0] for call in managed.calls('Remove')] == list(NAMES)
    requests = [(message.signature, message.arguments) for message in session_monitor.messages()[before:]
                if message.member == 'removePackages']
    assert requests == [('asb', ([name], False)) for name in NAMES]


def test_objects(managed, service, ctl):
    managed.refuse('Remove', REFUSAL, 'disk\nfull', times=1)
    run = ctl.start('remove', '--json', 'first', 'second')

    assert run.wait()[::2] == (1, ['first: failed: disk full'])
    made = run.objects()
    first, second = ({'subject': name, 'position': number, 'count': 2}
                     for number, name in enumerate(['first', 'second'], 1))
    result = {'event': 'result', 'reported': True, 'uncertain': False}
    assert made == [
        {'event': 'state', 'state': 'removing', **first},
        {'outcome': 'failed', 'text': 'disk\nfull', **result, **first},
        {'event': 'state', 'state': 'removing', **second},
        {'outcome': 'done', 'text': '', **result, **second},
        {'event': 'end', 'outcome': 'failed', 'status': 1}]


def test_one_request_for_all(managed, service, ctl, session_monitor, signals):
    """--no-wait, and the other options of the call."""
    before = len(session_monitor.messages())
    assert ctl('remove', '--no-wait', '--keep-user-data', 'one', 'two') == \
        (0, ['one: waiting for the service', 'one: requested', 'two: requested'], [])
    assert ctl('remove', '--keep-user-data', 'three').status == 0
    run = ctl.start('remove', '--no-wait', '--json', '--quiet', 'four')
    assert run.wait() == (0, [], [])
    run = ctl.start('remove', '--no-wait', '--json', 'five', 'six')
    assert run.wait()[::2] == (0, [])
    five, six = ({'subject': name, 'position': number, 'count': 2} for number, name in enumerate(['five', 'six'], 1))
    result = {'event': 'result', 'outcome': 'requested', 'text': '', 'reported': False, 'uncertain': False}
    assert run.objects() == [
        {'event': 'state', 'state': 'waiting', **five}, {**result, **five}, {**result, **six},
        {'event': 'end', 'outcome': 'requested', 'status': 0}]

    requests = [message.arguments for message in session_monitor.messages()[before:] if message.member
                == 'removePackages']
    assert requests == [(['one', 'two'], True), (['three'], True), (['four'], False), (['five', 'six'], False)]
    signals.wait('removalFinished', 6)


def test_unknown_names(standins, managed, service, ctl):
    """The service's word counts: they have been removed (Known behaviour 18). Without PackageKit it reports a failure
    and then a success, which is not taken for that of the next name (Known behaviour 25)."""
    managed.restore('GetPackage')
    run = ctl('remove', 'unknown', 'absent')
    assert (run.status, run.out) == (1, ['unknown: removing 1 of 2', 'absent: removing 2 of 2'])
    assert [line.partition(': The name')[0] for line in run.err] == ['unknown: failed', 'absent: failed']

    standins.start('package-kit')
    assert ctl('remove', '--quiet', 'unknown') == (0, [], [])


def test_real_packages(platform, service, ctl, device, package):
    """The package manager removes those that it has installed. One that another package needs stays."""
    device.mark_as_emulator()
    assert ctl('install', package('needed'), package('needing', requires=['needed']), package('free')).status == 0

    run = ctl('remove', 'free', 'needed')
    assert run.status == 1, run
    assert run.out == ['free: removing 1 of 2', 'free: removed', 'needed: removing 2 of 2']
    assert run.err[0].startswith('needed: failed: ')
    assert sorted(device.packages()) == ['needed', 'needing']


def test_launchers(standins, managed, service, ctl, applications, launcher):
    """Those of the user's own go without a report (Known behaviour 21). Others are reported."""
    standins.start('runtime-manager')
    own = applications / 'größer app.desktop'

    def remove(*arguments, group='privileged'):
        return ctl.start('remove', '--launcher', *arguments, folder=applications, group=group)

    own.touch()
    run = remove(own.name)
    assert run.wait() == (0, [f'{own.name}: removing', f'{own.name}: removed: {GONE}'], [])
    assert not own.exists()
    own.touch()
    run = remove(own.as_uri(), '--json')
    assert run.wait()[::2] == (0, [])
    assert run.objects()[1:] == [
        {'event': 'result', 'subject': str(own), 'position': 1, 'count': 1, 'outcome': 'done', 'text': GONE,
         'reported': False, 'uncertain': False},
        {'event': 'end', 'outcome': 'done', 'status': 0}]
    own.touch()
    assert remove(own, '--no-wait').wait() == (0, [f'{own}: waiting for the service', f'{own}: requested'], [])

    assert remove(launcher).wait() == (0, [f'{launcher}: removing', f'{launcher}: removed'], [])
    managed.refuse('Remove', REFUSAL, 'disk full', times=1)
    assert remove(launcher, '--quiet').wait() == (1, [], [f'{launcher}: failed: disk full'])

    for option, state in ([], 'removing'), (['--no-wait'], 'waiting for the service'):
        run = remove(launcher, *option, group='velmora')
        refusal = f'{launcher}: unprivileged: PID {run.process.pid} is not in privileged group'
        assert run.wait() == (77, [f'{launcher}: {state}'], [refusal])
    assert [call.arguments[0] for call in managed.calls('Remove')] == ['app', 'app']
