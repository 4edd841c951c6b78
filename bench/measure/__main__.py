# SPDX-FileCopyrightText: velmora-installationhandler contributors
# SPDX-License-Identifier: BSD-3-Clause
"""measure [NAME]...: takes these figures, or all, and prints them as one table."""

import os
import sys

from . import dialog, idle, installation, lookup, neighbours, reads, removal, startup
from .figure import table

GROUPS = {
    'startup': startup.figures,
    'idle': idle.figures,
    'installation': installation.figures,
    'removal': removal.figures,
    'read': reads.figures,
    'lookup': lookup.figures,
    'dialog': dialog.figures,
    'neighbours': neighbours.figures,
}


def main(names):
    os.environ['QT_QPA_PLATFORM'] = 'offscreen'
    rows = []
    for name in names or GROUPS:
        for row in GROUPS[name]():
            rows.append(row)
            print(f'measured: {row.name}', file=sys.stderr, flush=True)
    print(table(rows))


main(sys.argv[1:])
