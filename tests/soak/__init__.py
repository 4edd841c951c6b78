# SPDX-FileCopyrightText: velmora-installationhandler contributors
# SPDX-License-Identifier: BSD-3-Clause
"""Thousands of requests of several clients at once, while their peers die, hang and come back."""
