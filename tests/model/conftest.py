# SPDX-FileCopyrightText: velmora-installationhandler contributors
# SPDX-License-Identifier: BSD-3-Clause
"""The surroundings of the program, the same for all tests of a file."""

from pathlib import Path

import pytest
from support.devicestate import is_device

from model.program.surroundings import Surroundings


def pytest_addoption(parser):
    parser.addoption('--clock', type=Path, help='the library that stillclock.cpp has been built to')


def pytest_sessionstart():
    if not is_device():
        pytest.exit('These tests run on a device in a sandbox only.', returncode=4)


@pytest.fixture(scope='module')
def surroundings(pytestconfig):
    made = Surroundings(pytestconfig.getoption('clock'))
    yield made
    made.close()
