# SPDX-FileCopyrightText: velmora-installationhandler contributors
# SPDX-License-Identifier: BSD-3-Clause
"""What the commands print is read as it is meant."""

import pytest

from tests.quality.command import Unmeasured
from tests.quality.parts import coverage, faults, fuzzing, model, soak, testsuite


def logged(name, output, end='Passed'):
    """A test in a log of ctest."""
    return (f'3/9 Testing: {name}\n3/9 Test: {name}\nCommand: "{name}"\nOutput:\n-----\n{output}<end of output>\n'
            f'Test time =   0.71 sec\n-----\nTest {end}.\n"{name}" end time: Nov 22 16:01 UTC\n-----\n\n')


def test_checks_of_qt_test():
    output = ('PASS   : RpmInfoTest::initTestCase()\nPASS   : RpmInfoTest::reads(one)\n'
              'PASS   : RpmInfoTest::reads(two)\nSKIP   : RpmInfoTest::reads(three) not here\n'
              'PASS   : RpmInfoTest::cleanupTestCase()\n'
              'Totals: 4 passed, 0 failed, 1 skipped, 0 blacklisted, 71ms\n')
    assert testsuite.checks(output) == (2, 1)


@pytest.mark.parametrize('line, expected', [
    ('8 passed in 56.91s', (8, 0)),
    ('15 passed in 71.14s (0:01:11)', (15, 0)),
    ('5 passed, 1 skipped in 2.27s', (5, 1)),
    ('6 passed, 2 warnings in 2.27s', (6, 0)),
    ('============================= 55 passed in 25.70s ==============================', (55, 0)),
])
def test_checks_of_pytest(line, expected):
    assert testsuite.checks(f'........ [100%]\n{line}\n') == expected


def test_tests_are_counted_by_area():
    log = (logged('unit.rpminfo', 'PASS   : RpmInfoTest::reads(one)\n')
           + logged('integration-idle', '15 passed in 7.14s\n')
           + logged('integration-texts', '3 passed, 1 skipped in 7.14s\n')
           + logged('stage', '-- Installing: /usr\n'))
    assert testsuite.areas(log) == {
        'integration': {'tests': ['integration-idle', 'integration-texts'], 'checks': 18, 'skipped': 1},
        'stage': {'tests': ['stage'], 'checks': 0, 'skipped': 0},
        'unit': {'tests': ['unit.rpminfo'], 'checks': 1, 'skipped': 0},
    }


@pytest.mark.parametrize('log', ['Start testing: Nov 22\n', logged('layers', '1 failed in 2 s\n', end='Failed')])
def test_failed_tests_are_no_figure(log):
    with pytest.raises(Unmeasured):
        testsuite.areas(log)


def test_coverage_is_summed_by_folder():
    summary = {'files': [
        {'filename': 'install/rpminfo.cpp', 'line_covered': 40, 'line_total': 41},
        {'filename': 'common/log.cpp', 'line_covered': 5, 'line_total': 5},
        {'filename': 'install/queue.cpp', 'line_covered': 9, 'line_total': 9},
    ]}
    figures = coverage.folders(summary)
    assert figures == {'common': {'run': 5, 'all': 5}, 'install': {'run': 49, 'all': 50}}
    assert coverage.headline(figures) == '98.1 % of 55 lines'


def test_coverage_is_never_rounded_up():
    assert coverage.percent({'run': 9999, 'all': 10000}) == '99.9 %'


def test_steps_of_the_model():
    output = ('ctest says something\n'
              '10023 steps in 481 histories, from seed 7, 913 s: the program does what the model says.\n')
    assert model.figures_of(output) == {'steps': 10023, 'histories': 481, 'seed': 7, 'seconds': 913}


def test_disagreement_with_the_model_is_no_figure():
    with pytest.raises(Unmeasured):
        model.figures_of('The program and the model disagree, from seed 7 within 31 steps:\n')


def test_targets_of_fuzzing():
    output = ('| target | executions | a second | edges covered | of | result |\n|---|---|---|---|---|---|\n'
              '| accesspolicy | 570292 | 4752 | 82 | 279 | nothing found |\n'
              '| dialogtexts | 37298 | 311 | 134 | 754 | nothing found |\n')
    assert fuzzing.targets(output) == {
        'accesspolicy': {'executions': 570292, 'edges': 82, 'all edges': 279},
        'dialogtexts': {'executions': 37298, 'edges': 134, 'all edges': 754},
    }


def test_builds_of_the_soak():
    output = '''
The program as it is shipped, seed 12:
10000 requests of 4 clients in 811 rounds with 1625 faults, 125 seconds
installation: failure: 1091
installation: success: 2480
removal: failure: 657
removal: success: 8462
memory: 380 KiB gained after the first 504 requests, 0.040 KiB each
descriptors: 8, as at the start
match rules of the system bus: 10, as at the start
idle exit: after 30 seconds, with status 0

The program with the sanitizers, seed 12:
10000 requests of 4 clients in 811 rounds with 1625 faults, 300 seconds
installation: success: 2480
descriptors: 8, as at the start
idle exit: after 31 seconds, with status 0
'''
    amounts = {'requests': 10000, 'clients': 4, 'rounds': 811, 'faults': 1625, 'seed': 12}
    assert soak.builds(output) == {
        'as it is shipped': amounts | {
            'seconds': 125, 'memory': 0.04, 'same': ['descriptors', 'match rules of the system bus'], 'idle exit': 30,
            'outcomes': {'installation: failure': 1091, 'installation: success': 2480, 'removal: failure': 657,
                         'removal: success': 8462}},
        'with the sanitizers': amounts | {
            'seconds': 300, 'memory': None, 'same': ['descriptors'], 'idle exit': 31,
            'outcomes': {'installation: success': 2480}},
    }


def test_faults_are_counted_by_peer():
    rows = [['ordinary, one file', 'mce', 'any', 'absent'], ['ordinary, one file', 'dialog', 'any', 'absent'],
            ['sdk mode, one file', 'mce', 'any', 'absent']]
    files = [{'usual': [['ordinary, one file', 'success']], 'installation': rows[:2]},
             {'installation': rows[2:]}, {'removal': [['managed package', 'package-manager', 'any', 'absent']]}]
    assert faults.cells(files) == {'installation': {'dialog': 1, 'mce': 2}, 'removal': {'package-manager': 1}}
    with pytest.raises(Unmeasured):
        faults.cells(files[:2])
