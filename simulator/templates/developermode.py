# SPDX-FileCopyrightText: velmora-installationhandler contributors
# SPDX-License-Identifier: BSD-3-Clause
"""Stand-in of the developer-mode service: tells whether an installation needs no confirmation."""

import dbus

BUS_NAME = 'ru.quon.developermode'
MAIN_OBJ = '/'
MAIN_IFACE = 'ru.quon.developermode'

PARAMETERS = {'silent-installation': (False, True)}


def load(mock, parameters):
    mock.parameters = parameters


@dbus.service.method(MAIN_IFACE, in_signature='', out_signature='b')
def IsSilentInstallationEnabled(self):
    return self.parameters['silent-installation']
