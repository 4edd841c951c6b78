# SPDX-FileCopyrightText: velmora-installationhandler contributors
# SPDX-License-Identifier: BSD-3-Clause
"""Stand-in of the runtime manager: offers the hook for removals that the package manager does not make."""

import dbus

BUS_NAME = 'ru.quon.RuntimeManager'
MAIN_OBJ = '/ru/quon/ZARN/Hooks'
MAIN_IFACE = 'ru.quon.ZARN.Hooks'

PARAMETERS = {}


def load(_mock, _parameters):
    pass


@dbus.service.method(MAIN_IFACE, in_signature='s', out_signature='')
def OnRemove(_self, _application):
    pass
