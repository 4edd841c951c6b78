# SPDX-FileCopyrightText: velmora-installationhandler contributors
# SPDX-License-Identifier: BSD-3-Clause
"""Stand-in of the notification service: numbers the notifications and shows nothing."""

import dbus

BUS_NAME = 'org.freedesktop.Notifications'
MAIN_OBJ = '/org/freedesktop/Notifications'
MAIN_IFACE = 'org.freedesktop.Notifications'

PARAMETERS = {}


def load(mock, _parameters):
    mock.last_id = 0


@dbus.service.method(MAIN_IFACE, in_signature='susssasa{sv}i', out_signature='u')
def Notify(self, _app_name, replaces_id, _app_icon, _summary, _body, _actions, _hints, _expire_timeout):
    if replaces_id:
        return replaces_id
    self.last_id += 1
    return self.last_id


@dbus.service.method(MAIN_IFACE, in_signature='u', out_signature='')
def CloseNotification(self, _id):
    pass
