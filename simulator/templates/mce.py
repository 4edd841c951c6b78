# SPDX-FileCopyrightText: velmora-installationhandler contributors
# SPDX-License-Identifier: BSD-3-Clause
"""Stand-in of MCE: has the display's state, and receives the notifications that keep it on."""

import dbus

BUS_NAME = 'com.nokia.mce'
MAIN_OBJ = '/com/nokia/mce/request'
MAIN_IFACE = 'com.nokia.mce.request'
SIGNAL_OBJ = '/com/nokia/mce/signal'
SIGNAL_IFACE = 'com.nokia.mce.signal'

PARAMETERS = {'display': ('on', 'dimmed', 'off')}


def load(mock, parameters):
    mock.parameters = parameters


def parameter_changed(mock, _name, value):
    mock.EmitSignalDetailed(SIGNAL_IFACE, 'display_status_ind', 's', [value], {'path': SIGNAL_OBJ})


@dbus.service.method(MAIN_IFACE, in_signature='', out_signature='s')
def get_display_status(self):
    return self.parameters['display']


@dbus.service.method(MAIN_IFACE, in_signature='sii', out_signature='')
def notification_begin_req(_self, _name, _duration, _renew_limit):
    pass


@dbus.service.method(MAIN_IFACE, in_signature='si', out_signature='')
def notification_end_req(_self, _name, _linger):
    pass
