# SPDX-FileCopyrightText: velmora-installationhandler contributors
# SPDX-License-Identifier: BSD-3-Clause
"""A removal that is reported twice lowers the count below zero, and the idle time begins anew. Known behaviour 25."""

from model.steps import Answer, Die, Hold, Pause, Remove, Wait

STEPS = [
    Die('PackageKit'),
    Hold('updatingFinished'),
    Remove(('native',)),
    Hold('updatingFinished'),
    Answer(),
    Pause(),
    Answer(),
    Wait(),
]
