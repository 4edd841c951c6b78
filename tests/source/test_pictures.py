# SPDX-FileCopyrightText: velmora-installationhandler contributors
# SPDX-License-Identifier: BSD-3-Clause
"""The pictures of the documents show the dialog as it is now. Taking them needs fonts and a minute, so the test compares the
files that they depend on, and the pictures themselves, with those of the last run of scripts/pictures."""

import hashlib

from test_sources import ROOT, files

SUMS = ROOT / 'docs/pictures/SHA256SUMS'


def recorded():
    """The recorded sums, each as its file and the sum."""
    lines = [line for line in SUMS.read_text(encoding='ascii').splitlines() if not line.startswith('#')]
    return {ROOT / file: value for value, file in (line.split(maxsplit=1) for line in lines)}


def test_pictures_are_those_of_the_last_run():
    changed = [path for path, value in recorded().items()
               if not path.exists() or hashlib.sha256(path.read_bytes()).hexdigest() != value]
    assert not changed, 'please run scripts/pictures'


def test_everything_is_recorded():
    assert {*files('*.png'), *files('qml/*.qml'), *files('translations/*.ts')} <= set(recorded())
