# SPDX-FileCopyrightText: velmora-installationhandler contributors
# SPDX-License-Identifier: BSD-3-Clause
"""The lines and objects of the command "monitor"."""

import json
import os
import re
import signal

from harness.client import INTERFACE, NAME, PATH
from gi.repository import GLib
from oddservice import OddService, die, send

TIME = re.compile(r'\d\d:\d\d:\d\d ')


def test_events(session_bus, manager, program, dialog, ctl, client, tmp_path):
    """Requests, questions, reports, and whether the service runs: it is not started by the monitor."""
    dialog.use('Controlled')
    session_bus.allow_activation()
    monitors = text, objects = [ctl.start('monitor', *option) for option in ([], ['--json'])]

    def wait(*words):
        for run, word in zip(monitors, words * 2):
            run.wait_line(word)

    wait('the service does not run', '"running":false')
    assert not session_bus.has_owner(NAME)
    program.start()
    wait('the service runs', '"running":true')
    client.install(['/absent "größer"\n.rpm'])
    wait('installFiles')
    wait('needConfirm')
    dialog.wait_shown(1)
    dialog.answer('dismissed')
    wait('installFinished')
    client.remove(['app'], keep_userdata=True)
    wait('removePackages')
    wait('removalFinished')
    program.kill()
    for run, line, number, status in [(text, 'the service does not run', signal.SIGINT, 130),
                                      (objects, '"running":false', signal.SIGTERM, 143)]:
        run.wait_line(line, 2)
        run.send_signal(number)
        assert run.wait()[::2] == (status, [])

    name = session_bus.connection.get_unique_name()
    assert all(TIME.match(line) for line in text.process.lines())
    lines = [TIME.sub('', line) for line in text.process.lines()]
    removal = 'The name org.freedesktop.PackageKit was not provided by any .service files'
    assert [line for line in lines if not line.startswith('removalFinished')] == [
        'the service does not run', 'the service runs',
        f'{name} installFiles(["/absent \\"größer\\"\\n.rpm"],false,false)', 'needConfirm()',
        'installFinished(false,"The user cancelled the installation")',
        f'{name} removePackages(["app"],true)', 'the service does not run']
    assert f'removalFinished(false,"{removal}")' in lines

    made = [made for made in objects.objects() if made.get('name') != 'removalFinished']
    assert made == [
        {'event': 'service', 'running': False}, {'event': 'service', 'running': True},
        {'event': 'request', 'name': 'installFiles', 'arguments': [
            ['/absent "größer"\n.rpm'], False, False], 'sender': name},
        {'event': 'signal', 'name': 'needConfirm'},
        {'event': 'signal', 'name': 'installFinished', 'success': False, 'text': 'The user cancelled the installation'},
        {'event': 'request', 'name': 'removePackages', 'arguments': [['app'], True], 'sender': name},
        {'event': 'service', 'running': False},
        {'event': 'end', 'outcome': 'interrupted', 'status': 143}]
    assert {'event': 'signal', 'name': 'removalFinished', 'success': False, 'text': removal} in objects.objects()


def test_signals_of_others(service, session_bus, ctl):
    """Only those of the service's connection count, and only calls of the service's interface."""
    run = ctl.start('monitor')
    run.wait_line('the service runs')
    values = GLib.Variant('(bs)', (True, ''))
    session_bus.connection.emit_signal(None, PATH, INTERFACE, 'installFinished', values)
    session_bus.connection.emit_signal(None, PATH, 'org.example.Other', 'removalFinished', values)
    service.barrier()
    service.kill()
    run.wait_line('the service does not run')
    assert [TIME.sub('', line) for line in run.process.lines()] == ['the service runs', 'the service does not run']


SIGNALS = [
    ('needConfirm', '()', (), {}),
    ('needConfirm', '(is)', (1, 'x'), {'arguments': [1, 'x']}),
    ('installFinished', '(bs)', (False, 'x'), {'success': False, 'text': 'x'}),
    ('installFinished', '()', (), {'arguments': []}),
    ('installFinished', '(b)', (True,), {'arguments': [True]}),
    ('removalFinished', '(sb)', ('x\n', True), {'arguments': ['x\n', True]}),
    ('removalFinished', '(bsu)', (True, '', 7), {'arguments': [True, '', 7]}),
    ('removalFinished', '(bo)', (True, '/'), {'arguments': [True, None]}),
]


def test_signals_with_any_values(session_bus, processes, ctl):
    """They are shown as they are. Success and text are told only where they can be."""
    odd = OddService(session_bus, processes)
    runs = text, objects = [ctl.start('monitor', *option) for option in ([], ['--json'])]
    for run in runs:
        run.wait_line('run')
    for name, signature, values, _ in SIGNALS:
        send(name, signature, *values)(odd.connection, None)
    die(odd.connection, None)
    for run in runs:
        run.wait_line('run', 2)
        run.send_signal(signal.SIGINT)
        run.wait()
    assert objects.objects()[1:-2] == [{'event': 'signal', 'name': name, **told} for name, _, _, told in SIGNALS]
    shown = [json.dumps(told.get('arguments', list(values)), separators=',:')[1:-1] for _, _, values, told in SIGNALS]
    assert [TIME.sub('', line) for line in text.process.lines()[1:-1]] == [
        f'{name}({values})' for (name, *_), values in zip(SIGNALS, shown)]


def test_bus_that_goes(processes, session_bus, ctl):
    runs = [ctl.start('monitor', *option) for option in ([], ['--json'])]
    for run in runs:
        run.wait_line('run')
    processes.kill(session_bus.process)

    for run in runs:
        assert run.wait()[::2] == (69, ['velmora-installctl: the session bus went away'])
    assert runs[1].objects()[-1] == {'event': 'end', 'outcome': 'unavailable', 'status': 69}


def test_end_without_a_reader(session_bus, ctl):
    """The reader often ends by the same signal."""
    reader, output = os.pipe()
    run = ctl.start('monitor', '--json', output=output)
    os.close(output)
    while b'\n' not in os.read(reader, 4096):
        pass
    os.close(reader)
    run.send_signal(signal.SIGINT)
    assert run.wait()[::2] == (130, [])


def test_arguments_that_no_method_takes(service, client, ctl):
    """A call may have any. The manual tells how they are shown."""
    runs = [ctl.start('monitor', *option) for option in ([], ['--json'])]
    for run in runs:
        run.wait_line('run')
    variant = GLib.Variant('s', 'x')
    client.start('removePackages', '((is)a{sv}voaiaasavntxtyayd)', (1, 'x'), {'x': variant}, variant, '/x', [1], [['x']],
                 [variant], -7, 2 ** 53, 2 ** 53 + 1, 2 ** 64 - 1, 65, b'x', 0.5)
    for run in runs:
        run.wait_line('removePackages')
        run.send_signal(signal.SIGINT)
        assert run.wait().err == []
    text, objects = runs
    shown = [None] * 7 + [-7, 2 ** 53, 2 ** 53, 18446744073709552000, 'A', 'x', 0.5]
    assert text.process.lines()[-1].endswith(f' removePackages({json.dumps(shown, separators=",:")[1:-1]})')
    assert objects.objects()[-2]['arguments'] == shown
