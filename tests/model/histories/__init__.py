# SPDX-FileCopyrightText: velmora-installationhandler contributors
# SPDX-License-Identifier: BSD-3-Clause
"""Histories that are kept: each file has the steps of one, and says what happens."""
