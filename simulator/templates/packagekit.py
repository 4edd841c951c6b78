# SPDX-FileCopyrightText: velmora-installationhandler contributors
# SPDX-License-Identifier: BSD-3-Clause
"""Stand-in of PackageKit, for faults that the real one does not produce on demand. It knows no package by itself."""

import os

import dbus

BUS_NAME = 'org.freedesktop.PackageKit'
MAIN_OBJ = '/org/freedesktop/PackageKit'
MAIN_IFACE = 'org.freedesktop.PackageKit'
TRANSACTION_IFACE = 'org.freedesktop.PackageKit.Transaction'
OFFLINE_IFACE = 'org.freedesktop.PackageKit.Offline'

PARAMETERS = {}

EXIT_SUCCESS = 1
PERCENTAGE_UNKNOWN = 101

DAEMON_PROPERTIES = {
    'VersionMajor': dbus.UInt32(1),
    'VersionMinor': dbus.UInt32(2),
    'VersionMicro': dbus.UInt32(6),
    'BackendName': 'standin',
    'BackendDescription': 'Does what a script says',
    'BackendAuthor': '',
    'Roles': dbus.UInt64(0),
    'Groups': dbus.UInt64(0),
    'Filters': dbus.UInt64(0),
    'MimeTypes': dbus.Array(['application/x-rpm'], signature='s'),
    'Locked': False,
    'NetworkState': dbus.UInt32(2),
    'DistroId': 'standin;1;noarch',
}

OFFLINE_PROPERTIES = {
    'UpdatePrepared': False,
    'UpdateTriggered': False,
    'UpgradePrepared': False,
    'UpgradeTriggered': False,
    'TriggerAction': 'unset',
}

TRANSACTION_PROPERTIES = {
    'Role': dbus.UInt32(0),
    'Status': dbus.UInt32(1),
    'LastPackage': '',
    'Uid': dbus.UInt32(0),
    'Sender': '',
    'Percentage': dbus.UInt32(PERCENTAGE_UNKNOWN),
    'AllowCancel': False,
    'CallerActive': True,
    'ElapsedTime': dbus.UInt32(0),
    'Speed': dbus.UInt32(0),
    'DownloadSizeRemaining': dbus.UInt64(0),
    'TransactionFlags': dbus.UInt64(0),
}


def load(mock, _parameters):
    mock.AddProperties(MAIN_IFACE, DAEMON_PROPERTIES)
    mock.AddProperties(OFFLINE_IFACE, OFFLINE_PROPERTIES)
    mock.AddProperties(TRANSACTION_IFACE, TRANSACTION_PROPERTIES)


@dbus.service.method(MAIN_IFACE, in_signature='', out_signature='o')
def CreateTransaction(self):
    path = f'/{len(self.objects)}_{os.getpid()}'
    self.objects[path] = TRANSACTION_IFACE
    return path


@dbus.service.method(TRANSACTION_IFACE, in_signature='as', out_signature='')
def SetHints(_self, _hints):
    pass


def succeed(mock, path, answer):
    """Answers a request and reports its end."""
    answer()
    mock.EmitSignalDetailed(TRANSACTION_IFACE, 'Finished', 'uu', [EXIT_SUCCESS, 0], {'path': path})


@dbus.service.method(TRANSACTION_IFACE, in_signature='tas', out_signature='', path_keyword='path',
                     async_callbacks=('answer', '_refuse'))
def Resolve(self, _filter, _packages, path, answer, _refuse):
    succeed(self, path, answer)


@dbus.service.method(TRANSACTION_IFACE, in_signature='tas', out_signature='', path_keyword='path',
                     async_callbacks=('answer', '_refuse'))
def SearchFiles(self, _filter, _values, path, answer, _refuse):
    succeed(self, path, answer)


@dbus.service.method(TRANSACTION_IFACE, in_signature='tasbb', out_signature='', path_keyword='path',
                     async_callbacks=('answer', '_refuse'))
def RemovePackages(self, _flags, _package_ids, _allow_deps, _autoremove, path, answer, _refuse):
    succeed(self, path, answer)
