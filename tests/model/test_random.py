# SPDX-FileCopyrightText: velmora-installationhandler contributors
# SPDX-License-Identifier: BSD-3-Clause
"""The program does what the model says in random histories, which are the same each time."""

from model.explore import explore

SEED, STEPS = 1, 4000


def test_random_histories(surroundings):
    explore(surroundings, STEPS, SEED)
