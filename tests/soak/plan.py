# SPDX-FileCopyrightText: velmora-installationhandler contributors
# SPDX-License-Identifier: BSD-3-Clause
"""What happens in a soak: the same seed gives the same plan.

A plan consists of rounds. The requests of a round come while the ones before are at work, and faults come between them. A
round is over when all of its requests have ended; all peers are well then.

Left out is what keeps the service from ending by itself, as docs/known-behaviour.md tells, since the count of operations is
looked at in the end: a launcher that nobody owns (so each launcher of the system is also that of an Android application),
answers of PackageKit of wrong types, PackageKit's transactions that end unsuccessfully without an error or never, and a
missing dialog. Where the user is asked there are at most two installations of one file in a round, or one of several files:
dialogs that lie over each other are never taken away (Known behaviour 57, 58), which costs memory.
"""

import random
from typing import NamedTuple

CLIENTS = 4
# In a round.
MOST_REQUESTS = 20
MOST_FAULTS = 4

PACKAGES = [f'package{number}' for number in range(8)]

# The methods that each peer is called for.
METHODS = {
    'package-manager': ['Install', 'GetPackage', 'Remove'],
    'developer-mode': ['IsSilentInstallationEnabled'],
    'mce': ['get_display_status', 'notification_begin_req', 'notification_end_req'],
    'notifications': ['Notify'],
    'launcher-model': ['updatingStarted', 'updatingFinished'],
    'runtime-manager': ['OnRemove'],
    'android-support': ['removeFile'],
    'package-kit': ['CreateTransaction', 'Resolve', 'SearchFiles', 'RemovePackages'],
}
WRONG_TYPE = 'wrong type'
WAYS = ['dies before', 'dies after', 'hangs', 'refuses', WRONG_TYPE]
# A transaction of PackageKit goes on for ever if it is not begun as it should.
NEVER_WRONG = ('Resolve', 'SearchFiles', 'RemovePackages')


class Install(NamedTuple):
    """A request for an installation. Each file is the number of a package, or None for one that is absent, and the user
    declines what is named so."""

    client: int
    files: tuple
    sdk_mode: bool
    declined: bool


class Remove(NamedTuple):
    """A request for removals by name."""

    client: int
    names: tuple
    keep_userdata: bool


class RemoveLauncher(NamedTuple):
    """A request for a removal by a launcher, one of the user's own or one of the system."""

    client: int
    name: str
    own: bool


class Fault(NamedTuple):
    """The next call of a peer goes wrong."""

    peer: str
    method: str
    how: str


class Kill(NamedTuple):
    """A peer dies."""

    peer: str


class Restart(NamedTuple):
    """A peer that is dead is started again; one that is not stays."""

    peer: str


class Leave(NamedTuple):
    """A peer gives up its name."""

    peer: str


class DisplayOff(NamedTuple):
    """The display goes off and on."""


class Round(NamedTuple):
    """`kind` is "silent" (on an emulator, where nobody is asked), "asking", "forbidden", or "alone": one installation of
    several files. `managed`: the package manager knows all names. `owned`: PackageKit finds owners of launchers."""

    kind: str
    managed: bool
    owned: bool
    steps: list

    @property
    def requests(self):
        """How many of the steps are requests."""
        return sum(isinstance(step, REQUESTS) for step in self.steps)

    @property
    def installations(self):
        """How many of the steps are requests for installations."""
        return sum(isinstance(step, Install) for step in self.steps)

    @property
    def faults(self):
        """How many of the steps are faults of peers."""
        return sum(isinstance(step, FAULTS) for step in self.steps)

    def fails(self, *peers):
        """Whether one of these peers fails."""
        return any(isinstance(step, FAULTS) and step.peer in peers for step in self.steps)


REQUESTS = (Install, Remove, RemoveLauncher)
FAULTS = (Fault, Kill, Leave)


def every_kind():
    """Rounds with each kind of request once, without faults."""
    yield Round('forbidden', managed=False, owned=False, steps=[Install(0, (0,), sdk_mode=False, declined=False)])
    yield Round('asking', managed=False, owned=False, steps=[Install(0, (1,), sdk_mode=True, declined=True)])
    yield Round('asking', managed=False, owned=False, steps=[
        Install(0, (0,), sdk_mode=False, declined=False),
        Remove(0, ('application',), keep_userdata=False), RemoveLauncher(0, 'application-of-system', own=False),
        RemoveLauncher(0, 'application-of-user', own=True)])


class Plan:
    """The rounds of a seed."""

    def __init__(self, seed, requests):
        self._random = random.Random(seed)
        self._requests = requests
        self._names = 0

    def rounds(self):
        """Yields rounds until there are enough requests."""
        left = self._requests
        while left > 0:
            planned = self._round(min(left, self._random.randint(5, MOST_REQUESTS)))
            left -= planned.requests
            yield planned

    def _round(self, requests):
        chance = self._random
        kind = chance.choices(['silent', 'asking', 'alone', 'forbidden'], [4, 4, 1, 1])[0]
        most = {'asking': 2, 'alone': 1}.get(kind, requests)
        steps = [self._request(kind, number < most) for number in range(requests)]
        for _ in range(chance.randint(0, MOST_FAULTS)):
            self._add_fault(steps)
        if kind in ('asking', 'alone') and chance.random() < 0.2:
            self._insert(steps, DisplayOff())
        return Round(kind, chance.random() < 0.5, chance.random() < 0.5, steps)

    def _request(self, kind, may_install):
        chance = self._random
        what = chance.random()
        if may_install and (kind == 'alone' or what < 0.6):
            return self._installation(kind)
        client = self._client()
        if chance.random() < 0.5:
            names = tuple(self._name() for _ in range(chance.randint(1, 2)))
            return Remove(client, names, chance.random() < 0.3)
        return RemoveLauncher(client, self._name(), chance.random() < 0.3)

    def _installation(self, kind):
        chance = self._random
        number = {'asking': 1, 'alone': 3}.get(kind, chance.randint(0, 3))
        files = tuple(chance.choice([None, *range(len(PACKAGES))]) for _ in range(number))
        return Install(self._client(), files, chance.random() < 0.4, chance.random() < 0.3)

    def _add_fault(self, steps):
        chance = self._random
        peer = chance.choice(list(METHODS))
        if chance.random() < 0.7:
            method = chance.choice(METHODS[peer])
            how = chance.choice([how for how in WAYS if how != WRONG_TYPE or method not in NEVER_WRONG])
            self._insert(steps, Fault(peer, method, how))
        else:
            place = self._insert(steps, chance.choice([Kill, Leave])(peer))
            steps.insert(chance.randint(place + 1, len(steps)), Restart(peer))

    def _insert(self, steps, step):
        place = self._random.randint(0, len(steps))
        steps.insert(place, step)
        return place

    def _client(self):
        return self._random.randrange(CLIENTS)

    def _name(self):
        """A name that nothing else has."""
        self._names += 1
        return f'application{self._names}'
