# SPDX-FileCopyrightText: velmora-installationhandler contributors
# SPDX-License-Identifier: BSD-3-Clause
"""Prints the progress of the demo."""

import time
from contextlib import contextmanager

from harness.processes import WaitFailed
from standin.remoteerror import RemoteError


class Failure(Exception):
    """A step of the demo has failed; the text says how, in plain words."""


FAILURES = (Failure, WaitFailed, RemoteError)


@contextmanager
def step(text):
    """Prints the text of a step, and its outcome and duration at the end. Yields a function that prints a dot."""
    print(f'{text} ...', end='', flush=True)
    begin = time.monotonic()
    try:
        yield lambda: print('.', end='', flush=True)
    except BaseException:
        print(' failed', flush=True)
        raise
    print(f' done, {time.monotonic() - begin:.1f} s', flush=True)


def detail(text):
    """Prints a fact about the step before."""
    print(f'    {text}', flush=True)
