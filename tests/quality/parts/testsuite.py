# SPDX-FileCopyrightText: velmora-installationhandler contributors
# SPDX-License-Identifier: BSD-3-Clause
"""The tests that CI runs."""

import re

from ..command import BUILD, Unmeasured, run
from ..markdown import counted, paragraph, table, whole

TITLE = 'Tests'
PRESETS = {'dev': 'as shipped, GCC', 'asan': 'sanitizers, Clang'}
ANALYSERS = {'source.clangtidy': 'clang-tidy', 'source.clazy': 'clazy', 'source.clangformat': 'clang-format',
             'source.autopep8': 'autopep8', 'dialog.qmllint': 'qmllint'}

# A test of ctest in its log, and the checks of Qt Test and of pytest in the output of a test.
TEST = re.compile(r'^\d+/\d+ Test: (\S+)\n(.*?)^Test (Passed|Failed)', re.MULTILINE | re.DOTALL)
QT_CHECK = re.compile(r'^(PASS|SKIP) +: \w+::(\w+)\(', re.MULTILINE)
PYTEST_CHECKS = re.compile(r'^(?:=+ )?(\d+) passed(?:, (\d+) skipped)?(?:, \d+ warnings?)? in ', re.MULTILINE)
NO_CHECKS = {'initTestCase', 'cleanupTestCase'}


def measure(trial):
    logs = {preset: BUILD / preset / 'Testing/Temporary/LastTest.log' for preset in PRESETS}
    for log in logs.values():
        log.unlink(missing_ok=True)
    if trial:
        run('cmake', '--preset', 'dev')
        run('ctest', '--preset', 'dev', '-R', '^(source|quality)$')
        del logs['asan']
    else:
        run('./run-tests')
    return {preset: areas(log.read_text(encoding='utf-8', errors='replace')) for preset, log in logs.items()}


def areas(log):
    """The tests of a log by area, the first word of their names: names, number of checks, number of skipped checks."""
    result = {}
    for name, output, end in TEST.findall(log):
        if end != 'Passed':
            raise Unmeasured(f'the test {name} has failed')
        area = result.setdefault(re.match(r'[a-z]+', name)[0], {'tests': [], 'checks': 0, 'skipped': 0})
        area['tests'].append(name)
        for count, words in zip(checks(output), ('checks', 'skipped')):
            area[words] += count
    if not result:
        raise Unmeasured('ctest has left no log of tests')
    return {name: area | {'tests': sorted(area['tests'])} for name, area in sorted(result.items())}


def checks(output):
    """How many functions and rows of a test have passed, and how many were skipped."""
    ends = [end for end, function in QT_CHECK.findall(output) if function not in NO_CHECKS]
    passed, skipped = ends.count('PASS'), ends.count('SKIP')
    for more_passed, more_skipped in PYTEST_CHECKS.findall(output):
        passed, skipped = passed + int(more_passed), skipped + int(more_skipped or 0)
    return passed, skipped


def headline(figures):
    return 'passed: ' + '; '.join(f'{counted(total(build, "checks"), "check")} ({PRESETS[preset]})'
                                  for preset, build in figures.items())


def section(figures):
    yield from paragraph('A test is a program that ctest runs. A check is a function of it, once for each row of its '
                         'data.')
    titles = [f'{PRESETS[preset]}: {what}' for preset in figures for what in ('tests', 'checks')]
    yield from table(['', *titles], [*rows(figures), ['**all**', *totals(figures)]])
    if skipped := sum(total(build, 'skipped') for build in figures.values()):
        yield from paragraph(f'{counted(skipped, "check")} skipped, with the reason in the log.')
    passed = {name for build in figures.values() for area in build.values() for name in area['tests']}
    names = [analyser for test, analyser in ANALYSERS.items() if test in passed]
    if names:
        yield from paragraph(f'Analysers and formatters that find nothing: {", ".join(names)}.')


def rows(figures):
    for area in sorted({area for build in figures.values() for area in build}):
        yield [area, *(cell for build in figures.values() for cell in cells(build.get(area)))]


def cells(area):
    return (whole(len(area['tests'])), whole(area['checks'])) if area else ('', '')


def totals(figures):
    for build in figures.values():
        yield f'**{whole(sum(len(area["tests"]) for area in build.values()))}**'
        yield f'**{whole(total(build, "checks"))}**'


def total(build, what):
    return sum(area[what] for area in build.values())
