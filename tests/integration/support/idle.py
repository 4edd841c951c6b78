# SPDX-FileCopyrightText: velmora-installationhandler contributors
# SPDX-License-Identifier: BSD-3-Clause
"""The 30 idle seconds after which the service ends, in real time."""

import time

from harness.client import NAME

# The toolkit's timers may be off by a twentieth.
SHORTEST_S, LONGEST_S = 28, 32


def pass_time(processes, seconds):
    """Lets time pass, in which no process may end."""
    processes.happens(lambda: False, seconds)


class IdleTime:
    """The service becomes idle in the course of a `with` block, and ends 30 seconds later."""

    def __enter__(self):
        self._earliest = time.monotonic()
        return self

    def __exit__(self, *_):
        self._latest = time.monotonic()

    def wait_exit(self, service, session_bus):
        """Waits until the service has left the bus, which has to be in time, and returns its exit status."""
        service.process.end_awaited = True
        session_bus.wait_owner(NAME, owned=False, seconds=40)
        self._check()
        return service.wait_exit()

    def wait_exit_without_bus(self, service):
        """The same where there is no bus to leave."""
        status = service.wait_exit(40)
        self._check()
        return status

    def _check(self):
        now = time.monotonic()
        assert now - self._earliest >= SHORTEST_S, f'ended after {now - self._earliest} s'
        assert now - self._latest <= LONGEST_S, f'ended after {now - self._latest} s'
