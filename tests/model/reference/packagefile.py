# SPDX-FileCopyrightText: velmora-installationhandler contributors
# SPDX-License-Identifier: BSD-3-Clause
"""The reader of package files."""

from model.device import HEADERS, NO_PACKAGE, Header

from .trace import quoted


class PackageFile:
    """The file that has been read last. Values that it does not have stay those of the file before it."""

    def __init__(self, trace):
        self._trace = trace
        self.path = ''
        self.header = Header()

    def read(self, path):
        self.path = path
        if path in HEADERS:
            self.header = HEADERS[path]
            self._trace.debug(f'RPM Package info: {quoted(*self.header)}')
        elif path == NO_PACKAGE:
            self._trace.debug('could not read rpm:')
