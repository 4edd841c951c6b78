# SPDX-FileCopyrightText: velmora-installationhandler contributors
# SPDX-License-Identifier: BSD-3-Clause
"""Black-box tests of velmora-installctl on a device in a sandbox, with the fixtures of the tests of the service."""

import pytest
from harness.client import WHOLE_STACKS
from installctl import InstallCtl

pytest_plugins = ['support.fixtures', 'support.sidebyside']


@pytest.fixture
def ctl(processes, environment):
    """The program: `ctl('install', file)` runs it to its end, `ctl.start('install', file)` does not."""
    return InstallCtl(processes, {**environment, **WHOLE_STACKS, 'LANG': 'C.UTF-8'})
