# SPDX-FileCopyrightText: velmora-installationhandler contributors
# SPDX-License-Identifier: BSD-3-Clause
"""The peers of the service, and their usual answers."""

from typing import NamedTuple

from .device import MANAGED

QUICK, PATIENT = 25, 900


class Peer(NamedTuple):
    """A service on a bus."""

    name: str
    bus: str
    path: str
    interface: str


PEERS = {
    'developer mode': Peer('ru.quon.developermode', 'system', '/', 'ru.quon.developermode'),
    'package manager': Peer('ru.quon.ZARN', 'system', '/ru/quon/ZARN', 'ru.quon.ZARN'),
    'runtime manager': Peer('ru.quon.RuntimeManager', 'system', '/ru/quon/ZARN/Hooks', 'ru.quon.ZARN.Hooks'),
    'Android support': Peer('com.zelka.zindro', 'system', '/com/zelka/zindro', 'com.zelka.zindro'),
    'MCE': Peer('com.nokia.mce', 'system', '/com/nokia/mce/request', 'com.nokia.mce.request'),
    'PackageKit': Peer('org.freedesktop.PackageKit', 'system', '/org/freedesktop/PackageKit',
                       'org.freedesktop.PackageKit'),
    'home screen': Peer('org.orrinmobile.rozzle', 'session', '/LauncherModel', 'org.orrinmobile.rozzle.LauncherModel'),
    'notifications': Peer('org.freedesktop.Notifications', 'session', '/org/freedesktop/Notifications',
                          'org.freedesktop.Notifications'),
}
TRANSACTION = 'org.freedesktop.PackageKit.Transaction'


class Method(NamedTuple):
    """A method of a peer, with the types of its arguments. The service waits for the answer of one that blocks, for so many
    seconds."""

    peer: str
    types: str
    blocks: bool = True
    timeout: int = QUICK


METHODS = {
    'IsSilentInstallationEnabled': Method('developer mode', ''),
    'GetPackage': Method('package manager', 's', timeout=PATIENT),
    'Install': Method('package manager', 'sa{sv}', blocks=False, timeout=PATIENT),
    'Remove': Method('package manager', 'sa{sv}', blocks=False, timeout=PATIENT),
    'OnRemove': Method('runtime manager', 's'),
    'removeFile': Method('Android support', 's'),
    'notification_begin_req': Method('MCE', 'sii'),
    'notification_end_req': Method('MCE', 'si'),
    'get_display_status': Method('MCE', '', blocks=False),
    'CreateTransaction': Method('PackageKit', '', blocks=False),
    'Resolve': Method('PackageKit', 'tas', blocks=False),
    'SearchFiles': Method('PackageKit', 'tas', blocks=False),
    'RemovePackages': Method('PackageKit', 'tasbb', blocks=False),
    'updatingStarted': Method('home screen', 'ssss'),
    'updatingFinished': Method('home screen', 's'),
    'Notify': Method('notifications', 'susssasa{sv}i', blocks=False),
}
TRANSACTION_METHODS = ('Resolve', 'SearchFiles', 'RemovePackages')

# Calls of these methods are answered without a step unless they are held: those that the service waits for at once, the
# other one when the service has nothing more to do. An answer that comes earlier may overtake another one.
ANSWERED = tuple(name for name, method in METHODS.items() if method.blocks or name == 'CreateTransaction')


class Reply(NamedTuple):
    """The answer to a call: a value, or an error."""

    value: object = None
    error_name: str = None
    error_text: str = ''

    @property
    def is_error(self):
        return self.error_name is not None


class Answers:
    """The answers of the peers unless a step says otherwise."""

    def __init__(self):
        self.silent_installation = False
        self.android_removal = True
        self.display = 'on'
        self._transactions = 0

    def usual(self, method, arguments):
        """The usual answer to a call. That of CreateTransaction is the number of the transaction."""
        if method == 'GetPackage':
            known = arguments[0] in MANAGED
            return Reply({}) if known else Reply(None, 'ru.quon.ZARN.Error.UnknownPackage', 'unknown')
        if method == 'CreateTransaction':
            self._transactions += 1
            return Reply(self._transactions)
        return Reply({'IsSilentInstallationEnabled': self.silent_installation, 'get_display_status': self.display,
                      'removeFile': self.android_removal, 'Notify': 1}.get(method))
