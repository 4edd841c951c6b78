# SPDX-FileCopyrightText: velmora-installationhandler contributors
# SPDX-License-Identifier: BSD-3-Clause
"""Black-box tests of the installed service on a device in a sandbox."""

pytest_plugins = ['support.faulttable', 'support.fixtures', 'support.faults', 'support.installationdevice',
                  'support.sidebyside']
