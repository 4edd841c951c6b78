# SPDX-FileCopyrightText: velmora-installationhandler contributors
# SPDX-License-Identifier: BSD-3-Clause
"""Dialogs that take the place of the installed one."""

import json
import shutil
from pathlib import Path

from .devicestate import KeptFolder

INSTALLED_FOLDER = Path('/usr/share/velmora-installationhandler')
INSTALLED_DIALOG = INSTALLED_FOLDER / 'SideloadDialog.qml'
VARIANTS = Path(__file__).resolve().parent.parent / 'dialogs'
COMMANDS = Path('/run/test-dialog-commands')


class Dialog(KeptFolder):
    """Chooses the dialog of a test, and answers it.

    Without a choice it is the installed one. The dialogs of a service process are numbered from 1, in the
    order of their showing.
    """

    def __init__(self, service, kept_copy):
        super().__init__(INSTALLED_FOLDER, kept_copy)
        self._service = service
        self._commands = 0
        shutil.rmtree(COMMANDS, ignore_errors=True)
        COMMANDS.mkdir()

    def use(self, variant):
        """Puts a variant in place: the name of a file in dialogs/, without its suffix."""
        shutil.copy(VARIANTS / f'{variant}.qml', INSTALLED_DIALOG)
        for part in ('TestDialog.qml', 'dialognumber.js'):
            shutil.copy(VARIANTS / part, INSTALLED_FOLDER)

    def remove(self):
        """No dialog file at all."""
        INSTALLED_DIALOG.unlink()

    def wait_shown(self, number=1):
        """Waits until a dialog is on screen and returns what it was told about the package, as a dict."""
        line = self._service.wait_for_log(f'dialog {number} shows ')
        return json.loads(line.partition(' shows ')[2])

    def answer(self, *signals, number=1):
        """Lets a "controlled" dialog emit signals at once, one after the other: "requestInstall", "dismissed"."""
        self._commands += 1
        (COMMANDS / f'{number}-{self._commands}-{"-".join(signals)}').touch()
