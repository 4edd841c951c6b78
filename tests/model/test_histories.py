# SPDX-FileCopyrightText: velmora-installationhandler contributors
# SPDX-License-Identifier: BSD-3-Clause
"""The program does what the model says in the histories that have been kept."""

import importlib
from pathlib import Path

import pytest

from model.history import compare, without_useless

KEPT = sorted(path.stem for path in (Path(__file__).parent / 'histories').glob('[!_]*.py'))


@pytest.mark.parametrize('name', KEPT)
def test_history(surroundings, name):
    steps = importlib.import_module(f'model.histories.{name}').STEPS

    assert without_useless(steps) == steps
    compare(surroundings, steps)
