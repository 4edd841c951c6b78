# SPDX-FileCopyrightText: velmora-installationhandler contributors
# SPDX-License-Identifier: BSD-3-Clause
"""Peers that are absent, return, die, hang or answer nonsense in removals through PackageKit by launcher."""

import pytest
from support.removalfaults import CRASH
from support.removalrequests import NATIVE_LAUNCHER, SEARCHED_IN_VAIN, End

UNKNOWN_OWNER = End(log='Error on resolving desktop file owner')

ENDS = {
    ('any', 'absent'): UNKNOWN_OWNER,
    ('CreateTransaction', 'dies'): UNKNOWN_OWNER,
    ('CreateTransaction', 'wrong type'): UNKNOWN_OWNER,
    ('SearchFiles', 'dies'): UNKNOWN_OWNER,
    # It has searched too late for what was planned, and knows nothing.
    ('SearchFiles', 'hangs'): SEARCHED_IN_VAIN,
    ('Resolve', 'dies'): CRASH,
    ('RemovePackages', 'dies'): CRASH,
    # Neither an error nor an end ever comes.
    ('SearchFiles', 'wrong type'): SEARCHED_IN_VAIN,
    ('Resolve', 'wrong type'): End(call='Resolve'),
    ('RemovePackages', 'wrong type'): End(call='RemovePackages'),
}


@pytest.mark.parametrize('peer', NATIVE_LAUNCHER.peers())
def test_by_launcher(try_faults, peer):
    try_faults(NATIVE_LAUNCHER, peer, ENDS if peer == 'package-kit' else {})
