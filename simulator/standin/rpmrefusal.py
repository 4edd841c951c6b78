# SPDX-FileCopyrightText: velmora-installationhandler contributors
# SPDX-License-Identifier: BSD-3-Clause
"""The reason why rpm refused an installation or a removal."""

import re

# The first pattern that is found in rpm's output decides.
CODES = (
    ('FileNotFound', r'No such file or directory|File name too long'),
    ('NotAPackage', r'read failed: Is a directory'),
    ('MissingDependency', r'Failed dependencies:(?s:.)* is needed by '),
    ('Conflict', r'conflicts with'),
    ('AlreadyInstalled', r'is already installed'),
    ('WrongArchitecture', r'is intended for a different (architecture|operating system)'),
    ('NoSpace', r'needs [0-9.]+[KMGT]?B? (more space|inodes) on the'),
    ('DamagedPackage', r'does not verify|BAD|hdr load|unpacking of archive failed'),
    ('ScriptFailed', r'script(let)? failed'),
    ('NotAPackage', r'cannot be installed'),
)

# The advice that Debian's rpm prints before every installation.
PREFACE = re.compile(r'^rpm: (RPM should not be used|However assuming).*\n', re.MULTILINE)


class RpmRefusal:
    """A code for the kind of refusal, and the text of rpm."""

    def __init__(self, output, alias, path):
        """`alias` is the file's name in rpm's messages, `path` the one to show."""
        text = PREFACE.sub('', output).strip()
        self.code = next((code for code, pattern in CODES if re.search(pattern, text)), 'Failed')
        self.text = text.replace(alias, path)
