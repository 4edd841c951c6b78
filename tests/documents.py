# SPDX-FileCopyrightText: velmora-installationhandler contributors
# SPDX-License-Identifier: BSD-3-Clause
"""The examples in the project's documents."""

import re
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
