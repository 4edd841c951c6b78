# SPDX-FileCopyrightText: velmora-installationhandler contributors
# SPDX-License-Identifier: BSD-3-Clause
"""Peers and files that are absent, return, die, hang or answer nonsense in installations of every kind."""

import os
from pathlib import Path
from typing import Callable, NamedTuple

import pytest
from support.devicestate import POLICY_FILE
from support.installationfaults import CALLS, DEVELOPER_MODE, MANAGER, NOTIFICATIONS, REFUSED, Fault, cells
from support.installationrequests import (ALL, AS_USUAL, NEITHER, NOT_ALLOWED, NOT_SDK, ORDINARY, UNKNOWN, UNUSABLE, WARNING,
                                          all_words, asking, failed, forbidden, logging, path_of, usual, words)

NOT_THERE = UNKNOWN + '"The name ru.quon.developermode was not provided by any .service files"'
NO_REPLY = UNKNOWN + '"Message recipient disconnected from message bus without replying"'
UNREADABLE = 'debug default: could not read rpm: 1 …'


def without_manager(*codes):
    return lambda request: usual(request).but(told=failed(*codes[:request.files]))


def without_developer_mode(*lines, asked=(0, 1)):
    return lambda request: usual(request).but(**asking(request, *asked), **logging(request, *lines))


def not_allowed(request):
    """The first file may not go without the dialog."""
    return usual(request).but(**asking(request, 0), **logging(request, NOT_ALLOWED if request.sdk_mode else NEITHER))


# The outcomes that differ from the usual one, by peer or call, and fault.
OUTCOMES = {
    (MANAGER, 'absent'): without_manager('ServiceUnknown', 'ServiceUnknown'),
    ('Install', 'dies before the reply'): without_manager('NoReply', 'ServiceUnknown'),
    ('Install', 'dies after the reply'):
        lambda request: usual(request) if request.files == 1 else usual(request).but(told=failed('ServiceUnknown')),
    ('Install', 'error'): without_manager('Refused'),
    ('Install', 'hangs and dies'): without_manager('NoReply'),

    (DEVELOPER_MODE, 'absent'): without_developer_mode(NOT_THERE, NOT_THERE),
    ('IsSilentInstallationEnabled', 'dies before the reply'): without_developer_mode(NO_REPLY, NOT_THERE),
    ('IsSilentInstallationEnabled', 'dies after the reply'): without_developer_mode(None, NOT_THERE, asked=(1,)),
    ('IsSilentInstallationEnabled', 'wrong type'): not_allowed,
    ('IsSilentInstallationEnabled', 'error'): without_developer_mode(UNKNOWN + '"not today"', None, asked=(0,)),
    ('IsSilentInstallationEnabled', 'hangs and dies'): without_developer_mode(NO_REPLY),

    # The caller learns of the policy all the same.
    **{(name, fault): lambda request: forbidden(request).but(notified=0) for name, fault in [
        (NOTIFICATIONS, 'absent'), ('Notify', 'dies before the reply'), ('Notify', 'error'), ('Notify', 'hangs and dies')]},
}


def usual_of(cell):
    """The outcome of the same request where nothing is wrong."""
    return forbidden(cell.request) if cell.peer == NOTIFICATIONS else usual(cell.request)


def expected(cell):
    """The one right outcome."""
    subject = cell.peer if cell.call == 'any' else cell.call
    outcome = OUTCOMES.get((subject, cell.fault))
    return outcome(cell.request) if outcome else usual_of(cell)


@pytest.mark.parametrize('request_', ALL, ids=str)
def test_nothing_is_wrong(installations, usual_table, request_):
    row = usual_table.begin(str(request_))

    installations.repeat(request_)

    row += all_words(usual(request_))


@pytest.mark.parametrize('cell', [cell for peer in CALLS for cell in cells(peer)], ids=str)
def test_peer(installations, installation_table, cell):
    device, request, outcome = installations, cell.request, expected(cell)
    row = installation_table.begin(str(request), cell.peer, cell.call, cell.fault, '')
    forbidding = cell.peer == NOTIFICATIONS
    device.set_up(request, forbidding)
    fault = Fault(device, cell)
    fault.prepare()

    asked = device.ask(request)
    fault.follow()
    asked.wait()

    assert device.wait_end(outcome) == outcome
    row += words(outcome, request)
    fault.repair()
    device.repeat(request, forbidding)
    row.append('a notification' if forbidding else AS_USUAL)


class FileFault(NamedTuple):
    """What happens to a file, and what comes of the request. `refused`: the package manager refuses such a package."""

    happen: Callable
    outcome: Callable
    known: str = ''
    refused: bool = False


def replace_by_pipe(path):
    path.unlink()
    os.mkfifo(path)


def forbid_reading(path):
    path.chmod(0)


def go_and_return(path):
    path.rename(f'{path}.away').rename(path)


def write_nonsense(path):
    path.write_text('[Applications]\nInstallationEnabled=perhaps\n', encoding='ascii')


def unusable(reason):
    return lambda request: forbidden(request, f'{UNUSABLE}"{reason}"')


def nameless(request):
    """The user is asked by the path, and the package manager decides. Known behaviour 43."""
    return usual(request).but(shown=('', *usual(request).shown[1:]) if request.asks else ())


def unread(*lines):
    """The log has these lines whenever the file is read, which is twice in sdk mode."""
    def outcome(request):
        return nameless(request).but(told=failed('Refused'),
                                     log=lines * (2 if request.sdk_mode else 1) + usual(request).log)
    return outcome


FILES = {
    'policy file': (POLICY_FILE, {
        'absent': FileFault(Path.unlink, usual),
        'hangs': FileFault(replace_by_pipe, unusable('not a regular file')),
        'wrong type': FileFault(write_nonsense, unusable('InstallationEnabled is neither true nor false')),
        'error': FileFault(forbid_reading, unusable('Permission denied')),
        'returns': FileFault(go_and_return, usual),
    }),
    'package file': (path_of('app'), {
        'absent': FileFault(Path.unlink, unread(), '43', refused=True),
        'hangs': FileFault(replace_by_pipe, unread(), '43, 48', refused=True),
        'wrong type': FileFault(write_nonsense, unread(UNREADABLE), '43, 47', refused=True),
        # The package manager may read it: Known behaviour 67.
        'error': FileFault(forbid_reading, nameless, '67'),
        'returns': FileFault(go_and_return, usual),
    }),
}


@pytest.mark.parametrize('request_', ALL, ids=str)
@pytest.mark.parametrize('file, fault', [(file, fault) for file in FILES for fault in FILES[file][1]])
def test_file(installations, installation_table, file, fault, request_):
    device = installations
    path, faults = FILES[file]
    happen, outcome, known, refused = faults[fault]
    row = installation_table.begin(str(request_), file, 'any', fault, known)
    device.set_up(request_)
    happen(path)
    if refused:
        device.peer(MANAGER).refuse('Install', *REFUSED, 1)

    device.ask(request_).wait()

    assert device.wait_end(outcome(request_)) == outcome(request_)
    row += words(outcome(request_), request_)
    device.repeat(request_)
    row.append(AS_USUAL)


def problem(text):
    return f'{WARNING}Problems creating dialog component ({text}'


MISSING = problem('file:///usr/share/velmora-installationhandler//SideloadDialog.qml: No such file or directory)')
BROKEN = problem('file:///usr/share/velmora-installationhandler//SideloadDialog.qml:8: …')
NO_WINDOW = WARNING + 'Failed to cast component to window ()'

# The log's words about the file, and the explanation.
DIALOGS = {
    'absent': (MISSING, '52'), 'wrong type': (NO_WINDOW, '52, 61'), 'error': (BROKEN, '52'),
    'returns': (None, ''),
}


def stuck(request, line):
    """A request without a dialog never ends. Known behaviour 52, 61."""
    if not request.asks:
        return usual(request)
    return usual(request).but(told=None, asked=1, shown=(), handed_over=(), log=(NOT_SDK, line))


@pytest.mark.parametrize('fault', DIALOGS)
def test_dialog_file(installations, installation_table, fault):
    """The service reads it once, so each fault has a service of its own, and so has the mended file."""
    device = installations
    line, known = DIALOGS[fault]
    spoil(device.dialog, fault)
    device.start_service()
    rows = []
    # Requests that never end would hear the answers to others: Known behaviour 55.
    for request in sorted(ALL, key=lambda request: request.asks):
        outcome = stuck(request, line) if line else usual(request)
        rows.append(installation_table.begin(str(request), 'dialog', 'any', fault, known if request.asks else ''))
        device.set_up(request)
        device.ask(request).wait()
        assert device.wait_end(outcome) == outcome
        rows[-1] += words(outcome, request)

    device.dialog.use('Confirming')
    if line:
        device.start_service()
    for request, row in zip(sorted(ALL, key=lambda request: request.asks), rows):
        device.repeat(request)
        row.append('in a new service as usual' if line and request.asks else AS_USUAL)


def spoil(dialog, fault):
    """Replaces the file, or takes it away, or puts it back."""
    if fault in ('absent', 'returns'):
        dialog.remove()
    if fault != 'absent':
        dialog.use({'wrong type': 'NotAWindow', 'error': 'Broken', 'returns': 'Confirming'}[fault])


def test_dialog_without_answer(installations, installation_table):
    """The request waits for the user, who answers in the end."""
    device = installations
    device.dialog.use('Controlled')
    device.start_service()
    number = 0
    for request in ALL:
        row = installation_table.begin(str(request), 'dialog', 'any', 'hangs', '')
        device.set_up(request)
        device.ask(request).wait()
        for _ in usual(request).shown:
            number += 1
            device.dialog.wait_shown(number)
            device.service.barrier()
            assert device.told() == []
            device.dialog.answer('requestInstall', number=number)
        assert device.wait_end(usual(request)) == usual(request)
        row += words(usual(request), request)
        row.append(AS_USUAL)

    device.dialog.use('Confirming')
    device.start_service()
    device.repeat(ORDINARY)
