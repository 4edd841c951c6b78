# SPDX-FileCopyrightText: velmora-installationhandler contributors
# SPDX-License-Identifier: BSD-3-Clause
"""How long the bus library waits for a reply, in seconds."""

TIMEOUT = 25
