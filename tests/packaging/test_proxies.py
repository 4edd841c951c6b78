# SPDX-FileCopyrightText: velmora-installationhandler contributors
# SPDX-License-Identifier: BSD-3-Clause
"""The proxies that generators make of the description of the bus interface."""

from pathlib import Path

import pytest
from builds import run
from standin.names import SESSION

DESCRIPTION = Path('/usr/share/dbus-1/interfaces/org.velmoraos.installationhandler.xml')
PROXIES = Path(__file__).with_name('proxies')
BUILDS = {
    'glib': [
        f'gdbus-codegen --generate-c-code proxy --c-generate-autocleanup all {DESCRIPTION}',
        f'cc -Wall -Wextra -Werror -I. -o client {PROXIES}/glib.c proxy.c $(pkg-config --cflags --libs gio-unix-2.0)',
    ],
    'qt': [
        f'qdbusxml2cpp -m -p proxy {DESCRIPTION}',
        '"$(pkg-config --variable=host_bins Qt5Core)/moc" -o proxy.moc proxy.h',
        f'c++ -Wall -Wextra -Werror -fPIC -I. -o client {PROXIES}/qt.cpp proxy.cpp $(pkg-config --cflags --libs Qt5DBus)',
    ],
}


@pytest.mark.parametrize('kind', BUILDS)
def test_proxy_has_every_form_of_every_method(program, session_monitor, device, processes, environment, tmp_path, kind):
    device.forbid_installing()
    for command in BUILDS[kind]:
        assert run(command, tmp_path) == ''

    # The compiler may take longer than the service stays idle.
    program.start()
    processes.run('client', [SESSION, '--group', 'privileged', tmp_path / 'client'], environment)

    calls = [message for message in session_monitor.messages(kind='method-call')
             if message.interface == 'org.velmoraos.installationhandler']
    assert [(call.member, call.arguments) for call in calls] == [
        ('installFiles', (['/no.rpm'],)),
        ('installFiles', (['/no.rpm'], False)),
        ('installFiles', (['/no.rpm'], False, True)),
        ('removePackages', ([],)),
        ('removePackages', ([], True)),
        ('removePackageByDesktopFile', ('/no.desktop',)),
    ]
