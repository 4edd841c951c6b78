# SPDX-FileCopyrightText: velmora-installationhandler contributors
# SPDX-License-Identifier: BSD-3-Clause
"""Tests of the stand-ins themselves, with the fixtures of the integration tests."""

import sys
from pathlib import Path

TESTS = Path(__file__).resolve().parent.parent
sys.path[:0] = [str(TESTS), str(TESTS / 'integration'), str(TESTS.parent / 'simulator')]

pytest_plugins = ['support.fixtures']
