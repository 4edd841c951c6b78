# SPDX-FileCopyrightText: velmora-installationhandler contributors
# SPDX-License-Identifier: BSD-3-Clause
"""Excerpts of the records of stand-ins and of the log of the service."""

import re

# Each installation in sdk mode begins with the removal of the installed version.
REMOVAL_OF_NOTHING = re.compile(
    r'debug default: (Uninstall|UninstallTransactionPkgKit::start:|Uninstalled|deleting UninstallTransactionPkgKit)( |$)')


def besides_removals(lines):
    """The lines of a log without those about removals of what is not installed."""
    return [line for line in lines if not REMOVAL_OF_NOTHING.match(line)]


def calls_in_order(*standins):
    """The method and arguments of every call, in the order in which the calls arrived. Two calls have a certain order
    only where the caller has waited for the answer of the first."""
    calls = sorted((call for standin in standins for call in standin.calls()), key=lambda call: call.stamp)
    return [(call.method, call.arguments) for call in calls]
