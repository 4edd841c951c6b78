# SPDX-FileCopyrightText: velmora-installationhandler contributors
# SPDX-License-Identifier: BSD-3-Clause
"""The view in a terminal: one line that changes, and the outcomes in colours."""

import pytest
from support.removalrequests import KNOWN
from terminal import COLOUR, Terminal, width

GREEN, YELLOW, RED = ('\033[%dm' % number for number in (32, 33, 31))
CONFIRMING = "waiting for your answer on the device's screen, then installing"
DECLINED, CONFIRMED = 'dismissed', 'requestInstall'
REFUSAL = 'org.example.Error.NoSpace'


@pytest.fixture
def terminal(processes, ctl):
    """Starts the program on a terminal, with the width of the window and the variables that it is given."""
    opened = []

    def start(*arguments, columns=120, folder='/', **variables):
        opened.append(Terminal(processes, columns))
        opened[-1].start(ctl.command(*arguments, **{'TERM': 'xterm', **variables}), folder)
        return opened[-1]
    yield start
    for one in opened:
        one.close()


@pytest.fixture
def asking(manager, service, dialog):
    """The service, whose dialogs stay until they are answered."""
    dialog.use('Controlled')
    return service


@pytest.fixture
def files(tmp_path):
    """The folder of the files a, b and c, and of one with a long name."""
    for name in ('a', 'b', 'c', LONG):
        (tmp_path / name).touch()
    return tmp_path


LONG = 'größer-文文文-' + 'long' * 15 + '.rpm'


def without_time(states):
    """The texts of a line that changes, each once, without the elapsed time."""
    texts = [state.rpartition(' (')[0] if state.endswith(')') else state for state in states]
    return [text for number, text in enumerate(texts) if number == 0 or text != texts[number - 1]]


def test_line_changes(asking, manager, dialog, terminal, files):
    """It shows what is being waited for, since when, and leaves the outcomes."""
    shown = terminal('install', 'a', 'b', 'c', folder=files)
    for number, answer in enumerate([CONFIRMED, DECLINED, CONFIRMED], 1):
        dialog.wait_shown(number)
        if number == 1:
            shown.wait_text(r'installing \(0:01\)')
        if number == 3:
            manager.refuse('Install', REFUSAL)
        dialog.answer(answer, number=number)

    outcomes = ['a: installed', 'b: declined: The user cancelled the installation',
                'c: failed: zarn_installation_error_desc_NoSpace (code: NoSpace)']
    assert shown.wait_end() == (1, outcomes)
    states = [state for state in without_time(shown.states()) if not state.endswith('waiting for the service')]
    outcomes[2] = outcomes[2].rpartition(' (')[0]
    assert states == [text for name, outcome in zip('abc', outcomes)
                      for text in (f'{name}: reading', f'{name}: {CONFIRMING}', outcome)]
    for colour, word in ((GREEN, 'installed'), (YELLOW, 'declined'), (RED, 'failed')):
        assert f': {colour}{word}\033[0m' in shown.text()
    assert len(COLOUR.findall(shown.text())) == 6


def test_plainer_terminals(service, manager, terminal):
    """Without colours, and without a changing line."""
    manager.answer('GetPackage', KNOWN)
    states, outcomes = ['one: removing 1 of 2', 'two: removing 2 of 2'], ['one: removed', 'two: removed']
    for colours in ('', '1'):
        shown = terminal('remove', 'one', 'two', NO_COLOR=colours)
        assert shown.wait_end() == (0, outcomes)
        assert bool(COLOUR.search(shown.text())) == (not colours)
        assert [state for state in without_time(shown.states()) if 'removing' in state] == states

    for kind in ({'TERM': 'dumb'}, {'TERM': ''}, {'starter': ['env', '-u', 'TERM']}):
        dumb = terminal('remove', 'one', 'two', **kind)
        assert dumb.wait_end() == (0, [states[0], outcomes[0], states[1], outcomes[1]])
        assert '\033' not in dumb.text()

    assert terminal('remove', '--quiet', 'app').wait_end() == (0, [])
    objects = terminal('remove', '--json', 'app', columns=400)
    status, lines = objects.wait_end()
    assert status == 0
    assert [line[0] + line[-1] for line in lines] == ['{}'] * 3
    assert '\033' not in objects.text()


def test_widths(asking, standins, dialog, terminal, files):
    """The line never fills the window, whose width may change while it is shown. A question is everybody's."""
    developer_mode = standins.start('developer-mode')
    developer_mode.hang('IsSilentInstallationEnabled', 1)
    windows = {columns: terminal('install', LONG, folder=files, columns=columns)
               for columns in (200, 120, 90, 60, 30, 9, 0)}
    for window in windows.values():
        window.wait_text(r'\d\)')
    developer_mode.release('IsSilentInstallationEnabled')
    dialog.wait_shown(1)

    lines = {}
    for columns, window in windows.items():
        window.wait_text('waiting for your' if columns != 9 else r'(?s)(\d\).*){2}')
        window.type(b'\x03')
        assert window.wait_end()[0] == 130
        # The terminal shows Ctrl-C.
        states = [state.removesuffix('^C') for state in window.states()]
        lines[columns] = [state for state in states if state.endswith(')')]
        assert columns == 0 or all(width(line) < columns for line in lines[columns]), lines[columns]
    cut = {columns: shown[-1].rpartition(' (')[0] for columns, shown in lines.items()}
    assert cut[200] == cut[0] == f'{LONG}: {CONFIRMING}'
    for columns in (120, 90):
        begin, end = cut[columns].split('.rpm: ')
        assert begin[0] == '…' and LONG.startswith(begin[1:], len(LONG) - len(begin) - 3)
        assert end == CONFIRMING
    assert cut[60][-1] == cut[30][-1] == '…'
    assert CONFIRMING.startswith(cut[60][:-1]) and CONFIRMING.startswith(cut[30][:-1])


def test_width_that_changes(asking, dialog, terminal, files):
    shown = terminal('install', LONG, folder=files, columns=200)
    shown.wait_text('installing')
    shown.resize(40)
    shown.wait_text(r'\(0:0\d\)\r\033\[Kwaiting for [^\r]*… \(0:0')
    assert width(shown.states()[-1]) < 40
    dialog.answer(CONFIRMED)
    assert shown.wait_end() == (0, [f'{LONG}: installed'])


def test_interruption(asking, dialog, terminal, files, signals):
    """Ctrl-C."""
    shown = terminal('install', 'a', 'b', folder=files)
    dialog.wait_shown(1)
    shown.wait_text('waiting for your answer')
    shown.type(b'\x03')

    status, lines = shown.wait_end()
    assert (status, [line.removeprefix('^C') for line in lines]) == \
        (130, ['a: interrupted: the service goes on', 'velmora-installctl: not requested: 1 of 2'])
    dialog.answer(CONFIRMED)
    assert signals.wait('installFinished') == (True, '')


def test_terminal_that_closes(processes, asking, dialog, terminal, files, signals):
    """The program ends, and the service goes on."""
    shown = terminal('install', 'a', folder=files)
    dialog.wait_shown(1)
    shown.wait_text('waiting for your answer')
    shown.close()

    assert processes.wait_end(shown.process) == 129
    dialog.answer(CONFIRMED)
    assert signals.wait('installFinished') == (True, '')
