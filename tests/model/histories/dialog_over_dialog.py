# SPDX-FileCopyrightText: velmora-installationhandler contributors
# SPDX-License-Identifier: BSD-3-Clause
"""A dialog is shown over another one, which stays on screen and ends the upper one. Known behaviour 57, 58."""

from model.device import ABSENT, ALPHA, BETA
from model.steps import Answer, Choose, Display, Install

STEPS = [
    Install((ALPHA, ABSENT)),
    Choose(confirm=True),
    Install((BETA,)),
    Answer(),
    Choose(confirm=False, dialog=1),
    Choose(confirm=True, dialog=1),
    Display('off'),
]
