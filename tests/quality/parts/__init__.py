# SPDX-FileCopyrightText: velmora-installationhandler contributors
# SPDX-License-Identifier: BSD-3-Clause
"""The parts of the page. Each is measured by a command of its own, and has a section of the page.

A part is a module. `measure` runs the command and returns the figures, as JSON knows them; a trial takes little time,
and its figures say nothing. `headline` puts the figures in one phrase, and `section` in lines of Markdown.
"""

from . import benchmarks, coverage, faults, fuzzing, model, soak, testsuite

PARTS = {
    'tests': testsuite,
    'coverage': coverage,
    'model': model,
    'fuzz': fuzzing,
    'soak': soak,
    'faults': faults,
    'bench': benchmarks,
}
