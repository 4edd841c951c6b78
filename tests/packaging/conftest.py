# SPDX-FileCopyrightText: velmora-installationhandler contributors
# SPDX-License-Identifier: BSD-3-Clause
"""Tests of the installed files and of the examples in the documents, on a device in a sandbox."""

from functools import partial
from pathlib import Path

import documents
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
def examples():
    """The examples in a section of the README."""
    return partial(documents.examples, 'README.md')
