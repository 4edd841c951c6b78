# SPDX-FileCopyrightText: velmora-installationhandler contributors
# SPDX-License-Identifier: BSD-3-Clause
"""The part of the service's behaviour that can be seen from outside."""

from typing import NamedTuple


class Seen(NamedTuple):
    """All that can be seen of one step.

    A message is ("signal", name, arguments...), ("call", method, arguments...), ("reply", number of the request) or
    ("error", number of the request, error name).
    """

    session_bus: list  # the messages of the service, in their order
    system_bus: list
    log: list
    screen: list  # the dialogs, each as its number and what it shows
    exit_status: int  # None while the service runs
