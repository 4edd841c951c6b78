# SPDX-FileCopyrightText: velmora-installationhandler contributors
# SPDX-License-Identifier: BSD-3-Clause
"""Tests of the stand-ins themselves, with the fixtures of the integration tests."""

pytest_plugins = ['support.fixtures']
