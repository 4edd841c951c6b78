# SPDX-FileCopyrightText: velmora-installationhandler contributors
# SPDX-License-Identifier: BSD-3-Clause
"""The user's answer reaches every request at work: one is handed over again, and one ends. Known behaviour 55, 56."""

from model.device import ALPHA, BETA
from model.steps import Answer, Choose, Install

STEPS = [
    Install((ALPHA,)),
    Choose(confirm=True),
    Install((BETA,)),
    Choose(confirm=True),
    Install((ALPHA, BETA)),
    Choose(confirm=False),
    Answer(),
    Answer('no space'),
    Answer('conflict'),
    Choose(confirm=True),
    Answer(),
]
