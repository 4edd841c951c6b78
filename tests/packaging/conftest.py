# SPDX-FileCopyrightText: velmora-installationhandler contributors
# SPDX-License-Identifier: BSD-3-Clause
"""Tests of the installed files and of the examples in the documents, on a device in a sandbox."""

import re
from pathlib import Path

import pytest

SOURCE = Path(__file__).resolve().parents[2]
pytest_plugins = ['support.fixtures']


def pytest_addoption(parser):
    parser.addoption('--build', type=Path, help='the build folder, with the installed files in its folder "stage"')


@pytest.fixture(scope='session')
def build(pytestconfig):
    return pytestconfig.getoption('build')


@pytest.fixture(scope='session')
def builds(build):
    """A folder that is kept for the next run of the tests."""
    return build / 'builds'


@pytest.fixture(scope='session')
def source():
    return SOURCE


@pytest.fixture
def examples(source):
    """The indented blocks of a section of the README, each in the form that a user pastes into a shell."""
    def blocks(title):
        readme = (source / 'README.md').read_text(encoding='utf-8')
        section = re.search(rf'^## {title}\n(.*?)(?=^## |\Z)', readme, re.MULTILINE | re.DOTALL)[1]
        return [re.sub(r'^ {4}', '', block, flags=re.MULTILINE)
                for block in re.findall(r'(?:^ {4}.*\n)+', section, re.MULTILINE)]
    return blocks
