# SPDX-FileCopyrightText: velmora-installationhandler contributors
# SPDX-License-Identifier: BSD-3-Clause
"""Names of the stand-ins and of the interface that controls them."""

from pathlib import Path

# Starts a program of the session's user.
SESSION = Path(__file__).resolve().parents[2] / 'sandbox/session'

CONTROL_INTERFACE = 'org.velmoraos.simulator.Control'
CONTROL_PATH = '/org/velmoraos/simulator'

# Each stand-in and its bus.
BUSES = {
    'android-support': 'system',
    'developer-mode': 'system',
    'launcher-model': 'session',
    'mce': 'system',
    'notifications': 'session',
    'package-kit': 'system',
    'package-manager': 'system',
    'runtime-manager': 'system',
}

# The stand-ins that start-all starts. A device can have the real PackageKit instead of its stand-in.
TOGETHER = [standin for standin in BUSES if standin != 'package-kit']


def control_name(standin):
    """The well-known name that stays on the bus while the public name has vanished."""
    return 'org.velmoraos.simulator.' + ''.join(word.title() for word in standin.split('-'))


def template_file(standin):
    """The dbusmock template that describes the stand-in."""
    return Path(__file__).parent.parent / 'templates' / (standin.replace('-', '') + '.py')
