# SPDX-FileCopyrightText: velmora-installationhandler contributors
# SPDX-License-Identifier: BSD-3-Clause
"""A removal lasts longer than the idle time, which begins when the removal has ended."""

from model.steps import Remove, Wait

STEPS = [
    Remove(('managed',)),
    Wait(),
    Wait(),
]
