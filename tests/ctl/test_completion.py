# SPDX-FileCopyrightText: velmora-installationhandler contributors
# SPDX-License-Identifier: BSD-3-Clause
"""The completion of commands, options, files and names in shells."""

import re
import shutil
import subprocess
from pathlib import Path

import pytest
from standin.names import SESSION
from support.packagekit import install
from terminal import Terminal

COMPLETIONS = {
    'bash': Path('/usr/share/bash-completion/completions/velmora-installctl'),
    'zsh': Path('/usr/share/zsh/vendor-completions/_velmora-installctl'),
    'fish': Path('/usr/share/fish/vendor_completions.d/velmora-installctl.fish'),
}

# A function in the place of the program writes its words to a file.
PROGRAM = 'velmora-installctl() { { printf "<%s>" "$@"; echo; } >>words; }'
BASH = ['bash', '--norc', '-i'], f'source {COMPLETIONS["bash"]}; {PROGRAM}'
ZSH = ['zsh', '-f', '-i'], f'autoload -Uz compinit; compinit -u -D; {PROGRAM}'

# The text that is typed before the tabulator, and the words that the program gets.
TYPED = {
    'ins': '<install>', 'mon': '<monitor>', 'rem': '<remove>', '--js': '<--json>', '--vers': '<--version>',
    'install tw': '<install><two  words.rpm>', 'install sub/in': '<install><sub/inner.rpm>', 'install bra': '<install><bra[ck]$et.rpm>',
    'install --sd': '<install><--sdk>', 'install --keep': '<install><--keep-user-data>', 'install --noti': '<install><--notify>',
    '--json install tw': '<--json><install><two  words.rpm>', 'install a.rpm tw': '<install><a.rpm><two  words.rpm>',
    'remove hel': '<remove><hello-world>', 'remove hello-world oth': '<remove><hello-world><other>', 'remove tw': '<remove><tw>',
    'remove --no-w': '<remove><--no-wait>', 'remove --la': '<remove><--launcher>', 'remove --q': '<remove><--quiet>', 'monitor hel': '<monitor><hel>',
    'remove --launcher ap': '<remove><--launcher><app.desktop>', 'remove --launcher=ap': '<remove><--launcher=app.desktop>',
    'remove --launcher app.desktop oth': '<remove><--launcher><app.desktop><oth>',
    'remove --launcher=app.desktop oth': '<remove><--launcher=app.desktop><oth>',
    'remove --launcher app.desktop --no-w': '<remove><--launcher><app.desktop><--no-wait>',
    'install --timeout tw': '<install><--timeout><tw>',
    'monitor --sd': '<monitor><--sd>', 'install -- --sd': '<install><--><--sd>', 'install -- a': '<install><--><a.rpm>', 'monitor --q': '<monitor><--q>', '--qui': '<--quiet>',
}


@pytest.fixture
def files(tmp_path):
    """Packages, a launcher and others."""
    (tmp_path / 'sub').mkdir()
    for name in ('two  words.rpm', 'two.txt', 'a.rpm', 'sub/inner.rpm', 'bra[ck]$et.rpm', 'app.desktop', 'app.rpmnew'):
        (tmp_path / name).touch()
    return tmp_path


@pytest.fixture
def packages(device, package):
    """Two that are installed."""
    for name in ('hello-world', 'other'):
        install(package(name, files={}))


@pytest.mark.parametrize('command, preparation', [BASH, ZSH], ids=['bash', 'zsh'])
def test_typed_words(processes, files, packages, command, preparation):
    """In a real shell, on a terminal."""
    words = files / 'words'
    words.touch()
    shutil.chown(words, 'velmora')
    terminal = Terminal(processes, 200)
    terminal.start([SESSION, 'TERM=vt100', 'LANG=C.UTF-8', *command], files)
    terminal.type(f'{preparation}\n'.encode())
    for number, typed in enumerate(TYPED, 1):
        terminal.type(f'velmora-installctl {typed}\t \n'.encode())
        # The next prompt follows what has been written.
        processes.wait_until(lambda: words.read_text().count('\n') == number, f'command after "{typed}"', seconds=20)
    terminal.type(b'exit\n')
    processes.wait_end(terminal.process)
    terminal.close()
    assert dict(zip(TYPED, words.read_text().splitlines())) == TYPED


@pytest.fixture
def fish(processes, files):
    """What fish offers in the place of the last word."""
    def complete(typed):
        command = [
            SESSION,
            'LANG=C.UTF-8',
            'fish',
            '-c',
            f'cd {files}; complete -C $argv[1]',
            f'velmora-installctl {typed}']
        return [line.partition('\t')[0] for line in processes.run('fish', command).splitlines()]
    return complete


def test_words_that_fish_offers(packages, fish):
    """The first one stands for the last word that is typed. Other files than those that are wanted come last."""
    def complete(typed):
        *words, last = re.split(r'(?<!\\) ', typed)
        return ''.join(f'<{word}>' for word in [*words, next(iter(fish(typed)), last)])
    assert {typed: complete(typed) for typed in TYPED} == TYPED

    for typed, option in ('remove --launcher ', ''), ('remove --launcher=', '--launcher='):
        offered = fish(typed)
        assert offered[0] == f'{option}app.desktop'
        assert f'{option}sub/' in offered
        assert all(word.startswith(option) and word.count('--launcher') == bool(option) for word in offered)
    assert fish('remove ') == ['hello-world', 'other']
    assert fish('remove --launcher app.desktop ') == []


def help_options():
    """The options in the help."""
    shown = subprocess.run(['/usr/bin/velmora-installctl', '--help'], check=True, capture_output=True, text=True).stdout
    return set(re.findall(r'(?<!\S)--[a-z-]+', shown))


@pytest.mark.parametrize('shell', COMPLETIONS)
def test_all_options_are_known(shell):
    """Those of the help, and no others."""
    text = re.sub(r'^\s*#.*', '', COMPLETIONS[shell].read_text(encoding='utf-8'), flags=re.MULTILINE)
    options = {f'--{name}' for name in re.findall(r' -l ([a-z-]+)', text)} if shell == 'fish' else \
        set(re.findall(r'(?<![\w-])--[a-z][a-z-]*', text))
    foreign = {'--queryformat'}
    assert options - foreign == help_options()
    for command in ('install', 'remove', 'monitor'):
        assert command in text
