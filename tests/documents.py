# SPDX-FileCopyrightText: velmora-installationhandler contributors
# SPDX-License-Identifier: BSD-3-Clause
"""The project's documents, and the examples in them."""

import re
import subprocess
from pathlib import Path

SOURCE = Path(__file__).resolve().parents[1]


def section(document, title):
    """The text of a section of a document."""
    text = (SOURCE / document).read_text(encoding='utf-8')
    return re.search(rf'^## {title}\n(.*?)(?=^## |\Z)', text, re.MULTILINE | re.DOTALL)[1]


def examples(document, title):
    """The indented blocks of a section of a document, each in the form that a user pastes into a shell."""
    return [re.sub(r'^ {4}', '', block, flags=re.MULTILINE)
            for block in re.findall(r'(?:^ {4}.*\n)+', section(document, title), re.MULTILINE)]


def read_manual(manual):
    """A manual page as it is read, in lines of any length, without bold and underlined letters."""
    done = subprocess.run(['groff', '-man', '-Tutf8', '-ww', '-P-c', '-rLL=10000n', manual], capture_output=True, text=True,
                          check=True)
    assert done.stderr == ''
    return re.sub('.\b', '', done.stdout)


def section_of_manual(text, title):
    """The text of a section of a manual page."""
    return re.search(rf'^{title}\n(.*?)(?=^\S|\Z)', text, re.MULTILINE | re.DOTALL)[1]


def examples_of_manual(text, title):
    """The blocks of a section of a manual page that are indented further than its text."""
    return [re.sub(r'^ {11}', '', block, flags=re.MULTILINE)
            for block in re.findall(r'(?:^ {11}.*\n)+', section_of_manual(text, title), re.MULTILINE)]
