# SPDX-FileCopyrightText: velmora-installationhandler contributors
# SPDX-License-Identifier: BSD-3-Clause
"""The soak runs on a device in a sandbox."""

pytest_plugins = ['support.fixtures']
