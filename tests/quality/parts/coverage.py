# SPDX-FileCopyrightText: velmora-installationhandler contributors
# SPDX-License-Identifier: BSD-3-Clause
"""The lines of the product that the tests run."""

import json

from ..command import BUILD, run
from ..markdown import paragraph, table, whole

TITLE = 'Line coverage'


def measure(trial):
    """There is no smaller amount for a trial."""
    del trial
    counts = BUILD / 'coverage.json'
    run('scripts/coverage', '--json', str(counts))
    return folders(json.loads(counts.read_text(encoding='utf-8')))


def folders(summary):
    """Lines that were run, and all lines, by folder, from a summary of gcovr."""
    result = {}
    for file in summary['files']:
        lines = result.setdefault(file['filename'].partition('/')[0], {'run': 0, 'all': 0})
        lines['run'] += file['line_covered']
        lines['all'] += file['line_total']
    return dict(sorted(result.items()))


def headline(figures):
    lines = total(figures)
    return f'{percent(lines)} of {whole(lines["all"])} lines'


def section(figures):
    yield from paragraph('The lines of C++ that at least one test runs.')
    rows = [*((f'`{folder}/`', lines) for folder, lines in figures.items()), ('**all**', total(figures))]
    yield from table(['folder', 'lines', 'run', ''],
                     [[name, whole(lines['all']), whole(lines['run']), percent(lines)] for name, lines in rows])


def total(figures):
    return {what: sum(lines[what] for lines in figures.values()) for what in ('run', 'all')}


def percent(lines):
    """Never rounded up."""
    return f'{int(1000 * lines["run"] / lines["all"]) / 10:.1f} %'
