# SPDX-FileCopyrightText: velmora-installationhandler contributors
# SPDX-License-Identifier: BSD-3-Clause
"""The page, the kept results and the charts."""

from bench.measure.figure import Ratio, Value, table

from tests.quality import chartfiles, machine
from tests.quality.charts import charts
from tests.quality.page import page
from tests.quality.parts import PARTS, benchmarks
from tests.quality.results import LICENSE, Results

MACHINE = {'processor': 'Some Processor', 'cores': 2, 'memory': 8, 'debian': '12.11', 'kernel': '6.1.0'}

FIGURES = {
    'tests': {'dev': {'source': {'tests': ['source', 'source.clazy'], 'checks': 300, 'skipped': 0}},
              'asan': {'unit': {'tests': ['unit.rpminfo'], 'checks': 30, 'skipped': 1}}},
    'coverage': {'common': {'run': 5, 'all': 5}, 'install': {'run': 49, 'all': 50}},
    'model': {'steps': 10023, 'histories': 1, 'seed': 7, 'seconds': 913},
    'fuzz': {'seconds': 600, 'targets': {'accesspolicy': {'executions': 570292, 'edges': 82, 'all edges': 279}}},
    'soak': {'as it is shipped': {
        'requests': 10000, 'clients': 4, 'rounds': 811, 'faults': 1625, 'seconds': 125, 'seed': 12, 'idle exit': 30,
        'outcomes': {'installation: success': 2480}, 'memory': 0.04, 'same': ['descriptors']}},
    'faults': {'installation': {'mce': 30, 'policy file': 12}, 'removal': {'mce': 4}},
    'bench': {'startup': [
        {'name': 'time to name owned', 'unit': 'ms', 'product': 12.1, 'compared': 11.6, 'ratio': 1.034,
         'spread': [1.02, 1.05], 'limit': 1.15, 'beside': 'floor'},
        {'name': 'last against the first', 'unit': 'ms', 'product': 3.0, 'compared': 2.0, 'ratio': 1.5, 'spread': None,
         'limit': 1.1, 'beside': 'itself'},
        {'name': 'a call', 'unit': 'ms', 'product': 6.0, 'compared': 8.0, 'ratio': 0.75, 'spread': None, 'limit': None,
         'beside': 'gdbus call'},
        {'name': 'wake-ups', 'unit': 'times', 'product': 0, 'compared': None, 'ratio': None, 'spread': None,
         'limit': 0, 'beside': 'floor'},
    ]},
}


def kept(tmp_path, *names):
    results = Results(tmp_path / 'quality.json')
    for name in names:
        results.keep(name, '2026-11-22', '0123456789ab', MACHINE, FIGURES[name])
    return results


def test_results_stay(tmp_path):
    before = kept(tmp_path, 'model', 'coverage')
    assert Results(tmp_path / 'quality.json').parts == before.parts
    assert kept(tmp_path, 'model').parts.keys() == {'model', 'coverage'}
    assert all(line in (tmp_path / 'quality.json').read_text(encoding='utf-8') for line in LICENSE)


def test_page_has_measured_parts_alone(tmp_path):
    text = page(kept(tmp_path, 'model', 'tests').parts)
    assert [line for line in text.splitlines() if line.startswith('## ')] == ['## Tests', '## The model']
    assert '| [The model](#the-model) | 10,023 steps without a disagreement | 2026-11-22 |' in text
    assert ('`tests/report model`, 2026-11-22, commit 0123456789ab; Some Processor, 2 cores, 8 GiB, Debian 12.11, '
            'Linux 6.1.0') in text


def test_each_part_tells_its_figures(tmp_path):
    text = page(kept(tmp_path, *PARTS).parts)
    for line in ('| source | 2 | 300 |  |  |', '| unit |  |  | 1 | 30 |',
                 '1 check skipped, with the reason in the log.',
                 'Analysers and formatters that find nothing: clazy.',
                 '| `install/` | 50 | 49 | 98.0 % |', '| accesspolicy | 570,292 | 82 | 279 |',
                 '10,023 random steps in 1 history (seed 7)', '| installation: success | 2,480 |',
                 '| MCE | 30 | 4 |', '| policy file | 12 |  |', '| **all** | **42** | **4** |', '2 of 3 bars met',
                 '| time to name owned, ms | 12.1 | 11.6 | 1.034 | 1.02–1.05 | ≤ 1.15 × | met |',
                 '| last against the first, ms | 3 | 2 | 1.500 |  | ≤ 1.1 × | MISSED |',
                 '| wake-ups, times | 0 |  |  |  | ≤ 0 | met |'):
        assert line in text


def test_charts_have_the_figures_of_one_unit():
    latency, ratios, peers = charts(FIGURES['bench'])
    assert latency.series == ['product', 'floor']
    assert [(row.label, latency.texts(row)) for row in latency.rows] == [('time to name owned', ['12.1', '11.6'])]
    assert ratios.series == ['ratio', 'bar']
    assert [(row.label, ratios.texts(row), row.spread) for row in ratios.rows] == [
        ('time to name owned', ['1.034', '1.15'], [1.02, 1.05]), ('last against the first', ['1.500', '1.1'], None)]
    assert peers.series == ['product', 'peer']
    assert [(row.label, peers.texts(row)) for row in peers.rows] == [('a call', ['6', '8'])]


def test_page_shows_each_chart_on_both_backgrounds():
    lines = '\n'.join(benchmarks.section(FIGURES['bench']))
    assert all(f'"quality/{name}"' in lines for name in chartfiles.names(charts(FIGURES['bench'])))


def test_chart_says_what_it_is_drawn_from():
    chart, other, _ = charts(FIGURES['bench'])
    text = chartfiles.with_comment('<?xml version="1.0"?>\n<svg d="M 0 0 \nz"/>\n', chart)
    assert chartfiles.recorded_digest(text) == chartfiles.digest(chart) != chartfiles.digest(other)
    assert 'M 0 0\nz' in text
    assert all(line in text for line in LICENSE)


def test_processor_without_a_name():
    assert machine.processor('model name\t: Some  Processor\n' * 2) == 'Some Processor'
    assert machine.processor('CPU part\t: 0xd0b\n')


def test_table_of_the_benchmarks():
    time = Ratio('time', 'ms', [12, 12, 13], [10, 10, 10], 1.15)
    wake_ups = Value('wake-ups', 'times', [0], [], 0)
    assert table([time.summary(), wake_ups.summary()]) == '''\
figure           product  compared  ratio   spread       bar
--------------------------------------------------------------------
time, ms              12        10  1.200  1.2–1.3  ≤ 1.15 ×  MISSED
wake-ups, times        0                                 ≤ 0     met'''
