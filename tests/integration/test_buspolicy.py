# SPDX-FileCopyrightText: velmora-installationhandler contributors
# SPDX-License-Identifier: BSD-3-Clause
"""A session bus that leaves the service to the group "privileged", as docs/integration.md shows."""

import os
import re
import shutil
import sys
from pathlib import Path

import documents
import pytest
import support
from harness.bus import SESSION_ADDRESS, SESSION_USER, PrivateBus
from standin.names import SESSION

GOING_CALLER = Path(support.__file__).with_name('goingcaller.py')
METHODS = {'installFiles': '[]', 'removePackages': '[]', 'removePackageByDesktopFile': '/absent.desktop'}


@pytest.fixture
def restriction():
    """The file of the example."""
    text = (documents.SOURCE / 'docs/integration.md').read_text(encoding='utf-8')
    path = Path(re.search(r'`(/etc/dbus-1/session\.d/\S+)`', text)[1])
    (example,) = documents.examples('docs/integration.md', 'Who may call')
    path.parent.mkdir(parents=True, exist_ok=True)
    path.write_text(example, encoding='utf-8')
    yield
    path.unlink()


@pytest.fixture
def session_bus(processes, environment, restriction):
    """A session bus with the configuration of the distribution, which includes the file."""
    Path(SESSION_ADDRESS.partition('=')[2]).unlink(missing_ok=True)
    process = processes.start_in_session('session bus', ['dbus-daemon', '--session', f'--address={SESSION_ADDRESS}',
                                                         '--nofork', '--nopidfile', '--nosyslog', '--print-address'],
                                         environment)
    return PrivateBus(SESSION_ADDRESS, SESSION_USER, process, processes)


@pytest.fixture
def call(processes):
    """Calls a method as a program of a group; the exit status and the text of the program."""
    def as_member(group, method, program='gdbus'):
        caller = processes.start('caller', [
            SESSION, '--group', group, program, 'call', '--session', '--dest', 'org.velmoraos.installationhandler',
            '--object-path', '/org/velmoraos/installationhandler',
            '--method', f'org.velmoraos.installationhandler.{method}', METHODS[method]])
        return processes.wait_end(caller), caller.text
    return as_member


@pytest.mark.parametrize('method', METHODS)
def test_group_may_call(service, call, method):
    assert call('privileged', method) == (0, '()\n')


@pytest.mark.parametrize('method', METHODS)
def test_others_may_not(service, call, announced, method):
    """The bus refuses the call, and the service does not learn of it."""
    status, text = call('velmora', method)

    assert status == 1
    assert 'org.freedesktop.DBus.Error.AccessDenied: Rejected send message' in text
    assert announced() == []
    assert service.log() == []


def test_program_with_the_set_group_id_bit_may_call(service, call, tmp_path):
    program = shutil.copy('/usr/bin/gdbus', tmp_path)
    os.chown(program, 0, 100001)
    os.chmod(program, 0o2755)

    assert call('velmora', 'removePackages', program) == (0, '()\n')


def test_later_rights_do_not_count(service, announced, processes, tmp_path):
    """The bus knows a caller by the rights with which it has connected."""
    program = shutil.copy('/usr/bin/tail', tmp_path)
    os.chmod(program, 0o4755)
    text = tmp_path / 'text'
    text.write_text('I am root\n', encoding='ascii')
    caller = processes.start_in_session('caller', [
        sys.executable, '-B', GOING_CALLER, SESSION_ADDRESS.partition('=')[2], '/absent.desktop', program, '--follow', text])
    processes.wait_line(caller, lambda line: line == 'I am root', 'the program')
    assert Path(f'/proc/{caller.pid}').owner() == 'root'

    assert announced() == []
    assert service.log() == []
