# SPDX-FileCopyrightText: velmora-installationhandler contributors
# SPDX-License-Identifier: BSD-3-Clause
"""PackageKit leaves twice while the service is blocked. A removal hears of it once."""

from model.steps import Answer, Choose, Die, Hold, Install, Return, Wait

STEPS = [
    Install(('/run/model/beta-2.0-1.noarch.rpm', '/run/model/beta-2.0-1.noarch.rpm'), True),
    Answer(),
    Hold('IsSilentInstallationEnabled'),
    Choose(False),
    Die('PackageKit'),
    Return('PackageKit'),
    Die('PackageKit'),
    Wait(),
]
