# SPDX-FileCopyrightText: velmora-installationhandler contributors
# SPDX-License-Identifier: BSD-3-Clause
"""Stand-in of the Android-support daemon: removes the launcher of an Android application."""

from pathlib import Path

import dbus

BUS_NAME = 'com.zelka.zindro'
MAIN_OBJ = '/com/zelka/zindro'
MAIN_IFACE = 'com.zelka.zindro'

PARAMETERS = {}


def load(_mock, _parameters):
    pass


@dbus.service.method(MAIN_IFACE, in_signature='s', out_signature='b')
def removeFile(_self, desktop_file):
    try:
        Path(desktop_file).unlink()
    except (OSError, ValueError):
        return False
    return True
