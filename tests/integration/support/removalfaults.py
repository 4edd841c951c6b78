# SPDX-FileCopyrightText: velmora-installationhandler contributors
# SPDX-License-Identifier: BSD-3-Clause
"""Removals of every kind, and what may happen to a peer in them."""

from dataclasses import dataclass
from pathlib import Path
from typing import Callable

from gi.repository import GLib

from .packagekit import install
from .transactionsignals import finished, package_found

KNOWN = GLib.Variant('(a{ss})', ({},))
NATIVE = 'app;1.0-1;noarch;installed'
FOLDER = Path('/usr/share/applications')
ANDROID = FOLDER / 'android.desktop'

# The stand-in and the public name of every method that a removal calls.
MANAGER = ('package-manager', 'ru.quon.ZARN')
PACKAGE_KIT = ('package-kit', 'org.freedesktop.PackageKit')
LAUNCHER_MODEL = ('launcher-model', 'org.orrinmobile.rozzle')
PEERS = {
    'GetPackage': MANAGER,
    'Remove': MANAGER,
    'CreateTransaction': PACKAGE_KIT,
    'Resolve': PACKAGE_KIT,
    'RemovePackages': PACKAGE_KIT,
    'SearchFiles': PACKAGE_KIT,
    'updatingStarted': LAUNCHER_MODEL,
    'updatingFinished': LAUNCHER_MODEL,
    'OnRemove': ('runtime-manager', 'ru.quon.RuntimeManager'),
    'removeFile': ('android-support', 'com.zelka.zindro'),
}


@dataclass
class Request:
    """A kind of request: whether the package manager knows the name, who owns the launcher, the methods that are called
    of its peers, and how to ask."""

    methods: tuple
    ask: Callable
    known: bool = False
    owner: bool = False


def remove_name(scene):
    return scene.client.start('removePackages', '(as)', ['app'])


def remove_launcher(path):
    return lambda scene: scene.client.start('removePackageByDesktopFile', '(s)', str(path(scene)))


REQUESTS = {
    'managed package': Request(('GetPackage', 'updatingStarted', 'Remove', 'updatingFinished'), remove_name, known=True),
    'native package': Request(('GetPackage', 'updatingStarted', 'CreateTransaction', 'Resolve', 'RemovePackages',
                               'updatingFinished'), remove_name),
    'own launcher': Request(('OnRemove',), remove_launcher(lambda scene: scene.own_launcher)),
    'launcher of a managed package': Request(('GetPackage', 'updatingStarted', 'Remove', 'updatingFinished'),
                                             remove_launcher(lambda scene: FOLDER / 'app.desktop'), known=True),
    'launcher of a native package': Request(('GetPackage', 'CreateTransaction', 'SearchFiles', 'updatingStarted', 'Resolve',
                                             'RemovePackages', 'updatingFinished'),
                                            remove_launcher(lambda scene: FOLDER / 'app.desktop'), owner=True),
    'launcher of an Android application': Request(('GetPackage', 'CreateTransaction', 'SearchFiles', 'removeFile'),
                                                  remove_launcher(lambda scene: ANDROID)),
    'installation in sdk mode': Request(
        ('GetPackage', 'updatingStarted', 'Remove', 'updatingFinished'),
        lambda scene: scene.client.start('installFiles', '(asb)', [str(scene.package)], True), known=True),
}


class Scene:
    """A device with the application "app" and all stand-ins, in which one kind of request is made."""

    def __init__(self, request, standins, client, device, package):
        self.request = request
        self.client = client
        self.package = package
        self.own_launcher = device.home / '.local/share/applications/app.desktop'
        self._standins = standins
        device.mark_as_emulator()
        install(package)
        standins.start(*{name for name, _ in PEERS.values()})
        self.set_up()

    def set_up(self):
        """What the request finds: files and answers."""
        if self.request is REQUESTS['own launcher']:
            self.own_launcher.parent.mkdir(parents=True, exist_ok=True)
            self.own_launcher.touch()
        ANDROID.write_text('[Desktop Entry]\nX-zindro-apkfile=/app.apk\n', encoding='ascii')
        self.set_up_peer('package-manager')
        self.set_up_peer('package-kit')

    def set_up_peer(self, name):
        """What a back end answers from now on, after all that has been planned before."""
        peer = getattr(self._standins, name.replace('-', '_'))
        if name == 'package-manager':
            peer.configure('installs', 'nothing')
            if self.request.known:
                peer.answer('GetPackage', KNOWN)
        elif name == 'package-kit':
            peer.script('Resolve', [package_found(NATIVE), finished()])
            if self.request.owner:
                peer.script('SearchFiles', [package_found(NATIVE), finished()])


class Peer:
    """The stand-in at fault, in one of its methods."""

    def __init__(self, method, scene, standins, bus):
        self.method = method
        self.name, self._bus_name = PEERS[method]
        self._scene = scene
        self._standins = standins
        self._bus = bus

    @property
    def standin(self):
        return getattr(self._standins, self.name.replace('-', '_'))

    def calls(self):
        """How often the method has been called."""
        return len(self.standin.calls(self.method))

    def plan(self, what):
        """Plans something for the next call, before what is planned for all."""
        self.standin.restore(self.method)
        what(self.standin)
        if self.name in ('package-manager', 'package-kit'):
            self._scene.set_up_peer(self.name)

    def go(self):
        """Dies, and everybody knows."""
        self.standin.kill()
        self._bus.wait_owner(self._bus_name, owned=False)

    def repair(self):
        """Whatever happened to it, it works again."""
        if not self.standin.process.alive:
            self._standins.start(self.name)
        self.standin.restore(self.method)
        self._scene.set_up()
