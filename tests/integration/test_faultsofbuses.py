# SPDX-FileCopyrightText: velmora-installationhandler contributors
# SPDX-License-Identifier: BSD-3-Clause
"""Buses that are absent, hang, die or return, with a removal of each kind."""

import pytest
from support.busfaults import BusFaults
from support.faulttable import written
from support.removalrequests import (
    ALL, ANDROID_LAUNCHER, MANAGED_LAUNCHER, NATIVE_LAUNCHER, OWN_LAUNCHER, REMOVED, DELETED, End)

LOST = 'Not connected to D-Bus server'
ABSENT = 'Not connected to the system bus'
HOOK_FAILED = End(log="Failed to call ZARN hook 'OnRemove'")
ANDROID_FAILED = End(log='failed to remove android app:')
UNKNOWN_OWNER = End(log='Error on resolving desktop file owner')
SILENT = {OWN_LAUNCHER.name: HOOK_FAILED, ANDROID_LAUNCHER.name: ANDROID_FAILED}

# What the service says when it has done all that it can.
LAST_WORDS = {OWN_LAUNCHER.name: None, ANDROID_LAUNCHER.name: None}


@pytest.fixture(params=ALL, ids=lambda request: request.name)
def bus_faults(request, removal_scene, processes, environment, system_bus, session_bus):
    """A device on which something happens to a bus."""
    return BusFaults(removal_scene(request.param), processes, environment,
                     {'system': system_bus, 'session': session_bus})


def check(row, outcomes, expected):
    """What came of it."""
    assert outcomes == expected, row
    row.append(written(outcomes))


def check_next(row, scene):
    """The next removal takes its usual course."""
    usual = scene.request.usual
    scene.set_up()
    scene.ask(usual).wait()
    outcomes = scene.wait_end(usual)
    assert outcomes == usual.outcomes, row
    row.append(written(outcomes) if outcomes else usual.call)
