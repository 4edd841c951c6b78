# SPDX-FileCopyrightText: velmora-installationhandler contributors
# SPDX-License-Identifier: BSD-3-Clause
"""Runs of rpm."""

from collections import deque

from gi.repository import Gio

_runs = deque()


def run_rpm(arguments, ended):
    """Runs rpm without blocking; `ended` is called with its success and its whole output.

    Only one rpm runs at a time, in the order of the calls, because rpm reads what is installed before it waits for
    another rpm to end.
    """
    _runs.append((arguments, ended))
    if len(_runs) == 1:
        _start_first()


def _start_first():
    arguments, ended = _runs[0]

    def finished(process, result):
        _, output, _ = process.communicate_utf8_finish(result)
        _runs.popleft()
        if _runs:
            _start_first()
        ended(process.get_successful(), output)

    launcher = Gio.SubprocessLauncher.new(Gio.SubprocessFlags.STDOUT_PIPE | Gio.SubprocessFlags.STDERR_MERGE)
    launcher.setenv('LC_ALL', 'C', True)
    launcher.spawnv(['rpm', *arguments]).communicate_utf8_async(None, None, finished)
