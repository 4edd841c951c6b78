# SPDX-FileCopyrightText: velmora-installationhandler contributors
# SPDX-License-Identifier: BSD-3-Clause
"""A removal that has ended while the service was blocked hears that PackageKit has left, if it left meanwhile."""

from model.steps import Answer, Choose, Die, Hold, Install, Report, Wait

STEPS = [
    Install(('/run/model/beta-2.0-1.noarch.rpm', '/run/model/beta-2.0-1.noarch.rpm'), True),
    Answer(),
    Hold('IsSilentInstallationEnabled'),
    Choose(False),
    Report('succeeds'),
    Die('PackageKit'),
    Wait(),
]
