#!/usr/bin/python3
# SPDX-FileCopyrightText: velmora-installationhandler contributors
# SPDX-License-Identifier: BSD-3-Clause
"""Writes docs/faults.md from the rows of the tests of faults, or compares it with them."""

import argparse
import difflib
import itertools
import json
import sys
from pathlib import Path

DOCUMENT = Path(__file__).resolve().parents[2] / 'docs/faults.md'

DASH = '–'
# A fault of removals has a shorter name.
NAMES = {'dies': 'dies before the reply', 'any': 'all'}
FAULTS = ['absent', 'dies before the reply', 'dies after the reply', 'hangs', 'wrong type', 'error', 'returns']
KINDS = ['ordinary', 'sdk mode', 'emulator']
REQUESTS = [f'{kind}, {files}' for kind in KINDS for files in ('one file', 'several files')]

PEERS = {
    'package-manager': 'the package manager', 'developer-mode': 'developer mode', 'mce': 'MCE',
    'notifications': 'the notification server', 'package-kit': 'PackageKit', 'launcher-model': 'the launcher model',
    'runtime-manager': 'the runtime manager', 'android-support': 'the Android support', 'policy file': 'the policy file',
    'package file': 'the package file', 'dialog': 'the dialog\'s file', 'system bus': 'the system bus',
    'session bus': 'the session bus',
}

# Faults that make no sense, by peer; those of MCE only where nobody is asked.
SENSELESS = {
    'policy file': FAULTS[1:3], 'package file': FAULTS[1:3], 'dialog': FAULTS[1:3], 'system bus': ['wrong type'],
    'mce': FAULTS[1:6],
}
NOTES = {
    'package-manager': 'The texts are identifiers, since the package manager\'s own texts are missing (65). An answer to '
                       '`Install` is awaited for 15 minutes.',
    'developer-mode': 'An answer is awaited for 25 seconds. After that all is as with an error.',
    'mce': 'A dash: the user is not asked, so MCE is not called. An answer is awaited for 25 seconds. After that all is as '
           'usual.',
    'notifications': 'The policy forbids installing. In sdk mode the installed version is removed all the same (15).',
    'policy file': 'A pipe in its place is a file that hangs, and a file that may not be read is an error. A dash: a file '
                   'does not die. In sdk mode the installed version is removed all the same (15).',
    'package file': 'The first file of the request. A pipe in its place is a file that hangs, and one that the session\'s '
                    'user may not read is an error. A dash: a file does not die. The package manager refuses here what is '
                    'no package, with the code `Refused`.',
    'dialog': 'A root that is no window is a wrong type, a mistake in the QML is an error, and a dialog that nobody answers '
              'hangs. A dash: a file does not die.',
    'system bus': 'An error is a configuration that does not let the session\'s user call. A dash: the service uses no '
                  'answer of this bus itself.',
    'session bus': 'Without the bus, or without its name there, the service ends at once with the status 1.',
}

HEAD = '''<!--
SPDX-FileCopyrightText: velmora-installationhandler contributors
SPDX-License-Identifier: BSD-3-Clause
-->

# Faults

This page tells what comes of a request when a service, a file or a bus that it needs fails. `scripts/faults` writes it
from what the tests see of the installed program, and a test compares the two. A number in the last column is an entry
of [Known behaviour](known-behaviour.md), which explains the row.

| fault | meaning |
|---|---|
| absent | nobody has the name on the bus; there is no such file, or no such bus |
| dies before the reply | the process ends when it gets the call, or the bus ends then |
| dies after the reply | the process ends when it has answered the call, or the bus when the request is over |
| hangs | the answer comes when the test has seen that the caller still waits for its outcome; nobody waits for those to `get_display_status` and `Notify` |
| wrong type | the answer, or the file, is of another type than it should be |
| error | the answer is an error; the file cannot be used |
| returns | it has been away, and is there again |
| hangs and dies | the process ends instead of answering at last |
| hangs and replies without its name | the process gives up its name on the bus, and answers then |

"The next request" is the same one, made when the fault is over.
'''
INSTALLATIONS = '''## Installations

The package manager installs what it gets, developer mode allows all that it can, and the user agrees. Where nothing is
wrong, this is the outcome:
'''
REMOVALS = '''## Removals

The package manager knows a managed package. PackageKit removes a native one, and here it also finds the managed one,
which it is asked for if the package manager says that it has none, or says nothing. A look-up that has hung is answered as
by a peer that knows nothing.

"Removed" means that success is reported. "Silence" means that no signal comes. That is usual for the launchers of the
user's own and of Android applications (21).
'''


class Faults:
    """The rows of the tests, by table."""

    def __init__(self, folder):
        self._tables = {}
        for file in sorted(folder.glob('*.json')):
            for table, rows in json.loads(file.read_text(encoding='utf-8')).items():
                self._tables.setdefault(table, []).extend(rows)

    def document(self):
        """The page."""
        return '\n'.join([HEAD, *self._installations(), *self._removals()])

    def _installations(self):
        yield INSTALLATIONS
        yield from table(['request', 'caller', 'user', 'log'], self._tables['usual'])
        for peer in NOTES:
            own = self._rows('installation', peer)
            self._check(peer, own)
            yield f'### Faults of {PEERS[peer]}\n\n{NOTES[peer]}\n'
            dashes = [[request, 'any', fault, *[''] + [DASH] * 4] for request, fault in dashes_of(peer)]
            yield from table(['fault', 'call', 'requests', 'caller', 'user', 'log', 'next request', 'known'],
                             grouped(sorted(own + dashes, key=in_order), joined_requests))

    def _check(self, peer, rows):
        """Each fault has a row in each kind of request, or a dash."""
        seen = {(request, fault) for request, _, fault, *_ in rows}
        everywhere = {fault for request, fault in seen if request == 'any'}
        cells = set(itertools.product(REQUESTS, FAULTS))
        missing = {cell for cell in cells - seen - set(dashes_of(peer)) if cell[1] not in everywhere}
        if missing or seen & set(dashes_of(peer)):
            sys.exit(f'{peer}: neither a row nor a dash, or both: {sorted(missing)}')

    def _removals(self):
        yield REMOVALS
        for peer in PEERS:
            own = self._rows('removal', peer)
            if own:
                yield f'### Removals and faults of {PEERS[peer]}\n'
                yield from table(['fault', 'call', 'requests', 'caller', 'log', 'next request', 'known'],
                                 grouped(sorted(own, key=in_order), ', '.join))

    def _rows(self, kind, peer):
        """The rows of a peer, without its name."""
        return [[request, *cells] for request, name, *cells in self._tables[kind] if name == peer]


def dashes_of(peer):
    """The requests and faults that make no sense."""
    return [(request, fault) for request in REQUESTS for fault in SENSELESS.get(peer, ())
            if peer != 'mce' or not request.startswith('ordinary')]


def in_order(row):
    """Faults in the order of their meanings, and others after them; within one the order of the rows stays."""
    fault = NAMES.get(row[2], row[2])
    return FAULTS.index(fault) if fault in FAULTS else len(FAULTS)


def grouped(rows, join):
    """One row for all requests and calls of the same outcome: fault, calls, requests, the outcome, and the known behaviour."""
    requests_of, calls_of = {}, {}
    for request, call, fault, known, *outcome in rows:
        requests_of.setdefault((fault, call, *outcome, known), []).append(request)
    for (fault, call, *outcome), requests in requests_of.items():
        calls_of.setdefault((fault, join(requests), *outcome), []).append('' if call == 'any' else f'`{call}`')
    for (fault, requests, *outcome), calls in calls_of.items():
        yield [NAMES.get(fault, fault), ', '.join(calls), requests, *outcome]


def joined_requests(requests):
    """A short name for several kinds of request."""
    if requests == ['any'] or len(requests) == len(REQUESTS):
        return 'all'
    if set(requests) in ({request for request in REQUESTS if request.endswith(f', {files}')}
                         for files in ('one file', 'several files')):
        return f'all, {requests[0].partition(", ")[2]}'
    both = [kind for kind in KINDS if sum(request.startswith(f'{kind},') for request in requests) == 2]
    return '; '.join([*both, *(request for request in requests if request.partition(',')[0] not in both)])


def table(titles, rows):
    """The lines of a table."""
    for cells in (titles, ['---'] * len(titles), *rows):
        yield '| ' + ' | '.join(str(cell) for cell in cells) + ' |'
    yield ''


def main():
    parser = argparse.ArgumentParser(description=__doc__)
    parser.add_argument('rows', type=Path, help='the folder with the rows of the tests')
    parser.add_argument('--check', action='store_true', help='only compare')
    arguments = parser.parse_args()
    document = Faults(arguments.rows).document()
    if not arguments.check:
        DOCUMENT.write_text(document, encoding='utf-8')
        return 0
    present = DOCUMENT.read_text(encoding='utf-8')
    sys.stdout.writelines(difflib.unified_diff(present.splitlines(True), document.splitlines(True), 'docs/faults.md',
                                               'what the tests have seen'))
    return 'please run scripts/faults' if present != document else 0


if __name__ == '__main__':
    sys.exit(main())
