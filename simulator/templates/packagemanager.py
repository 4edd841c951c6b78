# SPDX-FileCopyrightText: velmora-installationhandler contributors
# SPDX-License-Identifier: BSD-3-Clause
"""Stand-in of the package manager: installs with rpm, into the system it runs on."""

import dbus

from standin.rpminstallation import RpmInstallation

BUS_NAME = 'ru.quon.ZARN'
MAIN_OBJ = '/ru/quon/ZARN'
MAIN_IFACE = 'ru.quon.ZARN'

# "nothing": every installation succeeds at once, and nothing is installed.
PARAMETERS = {'installs': ('rpm', 'nothing')}


def load(mock, parameters):
    mock.parameters = parameters


@dbus.service.method(MAIN_IFACE, in_signature='sa{sv}', out_signature='', async_callbacks=('answer', 'refuse'))
def Install(self, path, _options, answer, refuse):
    if self.parameters['installs'] == 'nothing':
        answer()
        return

    def ended(refusal):
        if refusal is None:
            answer()
        else:
            refuse(dbus.DBusException(refusal.text, name=f'{MAIN_IFACE}.Error.{refusal.code}'))

    RpmInstallation(path, ended).start()
