# SPDX-FileCopyrightText: velmora-installationhandler contributors
# SPDX-License-Identifier: BSD-3-Clause
"""The examples in the manual, pasted into a shell."""

import shutil
import subprocess
from pathlib import Path

import documents
import pytest
from support.removalrequests import KNOWN

MANUAL = Path('/usr/share/man/man1/velmora-installctl.1')
HOME = Path('/home/velmora')
LAUNCHER = Path('/usr/share/applications/hello.desktop')


@pytest.fixture
def paste(processes, environment):
    """Runs an example in the user's home folder, and returns its exit status and its lines."""
    def run(command):
        shell = processes.start_in_session(
            'shell', ['bash', '-c', f'cd\n{command}'], {**environment, 'LANG': 'C.UTF-8'})
        return processes.wait_end(shell), shell.lines()
    return run


@pytest.fixture
def launcher():
    """A launcher of the system, and a user who may ask for its removal."""
    subprocess.run(['usermod', '--append', '--groups', 'privileged', 'velmora'], check=True)
    LAUNCHER.touch()
    yield LAUNCHER
    LAUNCHER.unlink()
    subprocess.run(['gpasswd', '--delete', 'velmora', 'privileged'], check=True, capture_output=True)


def test_examples(manager, standins, program, dialog, launcher, package, paste):
    """As the texts before them say."""
    install, install_from_sdk, remove, remove_launcher, find_failed = documents.examples_of_manual(
        documents.read_manual(MANUAL), 'EXAMPLES')
    standins.start('runtime-manager')
    dialog.use('Confirming')
    program.start()
    for folder in ('Downloads', 'build'):
        (HOME / folder).mkdir(exist_ok=True)
        shutil.copy(package('hello'), HOME / folder / 'hello.rpm')

    status, lines = paste(install)
    assert (status, lines[-1]) == (0, '~/Downloads/hello.rpm: installed'.replace('~', str(HOME)))
    status, lines = paste(install_from_sdk)
    assert (status, lines[-1]) == (0, 'build/hello.rpm: installed')

    manager.answer('GetPackage', KNOWN)
    assert paste(remove) == (0, [])
    manager.refuse('Remove', 'org.example.Error.Busy', 'Busy.', times=1)
    assert paste(remove) == (0, ['hello: failed: Busy.', 'status 1'])
    manager.refuse('Remove', 'org.example.Error.Busy', 'Busy.', times=1)
    assert sorted(paste(find_failed)[1]) == ['hello', 'hello: failed: Busy.']
    assert paste(find_failed) == (0, [])

    assert paste(remove_launcher) == (0, [f'{launcher}: removing', f'{launcher}: removed'])
