# SPDX-FileCopyrightText: velmora-installationhandler contributors
# SPDX-License-Identifier: BSD-3-Clause
"""A session bus that goes away, falls silent, or is none."""

import re
import signal
import socket
from contextlib import closing, contextmanager, suppress

import pytest
from gi.repository import Gio, GLib
from harness.processes import DEADLINE
from oddservice import OddService, answer, ask, removed

LOST = 'unclear: the session bus went away before the service reported an outcome'
NO_BUS = 'velmora-installctl: no session bus: '
SILENT = f'{NO_BUS}it has not answered within 1 s'
TIMEOUT = re.compile('.*: timeout: no (answer within 5 s; the service may go|outcome within 5 s; the service goes) on')
UNANSWERED = 'silent: timeout: no answer within 1 s; the service may go on'
UNREQUESTED = 'velmora-installctl: not requested: 1 of 2'


@pytest.fixture
def files(tmp_path):
    """The folder of the files a and b, and of a launcher."""
    for name in ('a', 'b', 'app.desktop'):
        (tmp_path / name).touch()
    return tmp_path


@pytest.fixture
def odd(session_bus, processes):
    """The service, which reports nothing."""
    odd = OddService(session_bus, processes)
    odd.plans.update({'answered': [answer], 'app.desktop': [answer], 'a': [ask, answer], '': [answer]})
    return odd


CASES = [
    (['install', 'a', 'b'], 4, f'a: {LOST}', UNREQUESTED),
    (['install', 'b', 'a'], 4, f'b: {LOST}', UNREQUESTED),
    (['install', '--notify', 'a'], 4, f'a: {LOST}'),
    (['remove', 'silent'], 4, f'silent: {LOST}'),
    (['remove', '--no-wait', 'silent'], 4, f'silent: {LOST}'),
    (['remove', 'answered', 'next'], 4, f'answered: {LOST}', UNREQUESTED),
    (['remove', '--launcher', 'app.desktop'], 4, f'app.desktop: {LOST}'),
    (['monitor'], 69, 'velmora-installctl: the session bus went away'),
]


@contextmanager
def waiting(ctl, odd, folder, *options):
    """Runs of all cases, which wait for something."""
    runs = [ctl.start(*arguments, *options, folder=folder) for arguments, *_ in CASES]
    for run, (arguments, *_) in zip(runs, CASES):
        run.wait_line('the service runs' if arguments == ['monitor'] else ': ')
    odd.wait_requests(len(CASES) - 1)
    yield zip(runs, CASES)


ends = pytest.mark.parametrize('number', [signal.SIGKILL, signal.SIGTERM], ids=['killed', 'ended'])


@ends
def test_end(session_bus, odd, ctl, files, number):
    """Nobody knows what becomes of the requests. A bus that is ended takes the service off the bus first."""
    with waiting(ctl, odd, files) as runs:
        session_bus.process.send_signal(number)
        for run, (arguments, status, *errors) in runs:
            assert run.wait()[::2] == (status, errors), arguments


@ends
def test_end_between_two_names(session_bus, odd, ctl, number):
    """The next name has not been requested."""
    odd.plans.update({'failed': [answer, removed(False, 'x')], '': []})
    run = ctl.start('remove', '--quiet', 'failed', 'next')
    odd.wait_requests(2)
    session_bus.process.send_signal(number)
    assert run.wait() == (69, [], ['failed: failed: x', 'velmora-installctl: the session bus went away'])


def test_silence(session_bus, odd, ctl, files):
    """A bus that hangs while something is being waited for, and one that hangs from the beginning."""
    with waiting(ctl, odd, files, '--timeout', '5') as runs:
        session_bus.process.send_signal(signal.SIGSTOP)
        later = [ctl.start(*arguments, '--timeout', '1', folder=files) for arguments, *_ in CASES]
        for run, (_, _, _, *others) in zip(later, CASES):
            assert run.wait() == (69, [], [SILENT, *others])
        for run, (arguments, _, _, *others) in runs:
            status, _, errors = run.wait()
            if arguments == ['monitor']:
                assert (status, errors) == (0, [])
            else:
                assert status == 124
                assert TIMEOUT.fullmatch(errors.pop(0))
                assert errors == others
    session_bus.process.send_signal(signal.SIGCONT)


def test_time_of_the_connection_counts(session_bus, odd, listener, ctl, there):
    """A bus that answers after five seconds leaves five of ten for the service. A run without an answer takes fourteen."""
    session_bus.process.send_signal(signal.SIGSTOP)
    connecting = ctl.start('monitor', '--timeout=5')
    runs = [ctl.start(*arguments, '--timeout=10') for arguments in (['remove', 'silent'], ['monitor'])]
    without_bus = ctl.start('monitor', '--timeout=14', **there)
    connecting.wait()
    session_bus.process.send_signal(signal.SIGCONT)
    assert without_bus.wait().status == 69
    assert [run.process.returncode for run in runs] == [124, 0]


@pytest.fixture
def listener(tmp_path):
    """A socket that programs can connect to."""
    with closing(socket.socket(socket.AF_UNIX)) as listening:
        listening.bind(str(tmp_path / 'bus'))
        (tmp_path / 'bus').chmod(0o666)
        listening.listen(20)
        listening.settimeout(DEADLINE)
        yield listening


@pytest.fixture
def there(files):
    """The options of a run that takes the socket for the bus."""
    return {'DBUS_SESSION_BUS_ADDRESS': f'unix:path={files}/bus', 'folder': files}


def test_socket_that_is_silent(listener, ctl, there):
    runs = [ctl.start(*arguments, '--timeout=1', **there) for arguments, *_ in CASES]
    objects = ctl.start('install', '--json', '--timeout=1', 'a', **there)
    for run, (_, _, _, *others) in zip(runs, CASES):
        assert run.wait() == (69, [], [SILENT, *others])
    objects.wait()
    told, end = objects.objects()
    assert (told['outcome'], told['text']) == ('unavailable', SILENT.partition(': ')[2])
    assert end == {'event': 'end', 'outcome': 'unavailable', 'status': 69}


@pytest.mark.parametrize('number, status', [(signal.SIGHUP, 129), (signal.SIGINT, 130), (signal.SIGTERM, 143)])
def test_interruption_before_there_is_a_bus(listener, ctl, there, number, status):
    """Nothing has been requested, and a file is not looked at any more."""
    cases = [*(arguments for arguments, *_ in CASES), ['install', 'a', 'absent'], ['install', '--json', 'a', 'b']]
    runs = [ctl.start(*arguments, **there) for arguments in cases]
    # They have begun to connect, and do not end by themselves.
    connections = [listener.accept() for _ in cases]
    for run in runs:
        run.send_signal(number)
    for run, arguments in zip(runs, cases):
        ended = run.wait()
        assert ended.status == status, arguments
        if arguments == ['monitor']:
            assert ended.err == []
        else:
            first, *others = [word for word in arguments[1:] if not word.startswith('-')]
            assert ended.err == [f'{first}: interrupted', *(UNREQUESTED for _ in others)]
        if '--json' not in arguments:
            assert ended.out == []
    assert [(made['event'], made['outcome'], made.get('status')) for made in runs[-1].objects()] == [
        ('result', 'interrupted', None), ('result', 'unrequested', None), ('end', 'interrupted', status)]
    for connection, _ in connections:
        connection.close()


GREETINGS = (b'', b'HTTP/1.1 400 Bad Request\r\n\r\n', b'OK 1234deadbeef\r\n', b'REJECTED EXTERNAL\r\n', b'\0' * 70000)


def test_not_a_bus(listener, ctl, there):
    """Whatever it says, the program ends."""
    greeting = b''

    def greet(_source, _condition):
        connection, _ = listener.accept()
        with closing(connection), suppress(BrokenPipeError):
            connection.recv(1)
            connection.sendall(greeting)
        return True
    watch = GLib.io_add_watch(listener.fileno(), GLib.PRIORITY_DEFAULT, GLib.IO_IN, greet)
    for greeting in GREETINGS:
        for arguments in (['install', 'a'], ['monitor']):
            run = ctl(*arguments, **there)
            assert (run.status, run.out, len(run.err)) == (69, [], 1), greeting
            assert run.err[0].startswith(NO_BUS) and len(run.err[0]) > len(NO_BUS) + 10, greeting
    GLib.source_remove(watch)


class GreetingBus:
    """Lets programs connect, and answers some methods."""

    def __init__(self, path, answered):
        """`answered` are the values of the answers, by method. None stands for a refusal."""
        self._answered = answered
        self._connections = []
        # The connection and the message of each call that has not been answered.
        self._unanswered = []
        self._calls = []
        self.falls_silent = False
        self._server = Gio.DBusServer.new_sync(f'unix:path={path}', Gio.DBusServerFlags.NONE, Gio.dbus_generate_guid(), None,
                                               None)
        path.chmod(0o666)
        self._server.connect('new-connection', self._connected)
        self._server.start()

    def stop(self):
        """Ends it. It does not go on with one connection while it closes another one."""
        self.falls_silent = True
        self._server.stop()
        while self._connections:
            self.close_first()

    def close_first(self):
        """Closes the connection that was made first."""
        self._connections.pop(0).close()

    def waiting(self, method):
        """The number of calls of this method that have not been answered."""
        return sum(message.get_member() == method for _, message in self._unanswered)

    def arguments(self, method):
        """The arguments of the calls of this method."""
        return [message.get_body().unpack() for message in self._calls if message.get_member() == method]

    def answer_late(self, method, values):
        """Answers such calls after all."""
        for connection, message in self._unanswered:
            if message.get_member() == method and not connection.is_closed():
                self._answer(connection, message, values)

    def _connected(self, _server, connection):
        self._connections.append(connection)
        connection.add_filter(self._received)
        return True

    def _received(self, connection, message, incoming):
        """Runs in the connection's own thread."""
        if not incoming:
            return message
        self._calls.append(message)
        if message.get_member() in self._answered and not self.falls_silent:
            self._answer(connection, message, self._answered[message.get_member()])
        else:
            self._unanswered.append((connection, message))
            GLib.MainContext.default().wakeup()
        return None

    @staticmethod
    def _answer(connection, message, values):
        if values is None:
            reply = message.new_method_error_literal('org.freedesktop.DBus.Error.AccessDenied', 'No.')
        else:
            reply = message.new_method_reply()
            reply.set_body(values)
        reply.set_sender('org.freedesktop.DBus')
        connection.send_message(reply, Gio.DBusSendMessageFlags.NONE)


GREETED = {'Hello': GLib.Variant('(s)', (':1.1',))}
PREPARED = {**GREETED, 'BecomeMonitor': GLib.Variant('()', ()), 'GetNameOwner': GLib.Variant('(s)', (':1.99',)),
            'RequestName': GLib.Variant('(u)', (1,))}


def without(method):
    """The answers that prepare a request, but one."""
    return {name: values for name, values in PREPARED.items() if name != method}


@pytest.mark.parametrize('greets', [False, True])
def test_bus_that_stops_at_the_greeting(ctl, files, there, greets):
    bus = GreetingBus(files / 'bus', GREETED if greets else {})
    runs = [ctl.start(*arguments, '--timeout=1', **there) for arguments, *_ in CASES]
    for run, (arguments, _, _, *others) in zip(runs, CASES):
        if greets and '--no-wait' in arguments:
            # The request has gone. Whether the service has it is not known.
            assert run.wait() == (124, ['silent: waiting for the service'], [UNANSWERED])
        else:
            assert run.wait() == (69, [], [SILENT, *others])
    bus.stop()


def test_bus_that_answers_when_the_time_is_over(ctl, files, there):
    """Nothing is requested any more."""
    bus = GreetingBus(files / 'bus', without('RequestName'))
    names = [f'name{number}' for number in range(2000)]
    run = ctl.start('remove', '--json', '--timeout=1', *names, **there)
    run.wait_line('"result"')
    bus.answer_late('RequestName', PREPARED['RequestName'])
    assert run.wait()[::2] == (69, [SILENT, 'velmora-installctl: not requested: 1999 of 2000'])
    assert [made['event'] for made in run.objects()] == [*('result' for _ in names), 'end']
    bus.stop()


@pytest.mark.parametrize('answer', [PREPARED['BecomeMonitor'], None], ids=['allows', 'refuses'])
def test_first_line_of_the_monitor(ctl, files, there, answer):
    """It comes when all requests that follow are shown, or when the bus has refused to show them."""
    bus = GreetingBus(files / 'bus', without('BecomeMonitor'))
    run = ctl.start('monitor', **there)
    assert ctl('monitor', '--timeout=1', **there) == (69, [], [SILENT])
    assert run.process.lines() == []
    bus.answer_late('BecomeMonitor', answer)
    run.wait_line('the service runs')
    run.send_signal(signal.SIGINT)
    assert run.wait()[::2] == (130, [])
    bus.stop()


def test_interruption_before_the_first_request(processes, ctl, files, there):
    """Nothing has been requested."""
    bus = GreetingBus(files / 'bus', {**without('RequestName'), 'Notify': GLib.Variant('(u)', (1,))})
    run = ctl.start('install', '--notify', 'a', 'b', **there)
    processes.wait_until(lambda: bus.waiting('RequestName'), 'call of RequestName')
    run.send_signal(signal.SIGINT)
    assert run.wait() == (130, [], ['a: interrupted', UNREQUESTED])
    (shown,) = bus.arguments('Notify')
    assert shown[3:5] == ('Not installed', 'a: interrupted')
    bus.stop()


GONE = [f'velmora-installctl: {text}' for text in ('the session bus went away', 'not requested: 1 of 2')]


@pytest.mark.parametrize('method', sorted(set(PREPARED) - set(GREETED)))
def test_end_before_the_first_request(processes, ctl, files, there, method):
    """Nothing has been requested."""
    bus = GreetingBus(files / 'bus', without(method))
    run = ctl.start('install', 'a', 'b', **there)
    processes.wait_until(lambda: bus.waiting(method), f'call of {method}')
    bus.stop()
    assert run.wait() == (69, [], GONE)


def test_end_of_one_connection_after_the_other(processes, ctl, files, there):
    """The first one is that for the calls of others. Nothing has been requested over the second one before it closes too."""
    bus = GreetingBus(files / 'bus', without('BecomeMonitor'))
    runs = []
    # While the second one starts, the first one does all that it can.
    for count in (1, 2):
        runs.append(ctl.start('install', 'a', 'b', **there))
        processes.wait_until(lambda: bus.waiting('BecomeMonitor') == count, 'call of BecomeMonitor')
    bus.falls_silent = True
    bus.close_first()
    processes.wait_until(lambda: bus.waiting('RequestName') or bus.waiting('installFiles'), 'next call')
    bus.stop()
    for run in runs:
        assert run.wait() == (69, [], GONE)


def test_no_bus(ctl, files):
    """Addresses that lead nowhere. Problems of files are told all the same."""
    for address in ('', 'nonsense', 'unix:path=/dev/null', 'unix:path=/', 'tcp:host=localhost,port=1', 'unix:', ';'):
        variables = {'DBUS_SESSION_BUS_ADDRESS': address, 'folder': files}
        run = ctl('install', '--quiet', 'a', 'b', **variables)
        assert (run.status, run.out) == (69, [])
        assert run.err[0].startswith(NO_BUS) and run.err[1:] == [UNREQUESTED], address
        assert ctl('install', 'absent', **variables) == (66, [], ['absent: No such file or directory'])
        assert ctl('monitor', **variables).status == 69
