# SPDX-FileCopyrightText: velmora-installationhandler contributors
# SPDX-License-Identifier: BSD-3-Clause
"""The steps of a history: what happens around the service. Kept histories have them as short calls of Python.

A number that chooses among several things counts modulo how many there are, so it always chooses one. A step that
makes no sense when its turn comes, such as an answer when nothing has been asked, is left out.
"""

from typing import NamedTuple


class Install(NamedTuple):
    """A request. Arguments that are None are not sent."""

    files: tuple
    sdk_mode: bool = None
    keep_userdata: bool = None


class Remove(NamedTuple):
    """A request for removals by name."""

    names: tuple
    keep_userdata: bool = None


class RemoveLauncher(NamedTuple):
    """A request for a removal by launcher."""

    launcher: str


class Choose(NamedTuple):
    """The user answers a dialog on screen, 0 being the last that has been shown."""

    confirm: bool
    dialog: int = 0


class Display(NamedTuple):
    """MCE says that the display is "on", "dimmed" or "off"."""

    state: str


class Answer(NamedTuple):
    """A peer answers a call that waits, 0 being the oldest one: as usual, with a wrong type, or with an error."""

    manner: str = 'usual'
    call: int = 0


class AnswerLate(NamedTuple):
    """A peer answers a call whose time-out has come, 0 being the first of these. Nothing comes of it."""

    manner: str = 'usual'
    call: int = 0


class Report(NamedTuple):
    """PackageKit reports something about a transaction that it has begun, 0 being the oldest one."""

    event: str
    transaction: int = 0


class Die(NamedTuple):
    """A peer goes, without an answer to the calls that wait for it."""

    peer: str


class Return(NamedTuple):
    """A peer that has gone comes back."""

    peer: str


class Wait(NamedTuple):
    """Time passes until the next time-out."""


class Pause(NamedTuple):
    """Time passes, but no time-out comes."""


class Hold(NamedTuple):
    """The next call of a method waits for an answer. Calls of other methods are answered at once, as usual, or wait
    anyway if the service does not wait for them."""

    method: str


class Set(NamedTuple):
    """Changes the device: "policy allows", "emulator", "silent installation" or "Android removal"."""

    what: str
    value: bool


SETTINGS = ('policy allows', 'emulator', 'silent installation', 'Android removal')

# These only prepare what another step does.
PREPARATIONS = (Pause, Hold, Set)

# The errors that peers answer, by name and text. An error may have no text.
ERRORS = {
    'no space': ('org.example.Error.NoSpace', 'no space'),
    'conflict': ('org.example.Error.Conflict', 'a "conflict"'),
    'no words': ('org.example.Error.Silent', ''),
}
MANNERS = ('usual', *ERRORS, 'wrong type')

# The packages that PackageKit finds, and the errors that it reports, by their names in a step.
FOUND = {
    'native': 'native;1-1;noarch;installed',
    'managed': 'managed;2-1;aarch64;installed',
    'nameless': ';3-1;noarch;installed',
}
REPORTED_ERRORS = {'refuses': 'It is locked.', 'refuses without words': ''}
ENDS = {'succeeds': 1, 'fails': 2}
EVENTS = (*FOUND, *REPORTED_ERRORS, *ENDS)
