# SPDX-FileCopyrightText: velmora-installationhandler contributors
# SPDX-License-Identifier: BSD-3-Clause
"""Requests of many files, and many requests."""

import os
import re
from pathlib import Path

import pytest

# Much more than a correct service gains, much less than one that keeps what it needed for each file.
MEMORY_KB = 65536

NO_SDK = '"Unable install package without confirm: The installation is not running in sdk mode. "'
CANCELLED = 'The user cancelled the installation'


def peak_memory(process):
    """The most memory that a process has had so far, in KiB."""
    status = Path(f'/proc/{process.pid}/status').read_text(encoding='utf-8')
    return int(re.search(r'VmHWM:\s*(\d+) kB', status)[1])


def open_files(process):
    return len(list(Path(f'/proc/{process.pid}/fd').iterdir()))


@pytest.fixture
def lean(program):
    """The service, which must not gain much memory nor leave files open."""
    # A sanitizer keeps freed memory for a while, and here not for long.
    sanitizer = f'{os.environ.get("ASAN_OPTIONS", "")}:quarantine_size_mb=4'
    service = program.start(environment={'ASAN_OPTIONS': sanitizer})
    service.barrier()
    memory, files = peak_memory(service.process), open_files(service.process)
    yield service
    service.barrier()
    assert peak_memory(service.process) - memory < MEMORY_KB
    assert open_files(service.process) == files


@pytest.fixture
def silent(standins, device):
    """Nobody is asked, and nothing is installed."""
    device.mark_as_emulator()
    standins.start('developer-mode', silent_installation=True)
    return standins.start('package-manager', installs='nothing')


@pytest.mark.parametrize('count', [0, 1, 2000])
def test_all_files_of_a_request_are_installed_in_order(silent, lean, announced, install_and_wait, tmp_path, count):
    files = [f'/absent/{number}.rpm' for number in range(count)]

    assert install_and_wait(files) == (True, '')
    assert announced() == ['installFinished']
    assert [call.arguments[0] for call in silent.calls('Install')] == files
    assert lean.log() == ['warning default: ' + NO_SDK] * count


def test_every_failure_of_many_files_is_told(silent, lean, install_and_wait):
    silent.refuse('Install', 'a.b.NoSpace')

    description = 'zarn_installation_error_desc_NoSpace (code: NoSpace)'
    assert install_and_wait(['/absent.rpm'] * 1000) == (False, '\n'.join([description] * 1000))


def test_other_requests_are_answered_while_many_files_are_installed(silent, lean, client, signals, install_and_wait):
    silent.hang('Install', 1)
    client.install(['/absent.rpm'] * 1000)
    silent.wait_call('Install')

    assert install_and_wait([]) == (True, '')
    assert len(silent.calls('Install')) == 1
    silent.release('Install')
    assert signals.wait('installFinished', 2) == (True, '')
    assert len(silent.calls('Install')) == 1000


def test_every_file_of_many_can_be_declined(standins, lean, announced, install_and_wait, dialog, package):
    standins.start('package-manager', 'mce')
    dialog.use('Dismissing')

    assert install_and_wait([package('one'), package('two')] * 100) == (False, CANCELLED)
    assert announced() == ['needConfirm'] * 200 + ['installFinished']
    assert len(standins.mce.calls('notification_begin_req')) == len(standins.mce.calls('notification_end_req')) == 200
    assert standins.package_manager.calls() == []


def test_many_requests_at_once(silent, lean, client, announced, signals):
    """They start together, and each ends on its own."""
    silent.hang('Install')
    for number in range(100):
        client.install([f'/absent/{number}.rpm'])
    silent.wait_call('Install', 100)
    assert announced() == []

    silent.release('Install')

    signals.wait('installFinished', 100)
    assert signals.arguments('installFinished') == [(True, '')] * 100


def test_many_requests_behind_a_dialog(standins, lean, client, signals, dialog, device):
    """Each of them ends inside its own start."""
    dialog.use('Controlled')
    client.install(['/absent.rpm'])
    dialog.wait_shown()
    device.forbid_installing()
    for _ in range(1000):
        client.call('installFiles', '(as)', ['/absent.rpm'])
    assert signals.names() == ['needConfirm']

    dialog.answer('dismissed')

    signals.wait('installFinished', 1001)
    assert signals.arguments('installFinished')[0] == (False, CANCELLED)
    assert len(set(signals.arguments('installFinished')[1:])) == 1
