# SPDX-FileCopyrightText: velmora-installationhandler contributors
# SPDX-License-Identifier: BSD-3-Clause
"""Peers that are absent, return, die, hang or answer nonsense in the removals of which nobody is told."""

import pytest
from support.removalrequests import ANDROID_LAUNCHER, OWN_LAUNCHER, SEARCHED_IN_VAIN, End

HOOK_FAILED = End(log="Failed to call ZARN hook 'OnRemove'")
ANDROID_FAILED = End(log='failed to remove android app:')


@pytest.mark.parametrize('peer', OWN_LAUNCHER.peers())
def test_own_launcher(try_faults, peer):
    try_faults(OWN_LAUNCHER, peer, {('any', 'absent'): HOOK_FAILED, ('OnRemove', 'dies'): HOOK_FAILED})


@pytest.mark.parametrize('peer', ANDROID_LAUNCHER.peers())
def test_android_application(try_faults, peer):
    ends = {
        # The search never ends.
        ('SearchFiles', 'wrong type'): SEARCHED_IN_VAIN,
        ('removeFile', 'dies'): ANDROID_FAILED,
        ('removeFile', 'wrong type'): ANDROID_FAILED,
    }
    if peer == 'android-support':
        ends['any', 'absent'] = ANDROID_FAILED
    try_faults(ANDROID_LAUNCHER, peer, ends)
