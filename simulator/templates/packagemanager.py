# SPDX-FileCopyrightText: velmora-installationhandler contributors
# SPDX-License-Identifier: BSD-3-Clause
"""Stand-in of the package manager: installs packages with rpm, and removes those that it has installed."""

import shutil
import subprocess
from pathlib import Path

import dbus

from standin.names import SESSION
from standin.rpminstallation import RpmInstallation
from standin.rpmremoval import remove_package

BUS_NAME = 'ru.quon.ZARN'
MAIN_OBJ = '/ru/quon/ZARN'
MAIN_IFACE = 'ru.quon.ZARN'

# "nothing": every installation and removal succeeds at once, and nothing is installed or removed.
PARAMETERS = {'installs': ('rpm', 'nothing')}


def load(mock, parameters):
    mock.parameters = parameters
    mock.installed = {}


def error(code, text):
    return dbus.DBusException(text, name=f'{MAIN_IFACE}.Error.{code}')


def unknown(name):
    return error('UnknownPackage', f'{name} has not been installed')


def data_folder(name):
    """Where an application keeps what it stores, in the HOME of the session's user."""
    return Path('/home/velmora/.local/share', name)


@dbus.service.method(MAIN_IFACE, in_signature='sa{sv}', out_signature='', async_callbacks=('answer', 'refuse'))
def Install(self, path, _options, answer, refuse):
    if self.parameters['installs'] == 'nothing':
        answer()
        return

    def ended(package, refusal):
        if refusal is not None:
            refuse(error(refusal.code, refusal.text))
            return
        name, version = package
        self.installed[name] = version
        subprocess.run([SESSION, 'mkdir', '--parents', data_folder(name)], check=True)
        answer()

    RpmInstallation(path, ended).start()


@dbus.service.method(MAIN_IFACE, in_signature='s', out_signature='a{ss}')
def GetPackage(self, name):
    if name not in self.installed:
        raise unknown(name)
    return {'Name': name, 'Version': self.installed[name]}


@dbus.service.method(MAIN_IFACE, in_signature='sa{sv}', out_signature='', async_callbacks=('answer', 'refuse'))
def Remove(self, name, options, answer, refuse):
    if self.parameters['installs'] == 'nothing':
        answer()
        return
    if name not in self.installed:
        refuse(unknown(name))
        return

    def ended(refusal):
        if refusal is not None:
            refuse(error(refusal.code, refusal.text))
            return
        self.installed.pop(name, None)
        if not options.get('KeepUserData', False):
            shutil.rmtree(data_folder(name), ignore_errors=True)
        answer()

    remove_package(name, ended)
