# SPDX-FileCopyrightText: velmora-installationhandler contributors
# SPDX-License-Identifier: BSD-3-Clause
"""Peers that are absent, return, die, hang or answer nonsense in removals through PackageKit by name."""

import pytest
from support.removalfaults import CRASH, NO_REPLY
from support.removalrequests import DELETED, NATIVE_PACKAGE, REMOVED, End

NO_PACKAGE_KIT = 'The name org.freedesktop.PackageKit was not provided by any .service files'
WRONG = 'Unexpected reply signature: got "a{sv}", expected "o"'


def twice(text):
    """Of a request that never began the library reports both the error and the end."""
    return End(((False, text), *REMOVED), DELETED)


ENDS = {
    ('any', 'absent'): twice(NO_PACKAGE_KIT),
    ('CreateTransaction', 'dies'): twice(NO_REPLY),
    ('CreateTransaction', 'wrong type'): twice(WRONG),
    ('Resolve', 'dies'): CRASH,
    ('RemovePackages', 'dies'): CRASH,
    # Neither an error nor an end ever comes.
    ('Resolve', 'wrong type'): End(call='Resolve'),
    ('RemovePackages', 'wrong type'): End(call='RemovePackages'),
}


@pytest.mark.parametrize('peer', NATIVE_PACKAGE.peers())
def test_by_name(try_faults, peer):
    try_faults(NATIVE_PACKAGE, peer, ENDS if peer == 'package-kit' else {})
