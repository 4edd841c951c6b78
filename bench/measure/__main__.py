# SPDX-FileCopyrightText: velmora-installationhandler contributors
# SPDX-License-Identifier: BSD-3-Clause
"""measure [NAME]...: takes these figures, or all, and prints them as one table."""

import os
import sys

from . import companion, dialog, idle, installation, lookup, reads, removal, startup, wayland
from .figure import table

GROUPS = {
    'startup': startup.figures,
    'idle': idle.figures,
    'installation': installation.figures,
    'removal': removal.figures,
    'read': reads.figures,
    'lookup': lookup.figures,
    'dialog': dialog.figures,
    'wayland': wayland.figures,
    'companion': companion.figures,
}


def main(names):
    os.environ['QT_QPA_PLATFORM'] = 'offscreen'
    rows = []
    for name, figures in GROUPS.items():
        if not names or name in names:
            print(f'measuring: {name}', file=sys.stderr, flush=True)
            rows += figures()
    print(table(rows))


main(sys.argv[1:])
