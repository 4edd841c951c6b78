# SPDX-FileCopyrightText: velmora-installationhandler contributors
# SPDX-License-Identifier: BSD-3-Clause
"""A search that finds two owners is uncounted twice, and the service ends while it removes. Known behaviour 23."""

from model.device import NATIVE_LAUNCHER
from model.steps import Answer, Hold, RemoveLauncher, Report, Wait

STEPS = [
    RemoveLauncher(NATIVE_LAUNCHER),
    Answer(),
    Hold('updatingStarted'),
    Report('native'),
    Report('managed'),
    Answer(),
    Wait(),
]
