# SPDX-FileCopyrightText: velmora-installationhandler contributors
# SPDX-License-Identifier: BSD-3-Clause
"""A search finds a second owner when the first one has been removed. The count falls below zero before the second one's
removal begins. Known behaviour 23."""

from model.device import NATIVE_LAUNCHER
from model.steps import Answer, RemoveLauncher, Report, Wait

STEPS = [
    RemoveLauncher(NATIVE_LAUNCHER),
    Answer(),
    Report('managed'),
    Answer(),
    Report('managed'),
    Answer(),
    Wait(),
]
