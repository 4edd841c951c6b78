# SPDX-FileCopyrightText: velmora-installationhandler contributors
# SPDX-License-Identifier: BSD-3-Clause
"""One installation with rpm."""

import tempfile
from pathlib import Path

from .rpmrefusal import RpmRefusal
from .rpmrun import run_rpm


class RpmInstallation:
    """Installs or upgrades one package file without blocking."""

    def __init__(self, path, ended):
        """`ended` is called with the package's (name, version) and None, or with None and the RpmRefusal."""
        self._path = path
        self._ended = ended
        self._folder = tempfile.TemporaryDirectory()
        self._alias = Path(self._folder.name) / 'package.rpm'

    def start(self):
        """Starts rpm. It gets the file under a name that it cannot take for a pattern, URL or option."""
        try:
            self._alias.symlink_to(self._path)
        except OSError as error:
            self._fail(f'error: open of {self._alias} failed: {error.strerror}')
            return
        run_rpm(['-U', '--nomanifest', str(self._alias)], self._installed)

    def _installed(self, success, output):
        if success:
            query = ['-q', '--nosignature', '--queryformat', '%{NAME}\\n%{VERSION}', '-p', str(self._alias)]
            run_rpm(query, self._identified)
        else:
            self._fail(output)

    def _identified(self, success, output):
        if success:
            self._folder.cleanup()
            self._ended(tuple(output.split('\n')[-2:]), None)
        else:
            self._fail(output)

    def _fail(self, output):
        self._folder.cleanup()
        self._ended(None, RpmRefusal(output, str(self._alias), self._path))
