# SPDX-FileCopyrightText: velmora-installationhandler contributors
# SPDX-License-Identifier: BSD-3-Clause
"""A removal that has found its package while the service was blocked hears that PackageKit has left, if it left meanwhile. It
removes the package twice then."""

from model.steps import Answer, Choose, Die, Hold, Install, Report

STEPS = [
    Install(('/run/model/beta-2.0-1.noarch.rpm', '/run/model/beta-2.0-1.noarch.rpm'), True),
    Answer(),
    Hold('IsSilentInstallationEnabled'),
    Choose(False),
    Report('native'),
    Report('succeeds'),
    Die('PackageKit'),
]
