# SPDX-FileCopyrightText: velmora-installationhandler contributors
# SPDX-License-Identifier: BSD-3-Clause
"""One removal with rpm."""

from .rpmrefusal import RpmRefusal
from .rpmrun import run_rpm


def remove_package(name, ended):
    """Removes an installed package without blocking; `ended` is called with None, or with the RpmRefusal."""
    def finished(success, output):
        ended(None if success else RpmRefusal(output, name, name))

    run_rpm(['-e', '--', name], finished)
