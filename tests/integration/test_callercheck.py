# SPDX-FileCopyrightText: velmora-installationhandler contributors
# SPDX-License-Identifier: BSD-3-Clause
"""The callers that may remove by launcher: real processes, under real users and groups."""

import os
import shutil
import subprocess
import sys
from contextlib import contextmanager
from pathlib import Path

import pytest
import support
from gi.repository import Gio, GLib
from support.removalrequests import KNOWN

GROUPS, USERS = Path('/etc/group'), Path('/etc/passwd')
RUNTIME_FOLDER = Path('/run/user/100000')
GOING_CALLER = Path(support.__file__).with_name('goingcaller.py')
REFUSED = 'removePackageByDesktopFile called from non-privileged process'
BAD = 'void InstallationHandler::removePackageByDesktopFile(const QString&) bad desktop file: "{}"'
ABSENT = '/absent.desktop'

# The device has the users root and velmora, and the groups root, velmora and privileged.
ROOT, VELMORA, CAPITAL_ROOT, UNNAMED = 0, 100000, 100003, 100777
PRIVILEGED, CAPITAL_PRIVILEGED, PRIVILEGED_TOO = 100001, 100004, 100005


@pytest.fixture(autouse=True)
def lookalikes():
    """A user and groups whose names are not quite those that matter."""
    before = GROUPS.read_bytes(), USERS.read_bytes()
    with GROUPS.open('a', encoding='ascii') as groups, USERS.open('a', encoding='ascii') as users:
        print(f'Privileged:x:{CAPITAL_PRIVILEGED}:\nprivileged2:x:{PRIVILEGED_TOO}:', file=groups)
        print(f'Root:x:{CAPITAL_ROOT}:{VELMORA}::/:/bin/false', file=users)
    yield
    GROUPS.write_bytes(before[0])
    USERS.write_bytes(before[1])


@pytest.fixture
def call_as(processes, session_bus):
    """Calls a method in a process of its own; the process, which has ended. Other users than the session's, too, may now
    enter the folder of the bus, unlike on a device."""
    def call(user, group, method, argument, more_groups=(), program='gdbus'):
        RUNTIME_FOLDER.chmod(0o711)
        groups = [f'--groups={",".join(map(str, more_groups))}'] if more_groups else ['--clear-groups']
        process = processes.start('caller', [
            'setpriv', f'--reuid={user}', f'--regid={group}', *groups,
            program, 'call', '--address', session_bus.address, '--dest', 'org.velmoraos.installationhandler',
            '--object-path', '/org/velmoraos/installationhandler',
            '--method', f'org.velmoraos.installationhandler.{method}', argument])
        processes.wait_end(process)
        return process
    yield call
    RUNTIME_FOLDER.chmod(0o700)


@pytest.mark.parametrize('user, group', [
    (ROOT, ROOT), (ROOT, VELMORA), (ROOT, PRIVILEGED), (ROOT, UNNAMED), (VELMORA, PRIVILEGED),
    (CAPITAL_ROOT, PRIVILEGED),
])
def test_privileged(service, call_as, user, group):
    caller = call_as(user, group, 'removePackageByDesktopFile', ABSENT)

    assert (caller.returncode, caller.text) == (0, '()\n')
    assert service.log() == ['warning default: ' + BAD.format(ABSENT)]


def test_program_with_the_set_group_id_bit(service, call_as, tmp_path):
    """The group in which it was started does not matter."""
    program = shutil.copy('/usr/bin/gdbus', tmp_path)
    os.chown(program, ROOT, PRIVILEGED)
    os.chmod(program, 0o2755)

    caller = call_as(VELMORA, VELMORA, 'removePackageByDesktopFile', ABSENT, program=program)

    assert (caller.returncode, caller.text) == (0, '()\n')
    assert service.log() == ['warning default: ' + BAD.format(ABSENT)]


def test_member_of_the_group_enters_it(service, call_as, tmp_path):
    line = f'privileged:x:{PRIVILEGED}:'
    GROUPS.write_text(GROUPS.read_text(encoding='ascii').replace(line, f'{line}velmora'), encoding='ascii')
    program = tmp_path / 'enter'
    program.write_text('#!/bin/sh\nexec sg privileged -c "gdbus $*"\n', encoding='ascii')
    program.chmod(0o755)

    caller = call_as(VELMORA, VELMORA, 'removePackageByDesktopFile', ABSENT, program=program)

    assert (caller.returncode, caller.text) == (0, '()\n')
    assert service.log() == ['warning default: ' + BAD.format(ABSENT)]


@pytest.mark.parametrize('user, group, more_groups', [
    (VELMORA, VELMORA, ()), (VELMORA, CAPITAL_PRIVILEGED, ()), (VELMORA, PRIVILEGED_TOO, ()), (VELMORA, ROOT, ()),
    (VELMORA, VELMORA, (PRIVILEGED,)), (CAPITAL_ROOT, VELMORA, ()), (VELMORA, UNNAMED, ()),
], ids=['neither', 'Privileged', 'privileged2', 'group root', 'supplementary group', 'Root', 'group without name'])
@pytest.mark.parametrize('there', [True, False], ids=['launcher', 'absent file'])
def test_not_privileged(standins, service, call_as, signals, applications, user, group, more_groups, there):
    """Nothing is done, not even a look at the path, and the caller learns its own process id. Known behaviour 12."""
    peers = standins.start('runtime-manager', 'package-manager')
    launcher = applications / 'app.desktop'
    if there:
        launcher.touch()

    caller = call_as(user, group, 'removePackageByDesktopFile', str(launcher), more_groups)

    assert caller.returncode == 1
    assert caller.text == ('Error: GDBus.Error:org.freedesktop.DBus.Error.AccessDenied: '
                           f'PID {caller.pid} is not in privileged group\n')
    service.barrier()
    assert service.log() == ['warning default: ' + REFUSED]
    assert launcher.exists() == there
    assert signals.names() == []
    assert [call for peer in peers for call in peer.calls()] == []


@pytest.mark.parametrize('method, signal', [('removePackages', 'removalFinished'), ('installFiles', 'installFinished')])
def test_other_requests_are_open_to_all(manager, service, call_as, signals, dialog, method, signal):
    """Known behaviour 11."""
    manager.answer('GetPackage', KNOWN)
    dialog.use('Confirming')

    caller = call_as(VELMORA, VELMORA, method, "['/a']")

    assert (caller.returncode, caller.text) == (0, '()\n')
    assert signals.wait(signal) == (True, '')
    assert REFUSED not in service.warnings()


@pytest.fixture
def busy(standins, service, client, applications):
    """The service is busy until it is told to go on: calls wait meanwhile. Known behaviour 4."""
    hooks = standins.start('runtime-manager')
    hooks.hang('OnRemove')
    launcher = applications / 'busy.desktop'
    launcher.touch()
    pending = client.start('removePackageByDesktopFile', '(s)', str(launcher))
    hooks.wait_call('OnRemove')

    def go_on():
        hooks.release('OnRemove')
        pending.wait()
        service.barrier()
    return go_on


def refusals(session_monitor):
    """The error replies to callers of the service: to whom, which, what."""
    return [(message.destination, message.error_name, message.arguments)
            for message in session_monitor.messages(kind='error')
            if message.error_name == 'org.freedesktop.DBus.Error.AccessDenied']


def test_caller_without_connection(busy, service, session_bus, session_monitor):
    """It has left the bus, and nobody knows any more that it was root."""
    leaving = session_bus.connect()
    name = leaving.get_unique_name()
    message = Gio.DBusMessage.new_method_call('org.velmoraos.installationhandler', '/org/velmoraos/installationhandler',
                                              'org.velmoraos.installationhandler', 'removePackageByDesktopFile')
    message.set_body(GLib.Variant('(s)', (ABSENT,)))
    leaving.send_message(message, Gio.DBusSendMessageFlags.NONE)
    leaving.flush_sync()
    leaving.close_sync()
    session_bus.wait_owner(name, owned=False)

    busy()

    assert (name, 'org.freedesktop.DBus.Error.AccessDenied', ('PID 0 is not in privileged group',)) in \
        refusals(session_monitor)
    assert service.warnings() == [REFUSED]


@pytest.fixture
def start_going_caller(processes, session_bus):
    """Starts a caller without rights, which becomes another program or ends."""
    def start(*program):
        socket = session_bus.address.partition('=')[2]
        return processes.start_in_session('caller', [sys.executable, '-B', GOING_CALLER, socket, ABSENT, *program])
    return start


def test_caller_without_process(start_going_caller, busy, processes, service, session_bus, session_monitor):
    """It has ended, but its connection has not. D-Bus 1.16 does not tell its process then."""
    caller = start_going_caller()
    assert processes.wait_end(caller) == 0, caller.text
    assert not Path(f'/proc/{caller.pid}').exists()

    busy()

    ((name, error, arguments),) = refusals(session_monitor)
    assert session_bus.has_owner(name)
    told = session_bus.process_of(name)
    assert told in (caller.pid, None)
    assert (error, arguments) == ('org.freedesktop.DBus.Error.AccessDenied',
                                  (f'PID {told or 0} is not in privileged group',))
    assert service.warnings() == [REFUSED]


def test_caller_that_becomes_roots(start_going_caller, busy, processes, service, tmp_path):
    """It executes a program with the set-user-ID bit after the call. Known behaviour 77."""
    program = shutil.copy('/usr/bin/tail', tmp_path)
    os.chown(program, ROOT, ROOT)
    os.chmod(program, 0o4755)
    text = tmp_path / 'text'
    text.write_text('I am root\n', encoding='ascii')
    caller = start_going_caller(program, '--follow', text)
    processes.wait_line(caller, lambda line: line == 'I am root', 'the program')
    assert Path(f'/proc/{caller.pid}').owner() == 'root'

    busy()

    assert service.warnings() == [BAD.format(ABSENT)]


@contextmanager
def process_of_root(number):
    """A process of root's with the number of one that has ended."""
    for _ in range(1000):
        Path('/proc/sys/kernel/ns_last_pid').write_text(str(number - 1), encoding='ascii')
        with subprocess.Popen(['sleep', 'infinity']) as process:
            try:
                if process.pid == number:
                    yield
                    return
            finally:
                process.kill()
    pytest.fail(f'other processes have taken the number {number}, or the one after it, each time')


def test_process_that_has_the_number_of_the_caller(start_going_caller, busy, processes, service, session_bus,
                                                   session_monitor):
    """The caller has ended, and a process of root's has got its number. D-Bus 1.16 notices. Known behaviour 77."""
    caller = start_going_caller()
    assert processes.wait_end(caller) == 0, caller.text

    with process_of_root(caller.pid):
        busy()
        *_, call = [message for message in session_monitor.messages(kind='method-call')
                    if message.member == 'removePackageByDesktopFile']
        noticed = session_bus.process_of(call.sender) is None

    assert service.warnings() == [REFUSED if noticed else BAD.format(ABSENT)]
