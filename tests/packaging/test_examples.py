# SPDX-FileCopyrightText: velmora-installationhandler contributors
# SPDX-License-Identifier: BSD-3-Clause
"""The commands in the documents and in the welcome of the demo's shell, pasted into that shell."""

import os
import re
import stat

import documents
import pytest

SIGNALS, INSTALLATION = '/tmp/test-signals', '/tmp/test-installation'
GONE = 'the launcher is gone, and the service has reported nothing'
INSTALLED = "org.velmoraos.installationhandler.installFinished (true, '')"
REMOVED = "org.velmoraos.installationhandler.removalFinished (true, '')"
FIND_DIALOG = 'xdotool search --sync --onlyvisible --class velmora-installationhandler'
INSTALL_AGAIN = 'gdbus call --system --dest ru.quon.ZARN --object-path /ru/quon/ZARN ' \
    '--method ru.quon.ZARN.Install "$DEMO_PACKAGE" "@a{sv} {}"'
ENDED = 'ended with '


class Shell:
    """Prepares this device as `./run-demo --shell` does, and types commands into its shell."""

    def __init__(self, source, folder, processes, environment):
        keyboard = folder / 'keyboard'
        os.mkfifo(keyboard)
        self._keyboard = os.open(keyboard, os.O_RDWR)
        self._processes = processes
        self._read = 0
        self.picture = folder / 'dialog.png'
        command = ['sh', '-c', 'exec "$0" --shell "$1" <"$2"', source / 'demo/run', self.picture, keyboard]
        self._process = processes.start('shell', command, environment)
        self.welcome = self._read_to('  Logs:')

    def hint(self, subject):
        """The command that the welcome suggests for a subject."""
        return re.search(rf'^  {subject}: +((?:.*\\\n)*.*)$', self.welcome, re.MULTILINE)[1]

    def run(self, command):
        """Runs a command, which must succeed, and returns its output."""
        self._type(f'{command.strip()}\necho "{ENDED}$?"')
        said = self._read_to(ENDED)
        assert said.endswith(f'{ENDED}0\n'), f'{command}\n{said}'
        return said.removesuffix(f'{ENDED}0\n')

    def wait_for_line(self, text, file, count=1):
        """Waits until a file has this number of lines with a text."""
        self.run(f'until [ "$(grep --count --fixed-strings "{text}" {file})" -ge {count} ]; do sleep 0.1; done')

    def leave(self, status):
        """Leaves the shell and returns the exit status of the whole program."""
        self._type(f'exit {status}')
        status = self._processes.wait_end(self._process)
        os.close(self._keyboard)
        return status

    def _type(self, line):
        os.write(self._keyboard, f'{line}\n'.encode())

    def _read_to(self, beginning):
        """Waits for a line with this beginning, and returns the output up to its end."""
        def read():
            return re.match(rf'(.*\n)*?{re.escape(beginning)}.*\n', self._process.text[self._read:])
        self._processes.wait_until(read, f'"{beginning}" in the shell', seconds=60)
        said = read()[0]
        self._read += len(said)
        return said


@pytest.fixture
def shell(source, tmp_path, processes, environment, system_bus, session_bus):
    """The shell, on the buses of the test. The session bus knows the service's activation file."""
    session_bus.allow_activation()
    return Shell(source, tmp_path, processes, environment)


def start_watching(shell, command):
    """Starts a monitor of signals, which starts the service and misses nothing after it has found the name's owner."""
    shell.run(f'{command.strip()} >{SIGNALS} 2>&1 &')
    shell.wait_for_line('is owned by', SIGNALS)


def each(block):
    """The commands of a block, for tests that check something between two of them."""
    return re.split(r'\n(?=gdbus )', block.strip())


def run_to_end(shell, command, outcome):
    """Runs a command and waits for one more signal with this outcome."""
    before = int(shell.run(f'grep --count --fixed-strings "{outcome}" {SIGNALS} || true'))
    assert shell.run(command) == '()\n'
    shell.wait_for_line(outcome, SIGNALS, count=before + 1)


def test_examples_for_gdbus(shell):
    ask, install_silently, remove, watch = documents.examples('docs/clients.md', 'gdbus')
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
    assert not shell.picture.exists()


def begin_to_install(shell, command):
    """Runs a command up to the dialog. The command's output goes to a file."""
    shell.run(f'{command.strip()} >{INSTALLATION} 2>&1 & installation=$!')
    shell.run(FIND_DIALOG)


def end_of_installation(shell):
    """Waits until the command has ended, with success, and returns its last line."""
    return shell.run(f'wait $installation && tail --lines 1 {INSTALLATION}')


def test_the_way_in(shell):
    (block,) = documents.examples('README.md', 'The way in')
    install, remove, remove_launcher = block.splitlines()
    package = shell.run('echo $DEMO_PACKAGE').strip()

    # Each dialog is answered by itself: no key stays down for the next one.
    for _ in range(3):
        begin_to_install(shell, install)
        shell.run(shell.hint('Answer'))
        assert end_of_installation(shell) == f'{package}: installed\n'
        assert 'velmora-hello' in shell.run('rpm -qa')

        assert shell.run(remove) == 'velmora-hello: removing\nvelmora-hello: removed\n'
        assert 'velmora-hello' not in shell.run('rpm -qa; ls /usr/share/applications')
    launcher = remove_launcher.split()[-1]
    assert shell.run(remove_launcher) == f'{launcher}: removing\n{launcher}: removed\n'
    assert 'velmora-notes' not in shell.run('rpm -qa; ls /usr/share/applications')
    assert shell.leave(0) == 0


def test_hints_of_the_shell(shell):
    assert 'velmora-hello' in shell.run(shell.hint('Package'))
    shell.run(f'{shell.hint("Signals")} >{SIGNALS} 2>&1 &')
    shell.wait_for_line('the service', SIGNALS)

    # Without a display of one's own the answer is typed into the same shell.
    install = shell.hint('Install')
    assert install.endswith(' &')
    begin_to_install(shell, install.removesuffix(' &'))
    # No event tells that the dialog has been painted. Antialiased text alone has dozens of colours.
    shell.run(f'until {shell.hint("Picture")} && [ "$(identify -format %k {shell.picture})" -ge 16 ]; do :; done')
    shell.run(shell.hint('Answer'))
    assert end_of_installation(shell).endswith(': installed\n')
    shell.wait_for_line('installFinished(true', SIGNALS)

    said = shell.run(shell.hint('Look around'))
    assert 'velmora-hello-1.0-1' in said
    assert 'velmora-hello.desktop' in said

    (native,) = re.findall(r'/\S+\.desktop', shell.hint('Remove'))
    others = re.findall(r'/\S+\.desktop', shell.welcome.partition('also: ')[2])
    assert len(others) == 2
    for launcher in others:
        assert shell.run(shell.hint('Remove').replace(native, launcher)) == \
            f'{launcher}: removing\n{launcher}: removed: {GONE}\n'
    assert shell.leave(0) == 0
    assert stat.S_IMODE(shell.picture.stat().st_mode) == 0o644
