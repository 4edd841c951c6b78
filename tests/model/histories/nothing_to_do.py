# SPDX-FileCopyrightText: velmora-installationhandler contributors
# SPDX-License-Identifier: BSD-3-Clause
"""A request that leads to no operation does not prolong the idle time, and an empty installation does."""

from model.steps import Install, Pause, Remove, Wait

STEPS = [
    Pause(),
    Install(()),
    Pause(),
    Remove(()),
    Wait(),
]
