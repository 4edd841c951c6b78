# SPDX-FileCopyrightText: velmora-installationhandler contributors
# SPDX-License-Identifier: BSD-3-Clause
"""C and C++ are formatted as .clang-format says, Python as pyproject.toml says."""

import subprocess

from test_sources import ROOT, files
from test_style import python_files


def check(*command):
    result = subprocess.run(command, stdout=subprocess.PIPE, stderr=subprocess.STDOUT, text=True, cwd=ROOT)
    assert result.returncode == 0, result.stdout


def test_c_and_cpp():
    check('clang-format-19', '--dry-run', '-Werror', *files('*.c'), *files('*.cpp'), *files('*.h'))


def test_python():
    check('autopep8', '--diff', '--exit-code', *python_files())
