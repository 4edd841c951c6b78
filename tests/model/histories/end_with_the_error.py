# SPDX-FileCopyrightText: velmora-installationhandler contributors
# SPDX-License-Identifier: BSD-3-Clause
"""PackageKit's end arrives with its error, while the home screen keeps the service waiting: what had been found before
is removed all the same. Known behaviour 27."""

from model.steps import Answer, Hold, Remove, Report

STEPS = [
    Remove(('native', 'managed')),
    Answer(call=1),
    Report('native'),
    Hold('updatingFinished'),
    Answer(),
    Report('refuses'),
    Report('succeeds'),
    Answer(),
    Answer(),
    Report('succeeds'),
]
