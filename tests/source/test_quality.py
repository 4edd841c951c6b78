# SPDX-FileCopyrightText: velmora-installationhandler contributors
# SPDX-License-Identifier: BSD-3-Clause
"""The page of figures and its charts are those of the kept results. Drawing needs packages that the tests do without,
so the test compares the page, the texts in the charts, and the sum of all that a chart has been drawn from."""

import re
import xml.etree.ElementTree

import pytest
from test_sources import ROOT

from tests.quality import chartfiles
from tests.quality.charts import charts
from tests.quality.page import page
from tests.quality.results import Results

HINT = 'please run tests/report --page'

PARTS = Results(ROOT / 'docs/quality.json').parts
CHARTS = chartfiles.names(charts(PARTS['bench']['figures']))


def words(text):
    return set(re.findall(r'\S+', text))


def test_page_is_that_of_the_results():
    assert (ROOT / 'docs/quality.md').read_text(encoding='utf-8') == page(PARTS), HINT


def test_charts_are_those_of_the_results():
    assert sorted(path.name for path in (ROOT / 'docs/quality').iterdir()) == sorted(CHARTS), HINT


@pytest.mark.parametrize('name', CHARTS)
def test_chart_is_drawn_from_the_results(name):
    text = (ROOT / 'docs/quality' / name).read_text(encoding='utf-8')
    assert chartfiles.recorded_digest(text) == chartfiles.digest(CHARTS[name]), HINT


@pytest.mark.parametrize('name', CHARTS)
def test_chart_names_all_figures(name):
    chart = CHARTS[name]
    picture = xml.etree.ElementTree.parse(ROOT / 'docs/quality' / name).getroot()
    texts = [*chart.series, *(text for row in chart.rows for text in [row.label, *chart.texts(row)])]
    assert words(' '.join(texts)) <= words(' '.join(picture.itertext()))
