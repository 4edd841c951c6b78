# SPDX-FileCopyrightText: velmora-installationhandler contributors
# SPDX-License-Identifier: BSD-3-Clause
"""A system bus that is absent, hangs, dies or returns, with a removal of each kind."""

import pytest
from support.faulttable import written
from support.removalrequests import ALL, ANDROID_LAUNCHER, MANAGED_LAUNCHER, NATIVE_LAUNCHER, OWN_LAUNCHER, End

LOST = End(((False, 'Not connected to D-Bus server'),))
ABSENT = End(((False, 'Not connected to the system bus'),))
UNKNOWN_OWNER = End(log='Error on resolving desktop file owner')
SILENT = {
    OWN_LAUNCHER.name: End(log="Failed to call ZARN hook 'OnRemove'"),
    ANDROID_LAUNCHER.name: End(log='failed to remove android app:'),
}
UNOWNED = {**SILENT, MANAGED_LAUNCHER.name: UNKNOWN_OWNER, NATIVE_LAUNCHER.name: UNKNOWN_OWNER}


@pytest.mark.parametrize('request_', ALL, ids=lambda request: request.name)
def test_faults(make_bus_faults, removal_table, request_):
    faults = make_bus_faults(request_)
    faults.start_service()
    scene = faults.scene

    def check(fault, end):
        row = removal_table.begin(request_.name, 'system bus', request_.last if fault == 'dies' else 'any', fault)
        outcomes = scene.wait_end(end)
        assert outcomes == end.outcomes, row
        row.append(written(outcomes))
        return row

    scene.expect(request_.usual)
    faults.stop('system')
    request_.ask(scene)
    assert scene.outcomes() == ()
    faults.resume('system')
    check('hangs', request_.usual).append(scene.repeat())

    end = SILENT.get(request_.name, LOST)
    faults.ask_and_hold(end)
    faults.kill('system')
    died = check('dies', end)

    # This service has lost its bus for good. To one that never had it things look a little different.
    faults.service.kill()
    faults.start_service()
    scene.set_up_files()
    end = UNOWNED.get(request_.name, ABSENT)
    scene.ask(end).wait()
    absent = check('absent', end)

    faults.start_anew()
    scene.set_up()
    scene.ask(request_.usual).wait()
    returned = check('returns', request_.usual)
    following = scene.repeat()
    for row in (died, absent, returned):
        row.append(following)
