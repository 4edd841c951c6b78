# SPDX-FileCopyrightText: velmora-installationhandler contributors
# SPDX-License-Identifier: BSD-3-Clause
"""The table of faults: what came of each one, in lines that begin with a bar."""

import pytest


class FaultTable:
    """Rows of cells. A row whose last cells are missing is the one under way."""

    def __init__(self, *titles):
        self._rows = [titles]

    def begin(self, *cells):
        """Starts a row and returns it, for the remaining cells to be appended."""
        self._rows.append(list(cells))
        return self._rows[-1]

    def lines(self):
        """The table, as wide as it has to be."""
        columns = len(self._rows[0])
        rows = [[*map(str, row), *['?'] * (columns - len(row))] for row in self._rows]
        widths = [max(map(len, column)) for column in zip(*rows)]
        return ['| ' + ' | '.join(cell.ljust(width) for cell, width in zip(row, widths)) + ' |' for row in rows]


def written(outcomes):
    """What a caller sees of removals."""
    return ', '.join(text or 'removed' for _, text in outcomes) or 'silence'


def print_lines(config, lines):
    """Prints lines of a test run whether or not its tests pass."""
    plugins = config.pluginmanager
    reporter = plugins.getplugin('terminalreporter')
    with plugins.getplugin('capturemanager').global_and_fixture_disabled():
        # After the dots.
        reporter.write_line('')
        for line in lines:
            reporter.write_line(line)
        reporter.flush()


@pytest.fixture(scope='module')
def removal_table(request):
    """The table of a file, printed when all its tests are through."""
    table = FaultTable('request', 'peer', 'call', 'fault', 'what the caller sees', 'the next request')
    yield table
    print_lines(request.config, table.lines())
