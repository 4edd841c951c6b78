# SPDX-FileCopyrightText: velmora-installationhandler contributors
# SPDX-License-Identifier: BSD-3-Clause
"""Command lines, and the program without a bus or a service."""

import os
import re
import signal
from pathlib import Path

import pytest

PROJECT = Path(__file__).resolve().parents[2]
MANUAL = PROJECT / 'ctl/velmora-installctl.1.scd'
PACKAGE = PROJECT / 'packaging/velmora-installationhandler.spec'

NO_COMMAND, NO_SUBJECT = 'a command is missing', 'a file or a name is missing'
WRONG_NAME = 'a name is empty or not UTF-8'
SECONDS = '--timeout takes a whole number from 0 to 2147483'
TOO_MANY = 'with --no-wait no more than 100 names can be given'
BYTES = os.fsdecode(b'\xff')


def clash(one, other):
    return f'{one} does not go with {other}'


USAGE = [
    ([], NO_COMMAND), ([''], "there is no command ''"), (['--json'], NO_COMMAND), (['--'], NO_COMMAND),
    *(([word], f'there is no command {word}') for word in ('frobnicate', 'Install', 'instal', '-', '/a.rpm')),
    (['\x1b[31mred'], 'there is no command \\x1b[31mred'), (['-x', 'install'], "Unknown option 'x'."),
    (['--', '--version'], 'there is no command --version'), (['install', '--frob', 'a'], "Unknown option 'frob'."),
    (['install', '--sdk=1', 'a'], "Unexpected value after '--sdk'."), (['install', '--fr\x1bob'], "Unknown option 'fr\\x1bob'."),
    (['monitor', '--timeout'], "Missing value after '--timeout'."),
    (['install'], NO_SUBJECT), (['remove'], NO_SUBJECT), (['install', '--quiet', '--'], NO_SUBJECT),
    (['monitor', 'a', 'b'], clash('a', 'monitor')), (['remove', '--launcher', '/a', 'b'], clash('b', '--launcher')),
    (['monitor', 'lin\ne'], clash('lin\\x0ae', 'monitor')), (['monitor', ''], clash("''", 'monitor')),
    *((['remove', option, 'a'], clash(option, 'remove')) for option in ('--sdk', '--notify')),
    *((['monitor', option], clash(option, 'monitor'))
      for option in ('--sdk', '--notify', '--keep-user-data', '--no-wait', '--quiet')),
    *(([command, '--launcher', 'a', 'b'], clash('--launcher', command)) for command in ('monitor', 'install')),
    (['remove', '--launcher', 'a', '--keep-user-data'], clash('--keep-user-data', '--launcher')),
    (['remove', '--launcher=', 'a'], clash('a', '--launcher')),
    (['install', '--notify', '--no-wait', 'a'], clash('--notify', '--no-wait')),
    (['monitor', '--notify', '--no-wait'], clash('--notify', 'monitor')),
    (['install', '--timeout', '1', '--timeout', 'x', 'a'], SECONDS),
    (['--frob', '--help', '--version'], "Unknown option 'frob'."),
    *((['install', f'--timeout={value}', 'a'], SECONDS) for value in (
        '', 'x', '-1', '1.5', '1s', '0x10', '2147484', '4294967296', '99999999999999999999', '٣')),
    (['remove', ''], WRONG_NAME), (['remove', 'a', BYTES], WRONG_NAME),
    *((['remove', *names], 'a name must not begin with the character U+FEFF') for names in (
        ['\ufeffapp'], ['\ufeff'], ['a', '\ufeff\ufeffb'])),
    (['\ufeffremove', 'a'], 'there is no command \ufeffremove'),
    (['remove', '--no-wait', *(f'name{number}' for number in range(101))], TOO_MANY),
]


def test_bad_usage(ctl):
    for arguments, reason in USAGE:
        assert ctl(*arguments) == \
            (64, [], [f'velmora-installctl: {reason}', 'velmora-installctl: see velmora-installctl --help']), arguments


def section(manual, heading):
    return manual.partition(f'\n# {heading}\n')[2].partition('\n# ')[0]


def test_help_and_version(ctl):
    """The help has the synopsis, the options and the exit statuses of the manual."""
    shown = ctl('--help')
    assert (shown.status, shown.err) == (0, [])
    assert max(map(len, shown.out)) < 80
    for arguments in (['-h'], ['install', '--help'], ['--help', 'frobnicate'], ['--timeout', 'x', '--help'],
                      ['--version', '--help'], ['--help', '--quiet'], ['--help', '--help']):
        assert ctl(*arguments) == shown
    manual = MANUAL.read_text(encoding='utf-8')
    usage, options, statuses = re.split(r'\n\w.*:\n', '\n'.join(shown.out))
    synopsis = section(manual, 'SYNOPSIS').replace('*', '')
    assert usage.split() == re.sub('_([a-z]+)_', lambda word: word[1].upper(), synopsis).split()
    terms = re.findall(r'^\*-.*', section(manual, 'OPTIONS'), re.MULTILINE)
    assert re.findall(r'(?<!\w)--?[a-z][a-z-]*', options) == re.findall(r'\*(--?[a-z-]+)\*', ' '.join(terms))
    assert re.findall(r'\b\d+\b', statuses) == re.findall(r'\*(\d+)\*', section(manual, 'EXIT STATUS'))

    (version,) = re.findall(r'^Version:\s*(\S+)', PACKAGE.read_text(encoding='utf-8'), re.MULTILINE)
    assert ctl('--version') == ctl('install', '--version') == ctl('--version',
                                                                  '--timeout', 'x') == (0, [f'velmora-installctl {version}'], [])


def test_without_a_bus(ctl, tmp_path):
    """Of several files the first one tells the reason."""
    (tmp_path / 'a').touch()
    (tmp_path / 'b').touch()
    absent = {'DBUS_SESSION_BUS_ADDRESS': 'unix:path=/absent', 'folder': tmp_path}
    reason = 'no session bus: Failed to connect to socket /absent: No such file or directory'
    error = f'velmora-installctl: {reason}'

    assert ctl('install', 'a', 'b', **absent) == \
        (69, [], [error, 'velmora-installctl: not requested: 1 of 2'])
    assert ctl('install', 'absent', **absent).status == 66
    assert ctl('remove', '--no-wait', '--quiet', 'app', **absent) == (69, [], [error])
    assert ctl('remove', '--launcher', 'a', **absent) == (69, [], [error])
    assert ctl('monitor', **absent) == (69, [], [error])
    run = ctl.start('monitor', '--json', **absent)
    assert run.wait()[::2] == (69, [error])
    assert run.objects() == [{'event': 'end', 'outcome': 'unavailable', 'status': 69}]
    run = ctl.start('remove', '--json', 'app', **absent)
    assert run.wait()[::2] == (69, [error])
    assert run.objects() == [
        {'event': 'result', 'subject': 'app', 'position': 1, 'count': 1, 'outcome': 'unavailable', 'text': reason,
         'reported': False, 'uncertain': False},
        {'event': 'end', 'outcome': 'unavailable', 'status': 69}]


@pytest.mark.parametrize('without_address', [{'starter': ['env', '-u', 'DBUS_SESSION_BUS_ADDRESS']},
                                             {'DBUS_SESSION_BUS_ADDRESS': ''}])
def test_without_an_address(service, ctl, without_address):
    """The bus is that of the user's folder, or else that of the X display."""
    run = ctl.start('monitor', **without_address)
    run.wait_line('the service runs')
    run.send_signal(signal.SIGINT)
    assert run.wait().status == 130
    run = ctl('monitor', XDG_RUNTIME_DIR='', **without_address)
    assert (run.status, run.out) == (69, [])
    assert run.err[0].startswith('velmora-installctl: no session bus: ') and 'DISPLAY' in run.err[0]


def test_without_a_service(session_bus, ctl, tmp_path):
    """The bus does not know how to start it. Files that are behind the first one are not requested."""
    (tmp_path / 'a').touch()
    (tmp_path / 'b').touch()
    error = 'velmora-installctl: the service is not available: The name org.velmoraos.installationhandler was not ' \
        'provided by any .service files'

    assert ctl('install', 'a', 'b', folder=tmp_path) == \
        (69, ['a: reading'], [error, 'velmora-installctl: not requested: 1 of 2'])
    assert ctl('remove', 'app', '--no-wait') == (69, ['app: waiting for the service'], [error])
    assert ctl('remove', 'app', '--quiet', '--timeout', '2147483') == (69, [], [error])


def test_service_is_started(session_bus, manager, ctl):
    """The bus does that, and the program listens from before its call."""
    session_bus.allow_activation()

    run = ctl('remove', 'app')
    assert (run.status, run.out) == (1, ['app: removing'])
    assert run.err[0].startswith('app: failed: ')
