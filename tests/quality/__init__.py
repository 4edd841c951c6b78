# SPDX-FileCopyrightText: velmora-installationhandler contributors
# SPDX-License-Identifier: BSD-3-Clause
"""The page of figures: measures them, keeps the results, and writes the page with its charts."""
