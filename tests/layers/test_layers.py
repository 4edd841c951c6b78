# SPDX-FileCopyrightText: velmora-installationhandler contributors
# SPDX-License-Identifier: BSD-3-Clause
"""The layers of the product: service -> install, removal -> common -> platform, and ctl -> common. No include runs up or
sideways.

Each test compiles one include with the command that the build uses for a source file of the folder.
"""

import json
import os
import re
import shlex
import subprocess
from pathlib import Path

import pytest

ROOT = Path(__file__).resolve().parents[2]
BUILD = Path(os.environ['VELMORA_BUILD'])

# The folders that each folder may include headers of, besides its own.
BELOW = {
    'platform': set(),
    'common': set(),
    'install': {'common'},
    'removal': {'common'},
    'service': {'common', 'install', 'removal'},
    'ctl': {'common'},
}


def headers(folder):
    return sorted(path.name for path in (ROOT / folder).rglob('*.h'))


def command(folder):
    """The compiler and its options for the source files of a folder."""
    entries = json.loads((BUILD / 'compile_commands.json').read_text(encoding='utf-8'))
    entry = next(entry for entry in entries if ROOT / folder in Path(entry['file']).parents)
    words = shlex.split(entry['command'])
    # The output and the source follow the options. A precompiled header could hide a missing path.
    options = words[:words.index('-o')]
    while '-include' in options:
        position = options.index('-include')
        del options[position:position + 2]
    return options


def compile_include(folder, header):
    return subprocess.run([*command(folder), '-fsyntax-only', '-x', 'c++', '-'], input=f'#include "{header}"\n',
                          capture_output=True, text=True, cwd=BUILD, timeout=120)


def is_missing(header, errors):
    return bool(re.search(rf"fatal error: ('{header}' file not found|{header}: No such file)", errors))


def directions(allowed):
    folders = [folder for folder in BELOW if (ROOT / folder).is_dir()]
    return [(folder, other) for folder in folders for other in folders
            if other != folder and other != 'platform' and (other in BELOW[folder]) == allowed]


@pytest.mark.parametrize('folder, other', directions(allowed=False))
def test_no_include_runs_up(folder, other):
    for header in headers(other):
        result = compile_include(folder, header)
        assert is_missing(header, result.stderr), f'{folder}/ can include {header} of {other}/'


@pytest.mark.parametrize('folder, other', directions(allowed=True))
def test_lower_layers_can_be_included(folder, other):
    header = headers(other)[0]
    result = compile_include(folder, header)
    assert result.returncode == 0, result.stderr


def test_includes_name_no_folders():
    """A path in an include would find a header past the include paths."""
    product = [path for folder in BELOW for path in (ROOT / folder).rglob('*') if path.suffix in ('.cpp', '.h')]
    assert product
    assert not [f'{path}: {line}' for path in product
                for line in re.findall(r'#include ".*/.*"', path.read_text(encoding='utf-8'))]
