# SPDX-FileCopyrightText: velmora-installationhandler contributors
# SPDX-License-Identifier: BSD-3-Clause
"""The tables of faults, whose rows the tests write to a file for docs/faults.md."""

import json
from pathlib import Path

import pytest


class FaultTable:
    """The rows of a test. A row whose last cells are missing is the one under way."""

    def __init__(self, kind, properties):
        self._kind = kind
        self._properties = properties

    def begin(self, *cells):
        """Starts a row and returns it, for the remaining cells to be appended."""
        row = list(cells)
        self._properties.append((self._kind, row))
        return row


class Writer:
    """Writes the rows of all tests to a file when they are through."""

    def __init__(self, file):
        self._file = file
        self._tables = {}

    def pytest_runtest_logreport(self, report):
        if report.when == 'call':
            for kind, row in report.user_properties:
                self._tables.setdefault(kind, []).append(row)

    def pytest_sessionfinish(self):
        self._file.write_text(json.dumps(self._tables, indent=1), encoding='utf-8')


def pytest_addoption(parser):
    parser.addoption('--fault-rows', type=Path, help='the file for the rows of the tables of faults')


def pytest_configure(config):
    if config.option.fault_rows:
        config.pluginmanager.register(Writer(config.option.fault_rows))


def written(outcomes):
    """The outcomes of removals as their caller sees them."""
    return ', '.join(f'`{text}`' if text else 'removed' for _, text in outcomes) or 'silence'


@pytest.fixture
def removal_table(request):
    """Known behaviour, caller, log and next request by request, peer, call and fault, in removals."""
    return FaultTable('removal', request.node.user_properties)


@pytest.fixture
def installation_table(request):
    """Known behaviour, caller, user, log and next request by request, peer, call and fault, in installations."""
    return FaultTable('installation', request.node.user_properties)


@pytest.fixture
def usual_table(request):
    """Caller, user and log by request, in installations where nothing is wrong."""
    return FaultTable('usual', request.node.user_properties)
