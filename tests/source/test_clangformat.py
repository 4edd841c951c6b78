# SPDX-FileCopyrightText: velmora-installationhandler contributors
# SPDX-License-Identifier: BSD-3-Clause
"""C++ is formatted as .clang-format says."""

import subprocess

from test_sources import files


def test_cpp_is_formatted():
    sources = [path for pattern in ('*.cpp', '*.h') for path in files(pattern)]
    result = subprocess.run(['clang-format-19', '--dry-run', '-Werror', *sources], capture_output=True, text=True)
    assert result.returncode == 0, result.stderr
