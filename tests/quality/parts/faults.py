# SPDX-FileCopyrightText: velmora-installationhandler contributors
# SPDX-License-Identifier: BSD-3-Clause
"""The faults of each peer, in each kind of request."""

import json
from collections import Counter

from ..command import BUILD, Unmeasured, run
from ..markdown import counted, paragraph, table, whole

TITLE = 'Faults'
ROWS = BUILD / 'dev/tests/integration/faultrows'
KINDS = {'installation': 'installations', 'removal': 'removals'}
NAMES = {'mce': 'MCE', 'package-kit': 'PackageKit', 'android-support': 'Android support'}


def measure(trial):
    """There is no smaller amount for a trial."""
    del trial
    run('scripts/faults')
    return cells(json.loads(file.read_text(encoding='utf-8')) for file in sorted(ROWS.glob('*.json')))


def cells(files):
    """How many rows each peer has in the tables of the tests."""
    counts = {kind: Counter() for kind in KINDS}
    for tables in files:
        for kind, peers in counts.items():
            peers.update(peer for _, peer, *_ in tables.get(kind, ()))
    if not all(counts.values()):
        raise Unmeasured(f'there are no rows in {ROWS}')
    return {kind: dict(sorted(peers.items())) for kind, peers in counts.items()}


def headline(figures):
    return f'{counted(sum(sum(peers.values()) for peers in figures.values()), "fault")} survived'


def section(figures):
    yield from paragraph(
        'Peers and files are absent, die before or after the reply, hang, answer with a wrong type or with an error, '
        'and return. The numbers count combinations of request, call and fault. The outcome of each one, and of the '
        'next request, was the one that [Faults](faults.md) tells.')
    peers = sorted(set().union(*figures.values()))
    rows = [[NAMES.get(peer, peer.replace('-', ' ')), *(whole(count[peer]) if peer in count else ''
                                                        for count in figures.values())] for peer in peers]
    sums = [f'**{whole(sum(count.values()))}**' for count in figures.values()]
    yield from table(['faults of', *(KINDS[kind] for kind in figures)], [*rows, ['**all**', *sums]])
