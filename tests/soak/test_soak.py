# SPDX-FileCopyrightText: velmora-installationhandler contributors
# SPDX-License-Identifier: BSD-3-Clause
"""A short soak; `tests/soak/run` makes a long one."""

import pytest
from soak.device import SoakDevice
from soak.measurement import Measurement
from soak.plan import Plan, every_kind
from soak.soak import Soak

SEED = 11
REQUESTS = 120


@pytest.fixture
def device():
    """The device of a soak."""
    soaked = SoakDevice()
    yield soaked
    soaked.close()


def test_every_outcome_is_allowed_and_nothing_is_left(device):
    soak, measurement = Soak(device), Measurement(device, REQUESTS, memory_limit=None)
    for planned in every_kind():
        soak.play(planned)
    measurement.begin()

    for planned in Plan(SEED, REQUESTS).rounds():
        soak.play(planned)

    measurement.end(REQUESTS)
    assert not measurement.failures
    assert not device.standins.unexpected()


def test_seed_repeats_a_plan():
    assert list(Plan(SEED, REQUESTS).rounds()) == list(Plan(SEED, REQUESTS).rounds())
