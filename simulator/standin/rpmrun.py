# SPDX-FileCopyrightText: velmora-installationhandler contributors
# SPDX-License-Identifier: BSD-3-Clause
"""One run of rpm."""

from gi.repository import Gio


def run_rpm(arguments, ended):
    """Runs rpm without blocking; `ended` is called with whether it succeeded, and with all that it said."""
    def finished(process, result):
        _, output, _ = process.communicate_utf8_finish(result)
        ended(process.get_successful(), output)

    launcher = Gio.SubprocessLauncher.new(Gio.SubprocessFlags.STDOUT_PIPE | Gio.SubprocessFlags.STDERR_MERGE)
    launcher.setenv('LC_ALL', 'C', True)
    launcher.spawnv(['rpm', *arguments]).communicate_utf8_async(None, None, finished)
