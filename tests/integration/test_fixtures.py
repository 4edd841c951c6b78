# SPDX-FileCopyrightText: velmora-installationhandler contributors
# SPDX-License-Identifier: BSD-3-Clause
"""The helpers that the other tests rely on notice failures."""

import signal
from pathlib import Path

import pytest
from harness.client import NAME, PATH
from harness.processes import WaitFailed


def test_wait_tells_what_it_waited_for(processes):
    with pytest.raises(WaitFailed, match='not within 0.1 s: the impossible'):
        processes.wait_until(lambda: False, 'the impossible', seconds=0.1)


def test_wait_ends_when_a_process_dies(processes, service, signals):
    processes.start('killer', ['/bin/kill', '-KILL', service.process.pid]).end_awaited = True
    with pytest.raises(WaitFailed, match=f'service ended with {-signal.SIGKILL} while waiting for signal needConfirm'):
        signals.wait('needConfirm')


def test_last_words_of_a_process_are_kept(processes):
    process = processes.start('speaker', ['/bin/sh', '-c', 'seq 100000; echo error >&2; printf unfinished'])
    assert processes.wait_end(process) == 0
    assert process.lines()[-3:] == ['100000', 'error', 'unfinished']
    assert len(process.lines()) == 100002


@pytest.mark.parametrize('report', ['==7==ERROR: AddressSanitizer: heap-use-after-free on address',
                                    'a.cpp:3:7: runtime error: signed integer overflow'])
def test_sanitizer_reports_are_found(processes, report):
    process = processes.start('sanitized', ['/bin/echo', report])
    processes.wait_end(process)
    assert processes.sanitizer_reports() == ['sanitized: ' + report]
    process.text = ''


def test_service_log_is_told_by_level(standins, service, client, package):
    standins.start('developer-mode')
    client.install([package('logged')])
    service.wait_for_log('Unable install')
    assert service.debugs() == ['RPM Package info: "logged" "1.0" "The application logged"']
    assert [text.partition(':')[0] for text in service.warnings()] == ['"Unable install package without confirm']


def test_barrier_comes_after_what_was_sent_before(standins, service, client, signals, dialog, package):
    mce = standins.start('mce')
    dialog.use('Controlled')
    client.install([package('waiting')])
    dialog.wait_shown()

    mce.configure('display', 'off')
    service.barrier()

    assert signals.names() == ['needConfirm', 'installFinished']
    assert [call.method for call in mce.calls()][-1] == 'notification_end_req'


def test_session_is_the_users_and_the_system_is_roots(platform, service, session_bus, system_bus):
    def user(process):
        return Path(f'/proc/{process.pid}').owner()

    session = [session_bus, service, platform.launcher_model, platform.notifications]
    assert [user(program.process) for program in session] == ['velmora'] * 4
    assert Path(f'/proc/{service.process.pid}').group() == 'velmora'
    system = [system_bus, platform.package_manager, platform.runtime_manager, platform.developer_mode, platform.mce,
              platform.android_support]
    assert [user(program.process) for program in system] == ['root'] * 6
    assert session_bus.ask('GetConnectionUnixUser', '(s)', session_bus.connection.get_unique_name()) == (100000,)


def test_dead_service_stays_dead(service, session_bus, client):
    service.kill()
    session_bus.wait_owner(NAME, owned=False)
    with pytest.raises(Exception, match='org.freedesktop.DBus.Error.ServiceUnknown'):
        client.call('Ping', path=PATH, interface='org.freedesktop.DBus.Peer')
