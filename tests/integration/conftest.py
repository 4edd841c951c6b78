# SPDX-FileCopyrightText: velmora-installationhandler contributors
# SPDX-License-Identifier: BSD-3-Clause
"""Black-box tests of the installed service on a device in a sandbox."""

import sys
from pathlib import Path

TESTS = Path(__file__).resolve().parent.parent
sys.path[:0] = [str(TESTS), str(TESTS / 'integration'), str(TESTS.parent / 'simulator')]

pytest_plugins = ['support.fixtures', 'support.faultfixtures']
