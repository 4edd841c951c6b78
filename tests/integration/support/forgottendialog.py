# SPDX-FileCopyrightText: velmora-installationhandler contributors
# SPDX-License-Identifier: BSD-3-Clause
"""A dialog that stays on screen when its request ends."""


def prepare_forgotten_dialog(standins, client, dialog):
    """Two answers at once: the first file gets installed while the second one is asked about already.

    Returns the package manager; once it releases "Install", the request ends below its second dialog.
    """
    package_manager = standins.start('package-manager', installs='nothing')
    package_manager.hang('Install')
    dialog.use('Controlled')
    client.install(['/first.rpm', '/second.rpm'])
    dialog.wait_shown(1)
    dialog.answer('requestInstall', 'dismissed', number=1)
    dialog.wait_shown(2)
    package_manager.wait_call('Install')
    return package_manager
