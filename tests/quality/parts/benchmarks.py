# SPDX-FileCopyrightText: velmora-installationhandler contributors
# SPDX-License-Identifier: BSD-3-Clause
"""Times and memory, beside those of the least programs that do the same."""

import json

from bench.measure.figure import HEADER, MET, Summary

from ..charts import charts
from ..command import BUILD, run
from ..markdown import paragraph, table

TITLE = 'Times and memory'
TRIAL = ('idle', 'installation', 'companion')


def measure(trial):
    summaries = BUILD / 'bench-figures.json'
    run('bench/run', '--json', str(summaries), *(TRIAL if trial else ()))
    return json.loads(summaries.read_text(encoding='utf-8'))


def headline(figures):
    verdicts = [summary.verdict for summary in summaries_of(figures) if summary.limit is not None]
    return f'{verdicts.count(MET)} of {len(verdicts)} bars met'


def summaries_of(figures):
    return [Summary(**row) for rows in figures.values() for row in rows]


def section(figures):
    yield from paragraph(
        'A floor is the least program that makes the same calls of libraries and buses. Product and floor take turns, '
        'and the median ratio of a pair counts. "Spread" is the middle half. The [list of all figures]'
        '(../bench/README.md) tells how each one is taken.')
    for chart in charts(figures):
        yield from [f'### {chart.title}', '', *picture(chart), '']
    yield from ['### All figures', '']
    yield from table(HEADER, [summary.cells() for summary in summaries_of(figures)])


def picture(chart):
    """A picture that follows the reader's colours."""
    return ['<picture>',
            f'  <source media="(prefers-color-scheme: dark)" srcset="quality/{chart.name}-dark.svg">',
            f'  <img alt="{chart.description()}" src="quality/{chart.name}-light.svg">',
            '</picture>']
