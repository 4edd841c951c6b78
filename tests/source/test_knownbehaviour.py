# SPDX-FileCopyrightText: velmora-installationhandler contributors
# SPDX-License-Identifier: BSD-3-Clause
"""docs/known-behaviour.md and the places that cite its entries."""

import re
from pathlib import Path

from test_sources import ROOT, texts

DOCUMENT = Path('docs/known-behaviour.md')
CITATION = r'Known behaviour (\d+(?:, \d+)*)'


def entries():
    """The numbers of all entries, in their order."""
    return [int(number) for number in re.findall(r'^(\d+)\. ', (ROOT / DOCUMENT).read_text(encoding='utf-8'), re.M)]


def citations():
    """Each cited number with the file that cites it."""
    return {(int(number), path) for path, text in texts() if path != DOCUMENT
            for numbers in re.findall(CITATION, text) for number in numbers.split(', ')}


def test_numbers_are_continuous():
    assert entries() == list(range(1, len(entries()) + 1))


def test_cited_numbers_exist():
    assert not sorted((number, str(path)) for number, path in citations() if number not in entries())


def test_every_number_has_a_test():
    tested = {number for number, path in citations() if path.parts[0] == 'tests'}
    assert not set(entries()) - tested
