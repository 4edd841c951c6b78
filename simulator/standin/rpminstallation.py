# SPDX-FileCopyrightText: velmora-installationhandler contributors
# SPDX-License-Identifier: BSD-3-Clause
"""One run of rpm."""

import tempfile
from pathlib import Path

from gi.repository import Gio

from .rpmrefusal import RpmRefusal


class RpmInstallation:
    """Installs or upgrades one package file without blocking; rpm itself waits for other runs."""

    def __init__(self, path, ended):
        """`ended` is called with None, or with the RpmRefusal."""
        self._path = path
        self._ended = ended
        self._folder = tempfile.TemporaryDirectory()
        self._alias = Path(self._folder.name) / 'package.rpm'

    def start(self):
        """Starts rpm, which gets the file under a name that is no pattern, URL or option."""
        try:
            self._alias.symlink_to(self._path)
        except OSError as error:
            self._end(f'error: open of {self._alias} failed: {error.strerror}')
            return
        launcher = Gio.SubprocessLauncher.new(Gio.SubprocessFlags.STDOUT_PIPE | Gio.SubprocessFlags.STDERR_MERGE)
        launcher.setenv('LC_ALL', 'C', True)
        process = launcher.spawnv(['rpm', '-U', '--nomanifest', str(self._alias)])
        process.communicate_utf8_async(None, None, self._finished)

    def _finished(self, process, result):
        _, output, _ = process.communicate_utf8_finish(result)
        self._end(None if process.get_successful() else output)

    def _end(self, failure):
        self._folder.cleanup()
        self._ended(None if failure is None else RpmRefusal(failure, str(self._alias), self._path))
