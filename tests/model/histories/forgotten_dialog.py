# SPDX-FileCopyrightText: velmora-installationhandler contributors
# SPDX-License-Identifier: BSD-3-Clause
"""The answer of the package manager ends a request whose dialog is on screen. A request that comes then waits for an
answer that reaches nobody, and is lost when the idle time is over. Known behaviour 59."""

from model.device import ALPHA, BETA
from model.steps import Answer, Choose, Install, Wait

STEPS = [
    Install((ALPHA, BETA)),
    Choose(confirm=True),
    Install((ALPHA,)),
    Choose(confirm=False),
    Answer(),
    Install((BETA,)),
    Choose(confirm=True),
    Wait(),
]
