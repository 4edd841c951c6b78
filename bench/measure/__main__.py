# SPDX-FileCopyrightText: velmora-installationhandler contributors
# SPDX-License-Identifier: BSD-3-Clause
"""Takes some figures, or all, prints them as one table, and writes them to a file if one is wanted."""

import argparse
import json
import os
import sys
from dataclasses import asdict
from itertools import chain
from pathlib import Path

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


def main():
    parser = argparse.ArgumentParser(description=__doc__)
    parser.add_argument('names', nargs='*')
    parser.add_argument('--json', type=Path)
    options = parser.parse_args()
    os.environ['QT_QPA_PLATFORM'] = 'offscreen'
    summaries = {}
    for name, figures in GROUPS.items():
        if not options.names or name in options.names:
            print(f'measuring: {name}', file=sys.stderr, flush=True)
            summaries[name] = [figure.summary() for figure in figures()]
    print(table(chain.from_iterable(summaries.values())))
    if options.json:
        written = {name: list(map(asdict, group)) for name, group in summaries.items()}
        options.json.write_text(json.dumps(written, indent=1), encoding='utf-8')


main()
