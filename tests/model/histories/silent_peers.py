# SPDX-FileCopyrightText: velmora-installationhandler contributors
# SPDX-License-Identifier: BSD-3-Clause
"""Peers that never answer, or too late: time-outs end their calls, and the service goes on."""

from model.device import ALPHA, OWN_LAUNCHER
from model.steps import AnswerLate, Choose, Hold, Install, Remove, RemoveLauncher, Wait

STEPS = [
    Hold('IsSilentInstallationEnabled'),
    Install((ALPHA,)),
    Wait(),
    AnswerLate(),
    Hold('notification_end_req'),
    Choose(confirm=True),
    Remove(('managed', 'absent')),
    Wait(),
    Wait(),
    Hold('OnRemove'),
    RemoveLauncher(OWN_LAUNCHER),
    Wait(),
    Wait(),
    Wait(),
]
