# SPDX-FileCopyrightText: velmora-installationhandler contributors
# SPDX-License-Identifier: BSD-3-Clause
"""The removal of the installed version that comes before every installation in sdk mode."""

import re

REMOVAL_OF_NOTHING = re.compile(
    r'debug default: (Uninstall|UninstallTransactionPkgKit::start:|Uninstalled|deleting UninstallTransactionPkgKit)( |$)')


def besides_removals(lines):
    """The lines of a log without those about removals of what is not installed."""
    return [line for line in lines if not REMOVAL_OF_NOTHING.match(line)]
