# SPDX-FileCopyrightText: velmora-installationhandler contributors
# SPDX-License-Identifier: BSD-3-Clause
"""The tables of faults: the outcome of each one, in lines that begin with a bar."""

import pytest

TITLES = {
    'removal': ['request', 'peer', 'call', 'fault', 'what the caller sees', 'the next request'],
    'installation': ['call', 'fault', 'what the caller sees', 'the next request'],
}


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


class Printer:
    """Prints the rows of all tests when they are through, whether or not they have passed."""

    def __init__(self):
        self._tables = {kind: [] for kind in TITLES}

    def pytest_runtest_logreport(self, report):
        if report.when == 'call':
            for kind, row in report.user_properties:
                self._tables[kind].append(row)

    def pytest_terminal_summary(self, terminalreporter):
        for kind, rows in self._tables.items():
            for line in lines([TITLES[kind], *rows]) if rows else ():
                terminalreporter.write_line(line)


def pytest_configure(config):
    config.pluginmanager.register(Printer())


def lines(rows):
    """A table, as wide as it has to be."""
    rows = [[*map(str, row), *['?'] * (len(rows[0]) - len(row))] for row in rows]
    widths = [max(map(len, column)) for column in zip(*rows)]
    return ['| ' + ' | '.join(cell.ljust(width) for cell, width in zip(row, widths)) + ' |' for row in rows]


def written(outcomes):
    """The outcomes of removals as their caller sees them."""
    return ', '.join(text or 'removed' for _, text in outcomes) or 'silence'


@pytest.fixture
def removal_table(request):
    """The table of faults in removals."""
    return FaultTable('removal', request.node.user_properties)


@pytest.fixture
def installation_table(request):
    """The table of faults in installations."""
    return FaultTable('installation', request.node.user_properties)
