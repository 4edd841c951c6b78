# SPDX-FileCopyrightText: velmora-installationhandler contributors
# SPDX-License-Identifier: BSD-3-Clause
"""polkit's rules, and the login sessions that it learns of. polkit reads both when its bus starts it, at the first request."""

import shutil
from pathlib import Path

from .devicestate import KeptFolder

FOLDER = Path('/etc/polkit-1/rules.d')
EXAMPLES = Path(__file__).resolve().parents[3] / 'packaging/polkit'
LOGIND = Path('/run/systemd')
GROUPS = Path('/sys/fs/cgroup/user.slice')


class Rules(KeptFolder):
    """The rules of the device, where the first example is installed."""

    def __init__(self, kept_copy):
        super().__init__(FOLDER, kept_copy)

    def use_only(self, *examples):
        """These examples, and none of the others."""
        for rule in FOLDER.glob('*velmora*'):
            rule.unlink()
        for example in examples:
            shutil.copy(EXAMPLES / example, FOLDER)


class LoginSession:
    """A session of the user velmora, as systemd-logind would note it. The device has no logind."""

    def __init__(self, state, seat):
        """`state` is "active", or "online" if another session is on the screen. A remote session has no seat."""
        self._group = GROUPS / 'user-100000.slice/session-1.scope'
        self._group.mkdir(parents=True, exist_ok=True)
        for folder in ('seats', 'machines'):
            (LOGIND / folder).mkdir(parents=True)
        self._note('sessions/1', UID=100000, USER='velmora', STATE=state, ACTIVE=int(state == 'active'),
                   REMOTE=int(not seat), TYPE='x11', CLASS='user', **({'SEAT': seat} if seat else {}))
        self._note('users/100000', NAME='velmora', STATE=state, DISPLAY=1, SESSIONS=1)

    def add(self, process):
        """A process belongs to the session."""
        (self._group / 'cgroup.procs').write_text(str(process.pid), encoding='ascii')

    def end(self):
        """logind has never been there."""
        shutil.rmtree(LOGIND)

    @staticmethod
    def _note(name, **values):
        file = LOGIND / name
        file.parent.mkdir()
        file.write_text(''.join(f'{key}={value}\n' for key, value in values.items()), encoding='ascii')
