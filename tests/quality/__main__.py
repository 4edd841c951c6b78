# SPDX-FileCopyrightText: velmora-installationhandler contributors
# SPDX-License-Identifier: BSD-3-Clause
"""Measures the figures of docs/quality.md, keeps them in docs/quality.json, and writes the page and its charts.

Without the name of a part it measures all of them, which takes hours. Each part replaces its result when it is through;
a part that fails leaves the former one.
"""

import argparse
import datetime
import subprocess
import sys

from . import chartfiles, machine
from .charts import charts
from .command import BUILD, PROJECT, Unmeasured
from .page import page
from .parts import PARTS
from .results import Results

DOCS = PROJECT / 'docs'
OWN_FILES = [':!docs/quality*']


def prepare():
    """Installs what is missing, as the tests do."""
    BUILD.mkdir(exist_ok=True)
    subprocess.run(['bash', '-euc', """
        . scripts/progress
        . scripts/install-packages
        [[ -z "$(missing_packages report)" ]] || need_root "for Debian packages"
        install_packages build/report.log report
    """], cwd=PROJECT, check=True)


def git(*words):
    return subprocess.run(['git', *words], cwd=PROJECT, check=True, capture_output=True, text=True).stdout.strip()


def measure(results, names, trial):
    """Measures the parts one after the other, and returns the names of those that have failed."""
    failed = []
    for name in names:
        print(f'\nMeasuring: {name}', flush=True)
        date, commit = datetime.date.today().isoformat(), git('rev-parse', '--short=12', 'HEAD')
        try:
            figures = PARTS[name].measure(trial)
        except Unmeasured as problem:
            print(f'{name}: {problem}', flush=True)
            failed.append(name)
            continue
        results.keep(name, date, commit, machine.description(), figures)
    return failed


def write(folder, results):
    """Writes the page and its charts."""
    (folder / 'quality.md').write_text(page(results.parts), encoding='utf-8')
    chartfiles.write(folder / 'quality', charts(results.parts['bench']['figures']) if 'bench' in results.parts else [])


def main():
    parser = argparse.ArgumentParser(prog='tests/report', description=__doc__,
                                     formatter_class=argparse.RawDescriptionHelpFormatter)
    parser.add_argument('parts', nargs='*', metavar='PART', help=f'{", ".join(PARTS)}')
    parser.add_argument('--trial', action='store_true',
                        help='try the command: small amounts, and the page is written to build/quality/')
    parser.add_argument('--page', action='store_true', help='measure nothing, and write the page of the kept figures')
    options = parser.parse_args()
    if unknown := set(options.parts) - set(PARTS):
        parser.error(f'unknown: {", ".join(sorted(unknown))}; known: {", ".join(PARTS)}')
    if not (options.trial or options.page) and git('status', '--porcelain', '--', '.', *OWN_FILES):
        sys.exit('Please commit first: a figure belongs to a commit.')
    prepare()
    folder = BUILD / 'quality' if options.trial else DOCS
    folder.mkdir(exist_ok=True)
    results = Results(folder / 'quality.json')
    failed = [] if options.page else measure(results, options.parts or PARTS, options.trial)
    write(folder, results)
    print(f'\nThe page is {folder / "quality.md"}.')
    return f'Not measured: {", ".join(failed)}' if failed else 0


try:
    sys.exit(main())
except subprocess.CalledProcessError as error:
    sys.exit(f'tests/report: {error}')
