# SPDX-FileCopyrightText: velmora-installationhandler contributors
# SPDX-License-Identifier: BSD-3-Clause
"""Tells the watcher what happens, while it happens."""

import time
from contextlib import contextmanager


class Failure(Exception):
    """Something that should have happened did not; the text says what, in plain words."""


@contextmanager
def step(text):
    """One step of the demo: its text first, and how it went when it is over. Gives a function that shows it goes on."""
    print(f'{text} ...', end='', flush=True)
    begin = time.monotonic()
    try:
        yield lambda: print('.', end='', flush=True)
    except BaseException:
        print(' failed', flush=True)
        raise
    print(f' done, {time.monotonic() - begin:.1f} s', flush=True)


def detail(text):
    """A fact that the step before has brought to light."""
    print(f'    {text}', flush=True)
