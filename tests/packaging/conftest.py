# SPDX-FileCopyrightText: velmora-installationhandler contributors
# SPDX-License-Identifier: BSD-3-Clause
"""Tests of what gets installed, and of what the documents say about it, on a device in a sandbox."""

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
def source():
    return SOURCE
