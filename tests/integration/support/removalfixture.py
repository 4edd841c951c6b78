# SPDX-FileCopyrightText: velmora-installationhandler contributors
# SPDX-License-Identifier: BSD-3-Clause
"""A device on which one kind of removal is asked for, again and again."""

from .devicestate import make_own_folder
from .faulttable import written
from .packagekit import install
from .removalrequests import ANDROID, KNOWN, MANAGER, METHODS, PACKAGE_KIT
from .transactionsignals import finished, package_found

FOUND = package_found('app;1.0-1;noarch;installed')


class RemovalFixture:
    """The application "app", installed, a launcher of the user and one of Android; and all peers of a removal."""

    def __init__(self, request, package, processes, device):
        self.request = request
        self.package = package
        self.own_launcher = device.home / '.local/share/applications/app.desktop'
        self.client = None
        self.standins = None
        self._processes = processes
        self._service = None
        self._signals = None
        self._lines = 0
        self._calls = 0
        device.mark_as_emulator()
        install(package)

    def start_peers(self, standins):
        """Starts all whom the request may call."""
        self.standins = standins
        standins.start(*self.peers())

    def peers(self):
        """Whom the request may call: the back ends, and others."""
        return list(dict.fromkeys([*self.request.peers(), MANAGER, PACKAGE_KIT]))

    def enter(self, service, client, signals):
        """The service that is asked from now on."""
        self._service = service
        self.client = client
        self._signals = signals

    def peer(self, name):
        """A peer's stand-in."""
        return getattr(self.standins, name.replace('-', '_'))

    def set_up(self):
        """What the request finds: files, and peers that do their part."""
        self.set_up_files()
        for name in (MANAGER, PACKAGE_KIT):
            self.set_up_peer(name)

    def set_up_files(self):
        """The launchers that a removal takes away."""
        make_own_folder(self.own_launcher.parent)
        self.own_launcher.touch()
        ANDROID.write_text('[Desktop Entry]\nX-zindro-apkfile=/app.apk\n', encoding='ascii')

    def set_up_peer(self, name):
        """What a back end answers, after what has been planned for it before."""
        peer = self.peer(name)
        if name == MANAGER:
            peer.configure('installs', 'nothing')
            if self.request.known:
                peer.answer('GetPackage', KNOWN)
        elif name == PACKAGE_KIT:
            peer.script('Resolve', [FOUND, finished()])
            if self.request.owned:
                peer.script('SearchFiles', [FOUND, finished()])

    def ask(self, end):
        """Sends the request, of which this end is expected."""
        self.expect(end)
        return self.request.ask(self)

    def expect(self, end):
        """From now on all that happens belongs to the next request."""
        self._service.barrier()
        self._signals.all.clear()
        self._lines = len(self._service.log())
        self._calls = len(self.peer(METHODS[end.call]).calls(end.call)) if end.call else 0

    def outcomes(self):
        """What the service has told so far."""
        return tuple(self._signals.arguments('removalFinished'))

    def wait_end(self, end):
        """Waits until nothing more can come of the request, and returns what has."""
        if end.outcomes:
            self._signals.wait('removalFinished', len(end.outcomes))
        if self.request.installs:
            self._signals.wait('installFinished')
        if end.log:
            self.wait_log(end.log)
        if end.call:
            self.wait_answered(end.call, self._calls + 1)
        self._service.barrier()
        return self.outcomes()

    def repeat(self):
        """Asks once more, when nothing is wrong: the request takes its usual course. What that is, in a word."""
        usual = self.request.usual
        self.set_up()
        self.ask(usual).wait()
        outcomes = self.wait_end(usual)
        assert outcomes == usual.outcomes
        return written(outcomes) if outcomes else f'`{usual.call}` called'

    def wait_log(self, text):
        """Waits until the service has said something since it was asked."""
        self._processes.wait_until(lambda: any(text in line for line in self._service.process.lines()[self._lines:]),
                                   f'"{text}" in the log')

    def wait_answered(self, method, count):
        """Waits until a peer has treated this call: it does one thing after the other."""
        peer = self.peer(METHODS[method])
        peer.wait_call(method, count)
        peer.hanging()
