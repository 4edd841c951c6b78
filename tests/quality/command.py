# SPDX-FileCopyrightText: velmora-installationhandler contributors
# SPDX-License-Identifier: BSD-3-Clause
"""Runs the commands that measure."""

import re
import subprocess
from pathlib import Path

PROJECT = Path(__file__).resolve().parents[2]
BUILD = PROJECT / 'build'


class Unmeasured(Exception):
    """A command has failed, or has not said what it should."""


def run(*words):
    """Runs a command of the project in its folder, shows its output, and returns it."""
    print('+', *words, flush=True)
    lines = []
    try:
        with subprocess.Popen(words, cwd=PROJECT, stdin=subprocess.DEVNULL, stdout=subprocess.PIPE, text=True,
                              encoding='utf-8', errors='replace') as process:
            for line in process.stdout:
                print(line, end='', flush=True)
                lines.append(line)
    except OSError as error:
        raise Unmeasured(str(error)) from None
    if process.returncode != 0:
        raise Unmeasured(f'{words[0]} has ended with status {process.returncode}')
    return ''.join(lines)


def found(pattern, text):
    """The groups of the only match of a pattern that stands for whole lines."""
    matches = re.findall(f'^{pattern}$', text, re.MULTILINE)
    if len(matches) != 1:
        raise Unmeasured(f'{len(matches)} lines are like this, instead of one: {pattern}')
    return matches[0]
