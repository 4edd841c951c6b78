# SPDX-FileCopyrightText: velmora-installationhandler contributors
# SPDX-License-Identifier: BSD-3-Clause
"""Which of the program's two modes a command line chooses."""

import pytest


@pytest.mark.parametrize('arguments', [
    [],
    ['install'],
    ['INSTALL', '/tmp/a.rpm'],
    ['Install', '/tmp/a.rpm', '/tmp/b.rpm'],
    ['install ', '/tmp/a.rpm'],
    ['installs', '/tmp/a.rpm'],
    ['instal', '/tmp/a.rpm'],
    ['--install', '/tmp/a.rpm'],
    ['', '/tmp/a.rpm'],
    ['/tmp/a.rpm', 'install'],
    ['/tmp/a.rpm', 'install', '/tmp/b.rpm'],
], ids=str)
def test_service_is_started_by(program, client, signals, arguments):
    program.start(arguments)

    client.install([])
    assert signals.wait('installFinished') == (True, '')
    assert program.log() == []


def test_toolkit_takes_its_options(program):
    program.start(['-platform', 'offscreen', 'install', '/tmp/a.rpm'], {'QT_QPA_PLATFORM': 'no-such-platform'})

    program.barrier()
    assert program.log() == []


@pytest.mark.parametrize('arguments', [
    ['install', '/tmp/a.rpm'],
    ['install', ''],
    ['install', 'install'],
    ['install', '-platform', 'offscreen'],
], ids=str)
def test_client_is_started_by(service, session_monitor, run_client, arguments):
    assert run_client(*arguments)[0] == 1

    (call,) = [message for message in session_monitor.messages(kind='method-call') if message.member == 'installFiles']
    assert call.arguments == (arguments[1],)
    service.barrier()
    assert service.log() == []
