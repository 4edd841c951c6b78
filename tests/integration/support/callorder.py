# SPDX-FileCopyrightText: velmora-installationhandler contributors
# SPDX-License-Identifier: BSD-3-Clause
"""The calls that several stand-ins have seen, in one order."""


def calls_in_order(*standins):
    """The method and arguments of every call, in the order in which the calls arrived. Two calls have a certain order
    only where the caller has waited for the answer of the first."""
    calls = sorted((call for standin in standins for call in standin.calls()), key=lambda call: call.stamp)
    return [(call.method, call.arguments) for call in calls]
