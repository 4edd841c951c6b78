# SPDX-FileCopyrightText: velmora-installationhandler contributors
# SPDX-License-Identifier: BSD-3-Clause
"""Pauses of a busy machine, which give the dialog the time to get ready."""

import time

# Less than it takes, in seconds, until "Install" takes a pointer (Known behaviour 70).
SOON = 0.65


class Paused(Exception):
    """The machine has paused, so that a click came too late."""


def check_no_pause(since):
    """Raises Paused if the dialog may have got ready since a time of the monotonic clock."""
    if time.monotonic() >= since + SOON:
        raise Paused
