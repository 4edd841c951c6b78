# SPDX-FileCopyrightText: velmora-installationhandler contributors
# SPDX-License-Identifier: BSD-3-Clause
"""The page of figures."""

from .machine import sentence
from .markdown import table
from .parts import PARTS
from .results import LICENSE

HEAD = '''# Quality

`tests/report` measures every figure of this page and writes the page. `tests/report PART...` measures some parts anew.
Each part tells when, where and of which commit it has been measured.
'''


def page(parts):
    """The page, of the parts that have been measured."""
    measured = {name: parts[name] for name in PARTS if name in parts}
    lines = ['<!--', *LICENSE, '-->', '', HEAD]
    lines += table(['', 'figure', 'measured'], [overview(PARTS[name], part) for name, part in measured.items()])
    for name, part in measured.items():
        lines += [f'## {PARTS[name].TITLE}', '', *PARTS[name].section(part['figures'])]
        lines += [f'`tests/report {name}`, {part["date"]}, commit {part["commit"]}; {sentence(part["machine"])}', '']
    return '\n'.join(lines).rstrip('\n') + '\n'


def overview(module, part):
    """The row of a part in the table at the head of the page."""
    return [f'[{module.TITLE}](#{anchor(module.TITLE)})', module.headline(part['figures']), part['date']]


def anchor(title):
    """The name that viewers of Markdown give a heading."""
    return title.lower().replace(' ', '-')
