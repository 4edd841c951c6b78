# SPDX-FileCopyrightText: velmora-installationhandler contributors
# SPDX-License-Identifier: BSD-3-Clause
"""A service that was asked for far more removals than the bus lets it have in flight."""

from gi.repository import GLib
from support.idle import IdleTime

# What the bus allows a program.
PENDING = 128
NAMES = [f'name{number}' for number in range(1000)]


def test_service_ends_30_seconds_after_the_last(standins, service, session_bus, client, signals):
    """What the bus refuses is uncounted twice, and yet no more and no less than nothing is left in the end."""
    manager, _ = standins.start('package-manager', 'package-kit')
    manager.configure('installs', 'nothing')
    manager.answer('GetPackage', GLib.Variant('(a{ss})', ({},)), times=PENDING)
    manager.hang('Remove', PENDING)
    client.start('removePackages', '(as)', NAMES).wait(60)
    refused = 2 * (len(NAMES) - PENDING)
    signals.wait('removalFinished', refused, seconds=60)

    with IdleTime() as idle:
        manager.release('Remove')
        signals.wait('removalFinished', refused + PENDING)

    assert idle.wait_exit(service, session_bus) == 0
    assert len(signals.all) == refused + PENDING
