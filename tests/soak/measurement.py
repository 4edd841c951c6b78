# SPDX-FileCopyrightText: velmora-installationhandler contributors
# SPDX-License-Identifier: BSD-3-Clause
"""What a soak leaves behind: memory, descriptors, threads, match rules, processes, and the count of operations."""

import time
from collections import Counter

from harness.client import NAME
from harness.processes import WaitFailed

# The service ends after 30 idle seconds, and the toolkit's timers may be off by a twentieth.
IDLE_TIME = 32


class Measurement:
    """Looks at the service before, in the course of and after a soak. `failures` has what is not as it should be."""

    def __init__(self, device, warm_up, memory_limit):
        """Memory is compared from the moment on when so many requests have ended. The limit is in KiB a request; without
        one memory does not count, as with a sanitizer, which keeps what has been freed for a while."""
        self._device = device
        self._warm_up = warm_up
        self._memory_limit = memory_limit
        self._before = None
        self._memory = None
        self.failures = []

    def begin(self):
        """Each kind of request has been there once: libraries keep what they need for the first one."""
        self._device.service.barrier()
        self._before = self._device.resources()

    def look(self, requests):
        """So many requests have ended."""
        if self._memory is None and requests >= self._warm_up:
            self._device.service.barrier()
            self._memory = requests, self._device.private_memory()

    def end(self, requests):
        """All requests have ended. Returns lines of a report."""
        self._device.service.barrier()
        report = [self._compare_memory(requests)] if self._memory_limit and self._memory else []
        for what, now in self._device.resources().items():
            report.append(self._compare(what, self._before[what], now))
        return report

    def wait_exit(self):
        """The count of operations is zero, so the service ends. Returns a line of the report."""
        begin = time.monotonic()
        self._device.service.process.end_awaited = True
        try:
            self._device.session_bus.wait_owner(NAME, owned=False, seconds=IDLE_TIME)
        except WaitFailed:
            self.failures.append('the service has not ended by itself')
            return self.failures[-1]
        line = f'idle exit: after {time.monotonic() - begin:.0f} seconds'
        # A sanitizer takes its time.
        status = self._device.service.wait_exit()
        if status:
            self.failures.append(f'exit status {status}')
        self.failures += self._device.processes.sanitizer_reports()
        return f'{line}, with status {status}'

    def _compare_memory(self, requests):
        first, memory = self._memory
        gained = self._device.private_memory() - memory
        each = gained / max(1, requests - first)
        line = f'memory: {gained} KiB gained after the first {first} requests, {each:.3f} KiB each'
        if each > self._memory_limit:
            self.failures.append(f'{line}, more than {self._memory_limit}')
        return line

    def _compare(self, what, before, now):
        changes = [f'+{count} {item}' for item, count in (Counter(now) - Counter(before)).items()]
        changes += [f'-{count} {item}' for item, count in (Counter(before) - Counter(now)).items()]
        line = f'{what}: ' + (', '.join(changes) or f'{len(now)}, as at the start')
        if changes:
            self.failures.append(line)
        return line
