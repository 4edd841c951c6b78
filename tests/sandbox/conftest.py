# SPDX-FileCopyrightText: velmora-installationhandler contributors
# SPDX-License-Identifier: BSD-3-Clause
"""The tests run on the machine itself, and remove all that they write."""

import tempfile
from pathlib import Path

import pytest


@pytest.fixture
def tmp_path():
    """A folder that is removed after the test, unlike pytest's own."""
    with tempfile.TemporaryDirectory() as folder:
        yield Path(folder)
