# SPDX-FileCopyrightText: velmora-installationhandler contributors
# SPDX-License-Identifier: BSD-3-Clause
"""What the service's log tells of a round."""

import re
from collections import Counter

STARTED = re.compile(r'debug default: Uninstall "(.*)" via (?:ZARN|RPM)')
ENDED = re.compile(r'debug default: (?:Uninstalled "(.*)"|Failed to uninstall "(.*?)" ".*")')
TRANSACTION_STARTED = 'debug default: UninstallTransactionPkgKit::start: '
TRANSACTION_DELETED = 'debug default: deleting UninstallTransactionPkgKit'
OUT_OF_SYNC = 'warning default: Transaction count out of sync!'
NOT_REMOVED = re.compile(r'warning default: .* failed to remove android app: "(.*)"')

# All other warnings, and all lines of others than the service, are failures.
USUAL = (
    'debug ', TRANSACTION_DELETED, 'warning default: "Unable install package without confirm: ',
    'warning default: Could not fetch developer mode state: ', OUT_OF_SYNC,
    'warning default: Error on resolving desktop file owner ',
    "warning default: Failed to call ZARN hook 'OnRemove' for Runtime Manager service: ",
    'warning default: InstallationHandler::removePackageByDesktopFile(const QString&)::',
)


class RoundLog:
    """The removals of a round, by the names of the packages."""

    def __init__(self, process):
        self._process = process
        self._read = 0
        self.started = Counter()
        self.ended = Counter()
        self.transactions = 0
        self.out_of_sync = 0
        self.not_removed = set()
        self.unusual = []

    def read(self):
        """Takes in what has been said since the last time."""
        text = self._process.text[self._read:]
        self._read += len(text)
        for line in text.splitlines():
            self._take(line)

    def problems(self, packagekit_fails):
        """How the count of operations is wrong after a round, when it should be zero.

        Each end of a removal lowers it. One that comes too often finds it at zero at last, which is logged: Known behaviour 25,
        26. A search for an owner may end too often too."""
        surplus = self.ended.total() - self.started.total()
        if self.out_of_sync < surplus:
            return [f'{surplus} ends too many, of which {self.out_of_sync} found no operation: the count is too high']
        if self.out_of_sync and not packagekit_fails:
            return [f'{self.out_of_sync} ends found no operation']
        return []

    def close(self):
        """Forgets the text, of which a soak brings a lot."""
        self._process.text = ''

    def _take(self, line):
        if started := STARTED.fullmatch(line):
            self.started[started[1]] += 1
        elif ended := ENDED.fullmatch(line):
            self.ended[ended[1] if ended[1] is not None else ended[2]] += 1
        elif line.startswith(TRANSACTION_STARTED):
            self.transactions += 1
        elif line == TRANSACTION_DELETED:
            self.transactions -= 1
        elif line == OUT_OF_SYNC:
            self.out_of_sync += 1
        elif not_removed := NOT_REMOVED.fullmatch(line):
            self.not_removed.add(not_removed[1])
        if not line.startswith(USUAL):
            self.unusual.append(line)
