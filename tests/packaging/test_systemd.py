# SPDX-FileCopyrightText: velmora-installationhandler contributors
# SPDX-License-Identifier: BSD-3-Clause
"""What systemd says of the user unit."""

import subprocess
from pathlib import Path

UNITS = Path('/etc/systemd/user')
UNIT = '/usr/lib/systemd/user/velmora-installationhandler.service'


def test_unit_is_understood():
    """A unit that a bus starts needs the bus's own, which not every machine has."""
    UNITS.mkdir(parents=True, exist_ok=True)
    (UNITS / 'dbus.socket').write_text('[Socket]\nListenStream=%t/bus\n', encoding='utf-8')
    (UNITS / 'dbus.service').write_text('[Service]\nExecStart=/usr/bin/dbus-daemon --session\n', encoding='utf-8')

    done = subprocess.run(['systemd-analyze', 'verify', '--user', UNIT], capture_output=True, text=True, check=False)

    assert (done.returncode, done.stdout, done.stderr) == (0, '', '')
