# SPDX-FileCopyrightText: velmora-installationhandler contributors
# SPDX-License-Identifier: BSD-3-Clause
"""Stand-in of the home screen's launcher model: receives the beginning and the end of each change to a launcher."""

import dbus

BUS_NAME = 'org.orrinmobile.rozzle'
MAIN_OBJ = '/LauncherModel'
MAIN_IFACE = 'org.orrinmobile.rozzle.LauncherModel'

PARAMETERS = {}


def load(_mock, _parameters):
    pass


@dbus.service.method(MAIN_IFACE, in_signature='ssss', out_signature='')
def updatingStarted(_self, _package, _second, _third, _desktop_file):
    pass


@dbus.service.method(MAIN_IFACE, in_signature='s', out_signature='')
def updatingFinished(_self, _package):
    pass
