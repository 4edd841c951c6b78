# SPDX-FileCopyrightText: velmora-installationhandler contributors
# SPDX-License-Identifier: BSD-3-Clause
"""Many files and names, and long ones, with the real service."""

from pathlib import Path

import pytest
from support.removalrequests import KNOWN

# Linux takes no longer argument, and 2 MiB in all.
LONGEST_ARGUMENT = 2 ** 17 - 1


@pytest.fixture
def managed(manager):
    """The package manager knows every name."""
    manager.answer('GetPackage', KNOWN)
    return manager


@pytest.fixture
def requested(session_monitor):
    """The subjects of the requests so far."""
    return lambda: [message.arguments[0] for message in session_monitor.messages()
                    if message.member in ('installFiles', 'removePackages') and message.arguments[0]]


def test_thousand_names(managed, service, ctl, signals):
    """Each removal is reported, and no report is lost. The bus lets the service wait for 128 answers only, so one request
    for all would fail (Known behaviour 30)."""
    names = [f'name-{number}' for number in range(1000)]
    run = ctl('remove', *names)

    assert (run.status, run.err) == (0, [])
    assert run.out == [line for number, name in enumerate(names, 1)
                       for line in (f'{name}: removing {number} of 1000', f'{name}: removed')]
    assert [call.arguments[0] for call in managed.calls('Remove')] == names
    signals.wait('removalFinished', len(names))
    assert signals.arguments('removalFinished') == [(True, '')] * 1000


def test_hundred_names_at_once(managed, service, ctl, signals):
    """The most that --no-wait takes."""
    names = [f'name-{number}' for number in range(100)]
    assert ctl('remove', '--no-wait', '--quiet', *names) == (0, [], [])
    signals.wait('removalFinished', 100)
    assert signals.arguments('removalFinished') == [(True, '')] * 100


def test_many_files(device, manager, service, ctl, signals, requested, tmp_path):
    """All are looked at first."""
    names = [f'{number}.rpm' for number in range(5000)]
    assert ctl('install', *names, folder=tmp_path) == (66, [], [f'{name}: No such file or directory' for name in names])
    assert requested() == []

    for name in names:
        (tmp_path / name).touch()
    paths = [f'{tmp_path}/{name}' for name in names]
    device.forbid_installing()
    run = ctl('install', '--no-wait', *names, folder=tmp_path)
    assert (run.status, run.err) == (0, [])
    assert run.out == ['0.rpm: waiting for the service', *(f'{name}: requested' for name in names)]
    assert requested() == [paths]
    assert not signals.wait('installFinished')[0]

    device.set_policy(None)
    device.mark_as_emulator()
    few = names[:200]
    assert ctl('install', '--quiet', *few, folder=tmp_path) == (0, [], [])
    assert [call.arguments[0] for call in manager.calls('Install')] == paths[:200]
    signals.wait('installFinished', 1 + len(few))
    assert signals.arguments('installFinished')[1:] == [(True, '')] * 200


def test_long_arguments(device, managed, service, ctl, requested, tmp_path):
    """A mebibyte of names, and one of paths."""
    names = [f'{number}{"x" * (LONGEST_ARGUMENT - 10)}' for number in range(8)]
    assert ctl('remove', '--quiet', *names) == (0, [], [])
    assert ctl('remove', '--quiet', '--no-wait', *names) == (0, [], [])
    assert requested() == [*([name] for name in names), names]

    folder = deep_folder(tmp_path)
    paths = [f'{folder}/{number}.rpm' for number in range(300)]
    for path in paths:
        Path(path).touch()
    assert sum(map(len, paths)) > 2 ** 20
    device.mark_as_emulator()
    assert ctl('install', '--quiet', '--no-wait', *paths) == (0, [], [])
    assert requested()[-1] == paths
    too_long = f'{paths[0]}/{"y" * 255}/{"z" * 255}'
    assert ctl('install', too_long) == (66, [], [f'{too_long}: File name too long'])


def deep_folder(top):
    """A folder whose path is almost as long as a path can be."""
    folder = top
    while len(str(folder)) < 3800:
        folder /= 'd' * 200
    folder.mkdir(parents=True)
    return folder
