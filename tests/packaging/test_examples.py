# SPDX-FileCopyrightText: velmora-installationhandler contributors
# SPDX-License-Identifier: BSD-3-Clause
"""The commands of the README and of the demo's shell, as pasted there."""

import re

import pytest
from readme import commands
from shell import Shell

SIGNALS = '/run/test-signals'
INSTALLED = "org.velmoraos.installationhandler.installFinished (true, '')"
REMOVED = "org.velmoraos.installationhandler.removalFinished (true, '')"
FIND_DIALOG = 'xdotool search --sync --onlyvisible --class velmora-installationhandler'
INSTALL_AGAIN = 'gdbus call --system --dest ru.quon.ZARN --object-path /ru/quon/ZARN ' \
    '--method ru.quon.ZARN.Install "$DEMO_PACKAGE" "@a{sv} {}"'


@pytest.fixture
def shell(source, tmp_path, processes, environment, system_bus, session_bus):
    """With the bus of the test, which knows the service's activation file."""
    session_bus.allow_activation()
    return Shell(source, tmp_path, processes, environment)


def start_watching(shell, command):
    """Nothing is missed once the watcher has found out who has the name, for which it starts the service."""
    shell.run(f'{command.strip()} >{SIGNALS} 2>&1 &')
    shell.wait_for_line('is owned by', SIGNALS)


def each(block):
    """The commands of a block by themselves, since each of these asks for something that the one before changes."""
    return re.split(r'\n(?=gdbus )', block.strip())


def run_to_end(shell, command, outcome):
    """Returns when the outcome has been announced once more."""
    before = int(shell.run(f'grep --count --fixed-strings "{outcome}" {SIGNALS} || true'))
    assert shell.run(command) == '()\n'
    shell.wait_for_line(outcome, SIGNALS, count=before + 1)


def test_examples_of_the_bus_interface(source, shell):
    ask, install_silently, remove, watch = commands(source, 'Bus interface')
    start_watching(shell, watch)

    assert shell.run(ask) == '()\n'
    shell.wait_for_line('needConfirm', SIGNALS)
    shell.run(FIND_DIALOG)
    shell.run(shell.hint('Answer'))
    shell.wait_for_line(INSTALLED, SIGNALS)

    # From a development environment the installed version is removed first.
    shell.run(shell.hint('Stand-ins'))
    in_short, in_full = each(install_silently)
    run_to_end(shell, in_short, INSTALLED)
    run_to_end(shell, in_full, INSTALLED)
    shell.wait_for_line(REMOVED, SIGNALS, count=2)
    assert shell.run(f'grep --count needConfirm {SIGNALS}') == '1\n'

    for command in each(remove):
        assert 'velmora-hello' in shell.run('rpm -qa')
        run_to_end(shell, command, REMOVED)
        assert 'velmora-hello' not in shell.run('rpm -qa; ls /usr/share/applications')
        shell.run(INSTALL_AGAIN)
    assert shell.leave(7) == 7


def test_hints_of_the_shell(shell):
    assert 'velmora-hello' in shell.run(shell.hint('Package'))
    start_watching(shell, shell.hint('Signals'))

    assert shell.run(shell.hint('Install')) == '()\n'
    shell.run(FIND_DIALOG)
    # Smooth text alone has dozens of colours, and nothing announces that it has been painted.
    shell.run(f'until {shell.hint("Picture")} && [ "$(identify -format %k {shell.picture})" -ge 16 ]; do :; done')
    shell.run(shell.hint('Answer'))
    shell.wait_for_line(INSTALLED, SIGNALS)

    said = shell.run(shell.hint('Look around'))
    assert 'velmora-hello-1.0-1' in said
    assert 'velmora-hello.desktop' in said

    native, *others = re.findall(r'/[^"\' ]+\.desktop', shell.hint('Remove') + shell.welcome.partition('also: ')[2])
    assert len(others) == 2
    for launcher in others:
        assert shell.run(shell.hint('Remove').replace(native, launcher)) == '()\n'
        shell.run(f'until ! [ -e {launcher} ]; do sleep 0.1; done')
    assert shell.leave(0) == 0
