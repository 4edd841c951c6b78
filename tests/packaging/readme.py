# SPDX-FileCopyrightText: velmora-installationhandler contributors
# SPDX-License-Identifier: BSD-3-Clause
"""The commands in the README."""

import re


def commands(source, title):
    """The indented blocks of a section, each as it would be pasted into a shell."""
    readme = (source / 'README.md').read_text(encoding='utf-8')
    section = re.search(rf'^## {title}\n(.*?)(?=^## |\Z)', readme, re.MULTILINE | re.DOTALL)[1]
    blocks = re.findall(r'(?:^ {4}.*\n)+', section, re.MULTILINE)
    return [re.sub(r'^ {4}', '', block, flags=re.MULTILINE) for block in blocks]
