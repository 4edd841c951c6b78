# SPDX-FileCopyrightText: velmora-installationhandler contributors
# SPDX-License-Identifier: BSD-3-Clause
"""A service that is not the real one: it answers nonsense, late, twice or never, and dies."""

import os
import signal

import pytest
from gi.repository import GLib
from harness.bus import ACTIVATION_FOLDER, SERVICE_FILE
from harness.client import INTERFACE, NAME
from oddservice import OddService, answer, answer_with, ask, die, installed, refuse, removed, send
from support.otherservice import OtherService

ERROR = 'org.freedesktop.DBus.Error.'
UNREQUESTED = 'velmora-installctl: not requested: 1 of 2'
ENDED = 'unclear: the service ended before it reported an outcome'
NONSENSE = 'unclear: the service reported something that cannot be understood'
UNAVAILABLE = 'velmora-installctl: the service is not available: '
GONE = f'{UNAVAILABLE}The name {NAME} was not provided by any .service files'


@pytest.fixture
def odd(session_bus, processes):
    """The service, with a plan for each subject."""
    return OddService(session_bus, processes)


@pytest.fixture
def files(tmp_path):
    """The folder of the files a and b."""
    for name in 'ab':
        (tmp_path / name).touch()
    return tmp_path


def test_refusals(odd, ctl, files):
    """The meaning of an error depends on its name. The text may be anything."""
    for name, text, status, line in [
        *((ERROR + name, 'Not mine.', 69, UNAVAILABLE + 'Not mine.') for name in (
            'UnknownMethod', 'UnknownObject', 'UnknownInterface', 'InvalidArgs', 'InvalidSignature')),
        (ERROR + 'AccessDenied', 'Not you.', 77, 'a: unprivileged: Not you.'),
        *((ERROR + name, 'No.', 1, 'a: failed: No.') for name in (
            'Failed', 'NoMemory', 'LimitsExceeded', 'ServiceUnknown', 'Timeout', 'TimedOut', 'Unheard')),
        ('org.example.Odd', 'two\nlines, \x1b[31mred\x07\u202e', 1, 'a: failed: two lines, \\x1b[31mred\\x07\\u202e'),
        ('org.example.Odd', '', 1, 'a: failed: org.example.Odd'),
        ('org.example.Odd', 'x' * 2 ** 20, 1, 'a: failed: ' + 'x' * 2 ** 20),
    ]:
        odd.plans['a'] = [refuse(name, text)]
        for option in ([], ['--no-wait']):
            assert ctl('install', '--quiet', *option, 'a', folder=files) == (status, [], [line]), name

    # An answer that holds for all files ends the requests. After any other the next file follows.
    for name, status, requests in [('UnknownMethod', 69, ['a']), ('AccessDenied',
                                                                  77, ['a']), ('Failed', 1, ['a', 'b'])]:
        odd.requests.clear()
        odd.plans['a'] = odd.plans['b'] = [refuse(ERROR + name, 'No.')]
        assert ctl('install', '--quiet', 'a', 'b', folder=files).status == status
        assert odd.requests == requests


def test_nonsense(odd, ctl, files):
    """Values of wrong types, and signals that mean nothing."""
    good = [ask, answer, installed(True, '')]
    for plan, status, *errors in [
        ([ask, answer_with('(is)', 1, 'x'), installed(True, '')], 0),
        ([send('needConfirm', '(i)', 1), answer, installed(True, '')], 0),
        ([send('frobbed', '(i)', 1), *good], 0),
        ([send('installFinished', '(i)', 1, path='/elsewhere'), *good], 0),
        ([send('installFinished', '(i)', 1, interface='org.example.Other'), *good], 0),
        *(([ask, answer, send('installFinished', *values)], 4, f'a: {NONSENSE}') for values in (
            [], ['(b)', True], ['(sb)', '', True], ['(bsb)', True, '', True], ['(us)', 1, ''], ['(bo)', True, '/'])),
        ([ask, send('installFinished'), answer, installed(True, '')], 4, f'a: {NONSENSE}'),
        ([ask, answer, installed(False, 'a\n\x1b[2Jb\r')], 1, 'a: failed: a \\x1b[2Jb'),
        ([ask, answer, installed(False, 'x\n' * 10000)], 1, 'a: failed: ' + ' '.join('x' * 10000)),
        ([ask, answer, installed(False, '')], 1, 'a: failed'),
    ]:
        odd.plans['a'] = plan
        assert ctl('install', '--quiet', 'a', folder=files) == (status, [], errors)

    odd.plans.update(a=[ask, answer, send('installFinished')], b=good)
    assert ctl('install', 'a', 'b', folder=files)[::2] == (4, [f'a: {NONSENSE}'])
    odd.plans['app'] = [send('removalFinished', '(s)', 'x'), answer]
    assert ctl('remove', '--quiet', 'app') == (4, [], [f'app: {NONSENSE}'])


def test_text_of_a_success(odd, ctl, files):
    """It is told like any other."""
    odd.plans['a'] = [ask, answer, installed(True, 'Well done.')]
    assert ctl('install', 'a', folder=files).out[-1] == 'a: installed: Well done.'


def test_output_that_nobody_reads(odd, ctl, files):
    """All requests are made."""
    odd.plans['a'] = odd.plans['b'] = [ask, answer, installed(True, '')]
    reader, writer = os.pipe()
    os.close(reader)
    assert ctl('install', 'a', 'b', folder=files, output=writer) == \
        (74, [], ['velmora-installctl: the output could not be written'])
    os.close(writer)
    assert odd.requests == ['a', 'b']


def test_reports_in_any_number_and_order(odd, ctl, files):
    """The first one counts. Known behaviour 25."""
    odd.plans.update(
        a=[installed(False, 'earlier'), ask, installed(True, ''), answer, installed(False, 'later')],
        b=[ask, answer, installed(False, 'own'), installed(True, '')])
    assert ctl('install', '--quiet', 'a', 'b', folder=files) == (1, [], ['b: failed: own'])

    odd.plans.update({'one': [removed(False, 'x'), removed(True, ''), answer], '': [removed(True, ''), answer],
                      'two': [answer, removed(False, 'y')], 'three': [answer, removed(True, '')]})
    odd.requests.clear()
    assert ctl('remove', '--quiet', 'one', 'two', 'three') == (1, [], ['one: failed: x', 'two: failed: y'])
    assert odd.requests == ['one', '', 'two', '', 'three']
    # Any answer to the request between two names lets the next name follow.
    odd.plans[''] = [refuse(ERROR + 'Failed', 'No.')]
    assert ctl('remove', '--quiet', 'one', 'three') == (1, [], ['one: failed: x'])
    # Outcomes of the other kind are somebody else's.
    odd.plans['three'] = [answer, installed(False, 'other'), removed(True, '')]
    assert ctl('remove', '--quiet', 'three') == (0, [], [])


def test_signals_of_others(odd, session_bus, ctl, files):
    """Only the owner of the name is listened to."""
    odd.plans['a'] = [ask, answer]
    run = ctl.start('install', 'a', folder=files)
    run.wait_line('waiting for your answer')
    other = session_bus.connect()
    for report in (installed(False, 'forged'), send('installFinished')):
        report(other, None)
    other.flush_sync()
    installed(True, '')(odd.connection, None)
    assert run.wait()[::2] == (0, [])


def test_deaths(odd, ctl, files):
    """Before the answer, before the report, and after it."""
    for plan, status, *errors in [
        ([die], 4, f'a: {ENDED}'), ([ask, die], 4, f'a: {ENDED}'), ([answer, die], 4, f'a: {ENDED}'),
        ([ask, answer, die], 4, f'a: {ENDED}'), ([ask, answer, installed(True, ''), die], 0),
        ([ask, installed(True, ''), die], 0),
    ]:
        odd.plans['a'] = plan
        assert ctl('install', '--quiet', 'a', folder=files) == (status, [], errors)
        odd.start()

    # The next file finds nobody.
    odd.plans['a'] = [ask, answer, die]
    assert ctl('install', '--quiet', 'a', 'b', folder=files) == (69, [], [f'a: {ENDED}', GONE])
    odd.start()
    odd.plans['app'] = [die]
    assert ctl('remove', '--quiet', '--no-wait', 'app') == (4, [], [f'app: {ENDED}'])
    odd.start()
    odd.plans.update({'app': [answer, removed(False, 'x')], '': [die]})
    assert ctl('remove', '--quiet', 'app', 'next', 'last') == \
        (69, [], ['app: failed: x', GONE, 'velmora-installctl: not requested: 1 of 3'])


def ask_bus(connection, method, signature, *arguments):
    """Calls the bus itself."""
    connection.call_sync('org.freedesktop.DBus', '/', 'org.freedesktop.DBus', method, GLib.Variant(signature, arguments),
                         None, 0, 20000, None)


def test_another_owner(odd, session_bus, processes, ctl, files):
    """One that takes the name does not know of the request."""
    def lose_name(connection, _invocation):
        ask_bus(connection, 'ReleaseName', '(s)', NAME)
        OddService(session_bus, processes)
    odd.plans['a'] = [ask, answer, lose_name, installed(True, '')]
    assert ctl('install', '--quiet', 'a', folder=files) == (4, [], [f'a: {ENDED}'])


@pytest.mark.parametrize('interface', [
    None, '<interface name="org.example.Other"><method name="installFiles"/></interface>',
    f'<interface name="{INTERFACE}"><method name="install"/></interface>',
    f'<interface name="{INTERFACE}"><method name="installFiles"><arg type="s" direction="in"/></method></interface>',
], ids=['no object', 'another interface', 'another method', 'other arguments'])
def test_name_of_somebody_else(session_bus, ctl, files, interface):
    connection = session_bus.connect()
    if interface:
        OtherService(connection, answer, f'<node>{interface}</node>')
    else:
        ask_bus(connection, 'RequestName', '(su)', NAME, 4)
    for option in ([], ['--no-wait']):
        run = ctl('install', '--quiet', *option, 'a', 'b', folder=files)
        assert (run.status, run.out) == (69, [])
        assert run.err[0].startswith(UNAVAILABLE) and len(run.err[0]) > len(UNAVAILABLE) + 10
        assert run.err[1:] == [UNREQUESTED]


def test_silence(odd, ctl, files, tmp_path):
    """No wait is longer than --timeout, whatever is missing. All cases wait at the same time."""
    launcher = tmp_path / 'app.desktop'
    launcher.touch()
    odd.plans.update({'answered': [answer], 'failed': [answer, removed(False, 'x')], 'app.desktop': [answer],
                      'a': [ask], 'b': [ask, answer]})
    unanswered, unfinished = ('timeout: no answer within 1 s; the service may go on',
                              'timeout: no outcome within 1 s; the service goes on')
    cases = [
        (['remove', 'silent'], f'silent: {unanswered}'),
        (['remove', '--no-wait', 'silent'], f'silent: {unanswered}'),
        (['remove', 'answered'], f'answered: {unfinished}'),
        (['remove', '--launcher', 'app.desktop'], f'app.desktop: {unfinished}'),
        (['install', 'a'], f'a: {unfinished}'),
        (['install', 'b'], f'b: {unfinished}'),
    ]
    runs = [ctl.start(*arguments, '--quiet', '--timeout', '1', folder=files) for arguments, _ in cases]
    for run, (arguments, line) in zip(runs, cases):
        assert run.wait() == (124, [], [line]), arguments
    # The reports of these would be taken for theirs.
    assert ctl('remove', '--quiet', '--timeout', '2', 'failed', 'next') == (124, [], ['failed: failed: x', UNREQUESTED])
    odd.requests.clear()
    run = ctl.start('remove', '--json', 'failed', 'next')
    odd.wait_requests(2)
    run.send_signal(signal.SIGINT)
    assert run.wait()[::2] == (130, ['failed: failed: x', UNREQUESTED])
    assert [made['outcome'] for made in run.objects() if made['event'] != 'state'] == \
        ['failed', 'unrequested', 'interrupted']


def test_report_without_a_question(odd, ctl, files):
    """It is not taken for the end of this request."""
    odd.plans['a'] = [answer, installed(True, '')]
    assert ctl('install', '--timeout', '1', 'a', folder=files)[::2] == \
        (124, ['a: timeout: no outcome within 1 s; the service goes on'])


def start_with(session_bus, command):
    """The bus starts the service with a command."""
    session_bus.allow_activation()
    started = ACTIVATION_FOLDER / SERVICE_FILE.name
    started.unlink()
    started.write_text(f'[D-BUS Service]\nName={NAME}\nExec={command}\n', encoding='ascii')
    session_bus.ask('ReloadConfig', '()')


def test_interruption_before_the_service_runs(session_bus, ctl, files):
    start_with(session_bus, '/usr/bin/sleep 100')
    run = ctl.start('install', 'a', folder=files)
    run.wait_line('reading')
    run.send_signal(signal.SIGINT)
    assert run.wait() == (130, ['a: reading'], ['a: interrupted'])


def test_ends_of_the_time(session_bus, processes, ctl, files):
    """A service that has not started is not available. One that runs may have the request."""
    def end_of(name):
        run = ctl.start('install', '--json', '--timeout', '1', name, folder=files)
        status = run.wait().status
        *_, result, end = run.objects()
        assert end == {'event': 'end', 'outcome': result['outcome'], 'status': status}
        return status, result['outcome'], result['text']

    start_with(session_bus, '/usr/bin/sleep 100')
    assert end_of('a') == (69, 'unavailable', 'the service is not available: it has not started within 1 s')
    # One after the other: the question for one would be taken for that of the other.
    odd = OddService(session_bus, processes)
    assert end_of('a') == (124, 'timeout', 'no answer within 1 s; the service may go on')
    odd.plans['b'] = [ask, answer]
    assert end_of('b') == (124, 'timeout', 'no outcome within 1 s; the service goes on')


@pytest.mark.parametrize('command, reason', [
    ('/usr/bin/false', 'exited with status 1'), ('/absent', 'Failed to execute program'),
    ('/usr/bin/kill -9 $$', 'exited'), ("'", '')], ids=['fails', 'is absent', 'is killed', 'is no command'])
def test_service_that_cannot_be_started(session_bus, ctl, files, command, reason):
    start_with(session_bus, command)

    for option in ([], ['--no-wait']):
        run = ctl('install', '--quiet', *option, 'a', folder=files)
        assert (run.status, run.out, len(run.err)) == (69, [], 1)
        assert run.err[0].startswith(UNAVAILABLE) and reason in run.err[0]
