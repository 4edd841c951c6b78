# SPDX-FileCopyrightText: velmora-installationhandler contributors
# SPDX-License-Identifier: BSD-3-Clause
"""Installations of every kind, and what may come of one."""

import platform
from collections import Counter
from dataclasses import dataclass, replace
from pathlib import Path
from typing import NamedTuple

FOLDER = Path('/tmp/packages')
NAMES = ('app', 'second')
WORDS_OF_FILES = {'app': 'the first file', 'second': 'the second file'}
AS_USUAL = 'as usual'

WARNING = 'warning default: '
NOT_SDK = WARNING + '"Unable install package without confirm: The installation is not running in sdk mode. "'
NOT_ALLOWED = WARNING + '"Unable install package without confirm: Silent software instalation is not allowed"'
NEITHER = NOT_SDK.removesuffix('"') + 'Silent software instalation is not allowed"'
UNKNOWN = WARNING + 'Could not fetch developer mode state:  '
UNUSABLE = WARNING + 'Access policy "/etc/velmora/access-policy.conf" is unusable, installation is disabled: '

SYSTEM = platform.freedesktop_os_release()['NAME']
FORBIDDEN = f"This device's policy does not allow installing apps ({SYSTEM})."


def path_of(name):
    """The package file of a name."""
    return FOLDER / f'{name}.rpm'


class Installation(NamedTuple):
    """A kind of request. Where nothing is wrong, developer mode allows all that it can, and the user agrees."""

    kind: str
    files: int
    sdk_mode: bool = False
    emulator: bool = False

    def __str__(self):
        return f'{self.kind}, {"one file" if self.files == 1 else "several files"}'

    @property
    def asks(self):
        """Whether the user is asked about each file."""
        return not (self.sdk_mode or self.emulator)


ORDINARY, SEVERAL_ORDINARY = Installation('ordinary', 1), Installation('ordinary', 2)
ALL = [ORDINARY, SEVERAL_ORDINARY,
       Installation('sdk mode', 1, sdk_mode=True), Installation('sdk mode', 2, sdk_mode=True),
       Installation('emulator', 1, emulator=True), Installation('emulator', 2, emulator=True)]


@dataclass(frozen=True)
class Outcome:
    """What has come of a request.

    told        the arguments of installFinished; None if there has been none
    removed     those of each removalFinished, which only sdk mode has
    asked       how often needConfirm has been announced
    shown       the package in each dialog
    handed_over the arguments of each call of the package manager's "Install", also one that did not arrive
    notified    the number of notifications
    log         the lines of the log, but those about packages that were read or removed
    """

    told: tuple = (True, '')
    removed: tuple = ()
    asked: int = 0
    shown: tuple = ()
    handed_over: tuple = ()
    notified: int = 0
    log: tuple = ()

    def but(self, **changes):
        """The same with changes."""
        return replace(self, **changes)


def handed_over(request, files=None):
    """The calls of "Install" for the first files of a request, or for all."""
    return tuple((str(path_of(name)), {}) for name in NAMES[:request.files][:files])


def usual(request):
    """The outcome where nothing is wrong."""
    names = NAMES[:request.files]
    return Outcome(removed=((True, ''),) * request.files if request.sdk_mode else (),
                   asked=len(names) if request.asks else 0, shown=names if request.asks else (),
                   handed_over=handed_over(request),
                   log=() if request.sdk_mode else (NOT_SDK,) * request.files)


def forbidden(request, *log):
    """The outcome where the policy forbids installing. Known behaviour 15."""
    return usual(request).but(told=(False, FORBIDDEN), asked=0, shown=(), handed_over=(), notified=1, log=log)


def failed(*codes):
    """What the caller is told when the package manager has not installed some files."""
    return False, '\n'.join(f'zarn_installation_error_desc_{code} (code: {code})' for code in codes)


def asking(request, *numbers):
    """What changes where a request in sdk mode asks the user about these files."""
    if not request.sdk_mode:
        return {}
    asked = tuple(NAMES[number] for number in numbers if number < request.files)
    return {'asked': len(asked), 'shown': asked}


def logging(request, *lines):
    """What changes where the log has these lines, for one file after the other; None stands for the usual one."""
    ordinary = None if request.sdk_mode else NOT_SDK
    own = lines[:request.files] + (None,) * (request.files - len(lines))
    return {'log': tuple(line or ordinary for line in own if line or ordinary)}


def words(outcome, request):
    """The outcome as the caller, the user and the reader of the log see it: cells of a table."""
    if outcome.told == (False, FORBIDDEN):
        return all_words(outcome)
    return [AS_USUAL if own == ordinary else own
            for own, ordinary in zip(all_words(outcome), all_words(usual(request)))]


def all_words(outcome):
    """The same in full."""
    return [told_words(outcome), seen_words(outcome), log_words(outcome.log)]


def told_words(outcome):
    """What the caller hears."""
    removals = sorted({text for success, text in outcome.removed if not success})
    parts = [f'removal: {code(text)}' for text in removals]
    if outcome.told is None:
        parts.append('`needConfirm`, and nothing more; the request stays' if outcome.asked else 'nothing')
    elif outcome.told[0]:
        parts.append('success')
    else:
        parts.append(', '.join(code(line) for line in outcome.told[1].replace(SYSTEM, '…').split('\n')))
    return '; '.join(parts)


def seen_words(outcome):
    """What the user sees."""
    if outcome.notified:
        return 'a notification'
    if not outcome.shown:
        return 'nothing'
    return 'asked about ' + ', '.join(WORDS_OF_FILES.get(name, 'a file without a name') for name in outcome.shown)


def log_words(log):
    """What the log says; each line once, with its number."""
    counts = Counter(line.removeprefix(WARNING) for line in log)
    return '; '.join((f'{count} × ' if count > 1 else '') + code(line) for line, count in counts.items()) or 'nothing'


def code(text):
    """A text in the form that Markdown shows as it is."""
    return f'`{text}`'
