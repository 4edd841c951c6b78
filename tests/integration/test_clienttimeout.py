# SPDX-FileCopyrightText: velmora-installationhandler contributors
# SPDX-License-Identifier: BSD-3-Clause
"""The program as a client of a service that never answers."""

import time

from support.otherservice import OtherService


def test_client_gives_up_after_the_bus_librarys_time(session_bus, run_client):
    other = OtherService(session_bus.connection, lambda _invocation: None)
    before = time.monotonic()

    # The toolkit's own thread may still hold the call that it gave up when the program ends; that is no leak of ours.
    outcome = run_client('install', '/tmp/a.rpm', seconds=40, ASAN_OPTIONS='detect_leaks=0')

    assert outcome == (1, ['warning default: int main(int, char**) failed to request file installation:'])
    assert 24.5 < time.monotonic() - before < 30
    assert len(other.calls) == 1
