# SPDX-FileCopyrightText: velmora-installationhandler contributors
# SPDX-License-Identifier: BSD-3-Clause
"""Peers that are absent, return, die, hang or answer nonsense in removals through the package manager."""

import pytest
from support.removalfaults import CALL_FAULTS, NO_REPLY
from support.removalrequests import DELETED, MANAGED_LAUNCHER, MANAGED_PACKAGE, REMOVED, SDK_MODE, SEARCHED_IN_VAIN, End

# Whom the package manager does not know PackageKit does; of a launcher it does not know the owner.
BY_PACKAGE_KIT = End(REMOVED, DELETED)
FAILED = {('Remove', 'dies'): End(((False, NO_REPLY),))}


def without_manager(end):
    """The end of all that happens because the package manager's answer is missing."""
    return {('any', 'absent'): end, **{('GetPackage', fault): end for fault in CALL_FAULTS}, **FAILED}


@pytest.mark.parametrize('peer', MANAGED_PACKAGE.peers())
def test_by_name(try_faults, peer):
    try_faults(MANAGED_PACKAGE, peer, without_manager(BY_PACKAGE_KIT) if peer == 'package-manager' else {})


@pytest.mark.parametrize('peer', MANAGED_LAUNCHER.peers())
def test_by_launcher(try_faults, peer):
    try_faults(MANAGED_LAUNCHER, peer, without_manager(SEARCHED_IN_VAIN) if peer == 'package-manager' else {})


@pytest.mark.parametrize('peer', SDK_MODE.peers())
def test_before_an_installation(try_faults, peer):
    try_faults(SDK_MODE, peer, without_manager(BY_PACKAGE_KIT) if peer == 'package-manager' else {})
