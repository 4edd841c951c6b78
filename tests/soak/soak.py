# SPDX-FileCopyrightText: velmora-installationhandler contributors
# SPDX-License-Identifier: BSD-3-Clause
"""Plays the rounds of a plan, and checks that each request has an outcome that is allowed."""

from collections import Counter
from pathlib import Path

from gi.repository import GLib
from harness.processes import WaitFailed
from standin.remoteerror import RemoteError
from support.removalrequests import KNOWN, PEERS
from support.transactionsignals import finished, package_found

from .installations import Installations
from .plan import (FAULTS, METHODS, WRONG_TYPE, DisplayOff, Install, Kill, Leave, Remove, RemoveLauncher, Restart)
from .roundlog import RoundLog

PUBLIC_NAMES = {**PEERS, 'developer-mode': 'ru.quon.developermode', 'mce': 'com.nokia.mce',
                'notifications': 'org.freedesktop.Notifications'}

NONSENSE = GLib.Variant('(a{sv})', ({},))
# The package that PackageKit finds.
OWNER = 'owner'
FOUND = package_found(f'{OWNER};1.0-1;noarch;installed')

# A PackageKit that fails may cause so many reports of a removal: Known behaviour 25, 26.
MOST_REPORTS = 4

# The errors of a call to a stand-in that is about to die.
GONE = [f'org.freedesktop.DBus.Error.{name}' for name in ('NameHasNoOwner', 'ServiceUnknown', 'NoReply')]

# Seconds without news after which hanging calls are answered.
PATIENCE = 0.05


class SoakFailed(AssertionError):
    """Something has happened that is not allowed."""


class Soak:
    """A service and its peers in the course of a plan."""

    def __init__(self, device):
        self._device = device
        self._round = None
        self._log = None
        self._calls = []
        self._launchers = {}
        self._own_launchers = []
        self._more_installations = 0
        self.outcomes = Counter()

    def play(self, planned):
        """Plays a round to its end."""
        device = self._device
        device.service.barrier()
        device.forget()
        self._round = planned
        self._log = RoundLog(device.service.process)
        self._calls, self._launchers, self._own_launchers, self._more_installations = [], {}, [], 0
        self._set_up()
        for step in planned.steps:
            self._do(step)
            device.processes.run_pending()
        try:
            self._wait_end()
        except WaitFailed as failure:
            raise SoakFailed(f'{failure}, in {self._round}; {self._state()}') from None
        self._check()
        self._repair()
        self._log.close()

    def _set_up(self):
        state = self._device.state
        state.mark_as_emulator(self._round.kind == 'silent')
        if self._round.kind == 'forbidden':
            state.forbid_installing()
        else:
            state.set_policy(None)
        for name in METHODS:
            self._instruct(name)

    def _instruct(self, name):
        """Tells a peer what to answer where nothing goes wrong."""
        peer = self._device.peer(name)
        if name == 'package-manager' and self._round.managed:
            peer.answer('GetPackage', KNOWN)
        elif name == 'developer-mode':
            peer.configure('silent-installation', self._round.kind != 'asking')
        elif name == 'package-kit':
            peer.script('Resolve', [FOUND, finished()])
            if self._round.owned:
                peer.script('SearchFiles', [FOUND, finished()])

    def _do(self, step):
        device = self._device
        if isinstance(step, Install):
            self._install(step)
        elif isinstance(step, Remove):
            self._start(step.client, 'removePackages', '(asb)', step.names, step.keep_userdata)
        elif isinstance(step, RemoveLauncher):
            path = device.make_launcher(step.name, step.own)
            if step.own:
                self._own_launchers.append(path)
            else:
                self._launchers[path] = step.name
            self._start(step.client, 'removePackageByDesktopFile', '(s)', path)
        elif isinstance(step, Kill):
            device.kill(step.peer)
        elif isinstance(step, Restart):
            self._revive(step.peer)
        elif isinstance(step, DisplayOff):
            for state in ('off', 'on'):
                if device.is_well('mce'):
                    self._direct('mce', 'configure', 'display', state)
        elif device.is_well(step.peer):
            self._spoil(step)

    def _direct(self, name, operation, *arguments):
        """Tells a peer something, or nothing if the peer is about to die."""
        peer = self._device.peer(name)
        try:
            return getattr(peer, operation)(*arguments)
        except RemoteError as error:
            if error.name not in GONE or not peer.process.end_awaited:
                raise
            peer.wait_exit()
            return None

    def _install(self, step):
        files = [self._device.file(number, step.declined) for number in step.files]
        self._start(step.client, 'installFiles', '(asb)', files, step.sdk_mode)

    def _start(self, client, *call):
        self._calls.append(self._device.clients[client].start(*call))

    def _spoil(self, step):
        if isinstance(step, Leave):
            self._direct(step.peer, 'vanish')
            return
        operation, *arguments = {
            'dies before': ('exit_on', 'before'),
            'dies after': ('exit_on', 'after'),
            'hangs': ('hang', 1),
            'refuses': ('refuse', 'a.b.Refused', 'not today', 1),
            WRONG_TYPE: ('answer', NONSENSE, 1),
        }[step.how]
        self._direct(step.peer, operation, step.method, *arguments)

    def _revive(self, name):
        device = self._device
        if not device.is_well(name):
            device.restart(name)
            self._instruct(name)
        elif not device.has_name(name, PUBLIC_NAMES[name]):
            self._direct(name, 'come_back')

    def _wait_end(self):
        """Waits until all requests have ended. Where nothing happens, hanging calls are answered, and a request without
        files makes those go on that wait behind a dialog that nobody sees any more: Known behaviour 59."""
        processes = self._device.processes
        for _ in range(int(60 / PATIENCE)):
            if processes.happens(self._has_ended, PATIENCE, 'the end of a round'):
                return
            if not self._answer_hanging() and self._waits_for_installation_alone():
                self._start(0, 'installFiles', '(asb)', [], False)
                self._more_installations += 1
        raise SoakFailed(f'this round does not end: {self._round}; {self._state()}')

    def _answer_hanging(self):
        answered = False
        for name in METHODS:
            if self._device.is_well(name):
                for method in self._direct(name, 'hanging') or ():
                    self._direct(name, 'release', method, 0)
                    answered = True
        return answered

    def _has_ended(self):
        self._log.read()
        return (all(call.answered for call in self._calls) and self._installed() >= self._asked()
                and self._removals_have_ended())

    def _asked(self):
        return self._round.installations + self._more_installations

    def _installed(self):
        return len(self._device.signals.arguments('installFinished'))

    def _removals_have_ended(self):
        log = self._log
        return (log.transactions == 0 and all(log.ended[name] >= count for name, count in log.started.items())
                and self._open_launchers() <= log.started[OWNER])

    def _open_launchers(self):
        """The number of launchers of which neither the package manager nor the Android support has heard."""
        asked = {call.arguments[0] for call in self._device.peer('android-support').seen if call.method == 'removeFile'}
        return sum(not self._log.started[name] and path not in asked | self._log.not_removed
                   for path, name in self._launchers.items())

    def _waits_for_installation_alone(self):
        return all(call.answered for call in self._calls) and self._removals_have_ended()

    def _check(self):
        device = self._device
        device.service.barrier()
        self._log.read()
        for call in self._calls:
            call.wait()
        installed = device.signals.arguments('installFinished')
        removed = device.signals.arguments('removalFinished')
        most_reports = MOST_REPORTS if self._round.fails('package-kit') else 1
        problems = [
            *Installations(self._round).problems(installed, self._more_installations, self._handed_over(), device.file),
            *(f'in the log: {line}' for line in self._log.unusual),
            *self._log.problems(self._round.fails('package-kit')),
            *(f'{name} started {count} times and ended {self._log.ended[name]} times'
              for name, count in self._log.started.items()
              if not count <= self._log.ended[name] <= most_reports * count),
            *(f'{name} has not been started' for step in self._round.steps if isinstance(step, Remove)
              for name in step.names if self._log.started[name] != 1),
            *(f'{path} is still there' for path in self._own_launchers if Path(path).exists()),
            *(f'removalFinished {outcome}' for outcome in removed if not self._may_be_told(*outcome)),
        ]
        if len(removed) != self._log.ended.total():
            problems.append(f'{len(removed)} outcomes of removals, but {self._log.ended.total()} in the log')
        if problems:
            raise SoakFailed('\n'.join([f'not allowed in {self._round}:', *problems]))
        self.outcomes.update(f'installation: {"success" if success else "failure"}' for success, _ in installed)
        self.outcomes.update(f'removal: {"success" if success else "failure"}' for success, _ in removed)

    def _may_be_told(self, success, text):
        """Whether a removal may end so."""
        return not text if success else bool(text) and self._round.fails('package-manager', 'package-kit')

    def _handed_over(self):
        """The files that the package manager has received, if it has not died since."""
        alive = self._device.is_well('package-manager')
        calls = self._direct('package-manager', 'calls', 'Install') if alive else None
        return [call.arguments[0] for call in calls or ()]

    def _repair(self):
        """All peers are well, and nothing is planned for them."""
        for name, methods in METHODS.items():
            for method in methods:
                if self._device.is_well(name):
                    self._direct(name, 'restore', method)
        self._answer_hanging()
        for step in self._round.steps:
            if isinstance(step, FAULTS):
                self._revive(step.peer)

    def _state(self):
        return (f'{sum(not call.answered for call in self._calls)} calls without reply, {self._installed()} of '
                f'{self._asked()} installations, {self._log.transactions} transactions, '
                f'{self._log.started - self._log.ended} removals, {self._open_launchers()} launchers')
