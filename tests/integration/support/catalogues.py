# SPDX-FileCopyrightText: velmora-installationhandler contributors
# SPDX-License-Identifier: BSD-3-Clause
"""The device's translation catalogues."""

import subprocess
from pathlib import Path
from xml.sax.saxutils import escape, quoteattr

from .devicestate import KeptFolder

FOLDER = Path('/usr/share/translations')


class Catalogues(KeptFolder):
    """Adds catalogues to the installed ones, and takes catalogues away."""

    def __init__(self, work, kept_copy):
        super().__init__(FOLDER, kept_copy)
        self._work = work

    def install(self, name, texts):
        """Compiles a catalogue, "zarn-de", of texts by their identifiers, and installs it in place of any other."""
        messages = [f'<message id={quoteattr(identifier)}><source/><translation>{escape(text)}</translation></message>'
                    for identifier, text in texts.items()]
        source = self._work / f'{name}.ts'
        source.write_text('<?xml version="1.0" encoding="utf-8"?><!DOCTYPE TS><TS version="2.1"><context><name/>'
                          + ''.join(messages) + '</context></TS>', encoding='utf-8')
        subprocess.run(['lrelease', '-silent', '-idbased', source, '-qm', FOLDER / f'{name}.qm'], check=True)

    def remove_all(self):
        """Leaves none at all."""
        for catalogue in FOLDER.iterdir():
            catalogue.unlink()
