# SPDX-FileCopyrightText: velmora-installationhandler contributors
# SPDX-License-Identifier: BSD-3-Clause
"""These tests run on the machine itself, and leave nothing behind there."""

import tempfile
from pathlib import Path

import pytest


@pytest.fixture
def tmp_path():
    """A folder that goes with the test, unlike pytest's own."""
    with tempfile.TemporaryDirectory() as folder:
        yield Path(folder)
