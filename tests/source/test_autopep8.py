# SPDX-FileCopyrightText: velmora-installationhandler contributors
# SPDX-License-Identifier: BSD-3-Clause
"""Python is formatted as pyproject.toml says."""

import subprocess

from test_sources import ROOT
from test_style import python_files


def test_python_is_formatted():
    result = subprocess.run(['autopep8', '--diff', '--exit-code', *python_files()], capture_output=True, text=True,
                            cwd=ROOT)
    assert result.returncode == 0, result.stdout
