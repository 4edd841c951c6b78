# SPDX-FileCopyrightText: velmora-installationhandler contributors
# SPDX-License-Identifier: BSD-3-Clause
"""The tests that SECURITY.md names."""

import re

from test_sources import ROOT

TEXT = (ROOT / 'SECURITY.md').read_text(encoding='utf-8')

# `integration/test_policy.py: test_one, test_two`
CITATION = re.compile(r'`([a-z]+/\S+\.(?:cpp|py)): (\w+(?:, \w+)*)`')


def section(title):
    return TEXT.partition(f'\n## {title}\n')[2].partition('\n## ')[0]


def test_cited_tests_exist():
    cited = [(path, name) for path, names in CITATION.findall(TEXT) for name in names.split(', ')]
    assert len(cited) > 40
    assert not [f'{path}: {name}' for path, name in cited if not re.search(
        rf'^(def {name}\(|    void {name}\(\))', (ROOT / 'tests' / path).read_text(encoding='utf-8'), re.MULTILINE)]


def test_every_promise_names_a_test():
    promises = section('Promises').split('\n- ')[1:]
    assert promises
    assert not [promise for promise in promises if not CITATION.search(promise)]


def test_every_risk_names_a_test():
    _, *risks = re.findall(r'^\| (.*?) \| (.*?) \|', section('Risks that remain'), re.MULTILINE)
    assert risks
    assert not [risk for risk, shown_by in risks if not CITATION.match(shown_by) and shown_by != 'as above']
