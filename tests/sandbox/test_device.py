# SPDX-FileCopyrightText: velmora-installationhandler contributors
# SPDX-License-Identifier: BSD-3-Clause
"""The device in a sandbox, seen from the machine that it runs on."""

import os
import shutil
import signal
import subprocess
import time
from pathlib import Path

import pytest

PROJECT = Path(__file__).resolve().parents[2]
DEVICE = str(PROJECT / 'sandbox/device')
SESSION = str(PROJECT / 'sandbox/session')
DEADLINE = 120

# A file in each folder that programs commonly write to. None of them may appear on the machine.
STRAY_FILES = [f'{folder}/velmora-stray' for folder in (
    '', '/boot', '/dev/shm', '/etc', '/home', '/mnt', '/opt', '/root', '/run', '/srv', '/tmp', '/usr/bin',
    '/usr/share/applications', '/var/cache', '/var/lib', '/var/lib/rpm', '/var/log', '/var/tmp')]


def device(*command, options=(), check=True, **kwargs):
    """Runs a command on a device and returns the result."""
    result = subprocess.run([DEVICE, *options, '--', *command], text=True,
                            capture_output=True, timeout=DEADLINE, **kwargs)
    assert not check or result.returncode == 0, result.stderr
    return result


def output(*command, **kwargs):
    """Runs a command on a device and returns its output."""
    return device(*command, **kwargs).stdout


def mounts():
    return Path('/proc/self/mountinfo').read_text()


class Running:
    """A device that runs a shell script."""

    def __init__(self, script, *options):
        self.process = subprocess.Popen([DEVICE, *options, '--', 'bash', '-c', script], text=True,
                                        stdin=subprocess.PIPE, stdout=subprocess.PIPE)

    def line(self):
        """Waits for the next line of the script's output."""
        return self.process.stdout.readline().strip()

    def vanish(self):
        """Waits for the end of the device's last process, since all of them hold the pipe, and returns the other output."""
        rest, _ = self.process.communicate(timeout=DEADLINE)
        return rest

    def __enter__(self):
        return self

    def __exit__(self, *_):
        self.process.kill()
        self.process.wait()
        self.process.stdin.close()
        self.process.stdout.close()


@pytest.fixture
def stage(tmp_path):
    """A stage with a program and a session bus service. The program fails, so that the bus does not wait for it."""
    program = tmp_path / 'stage/usr/bin/velmora-sample'
    program.parent.mkdir(parents=True)
    program.write_text('#!/bin/sh\necho started > /tmp/started\nexit 1\n')
    program.chmod(0o755)
    service = tmp_path / 'stage/usr/share/dbus-1/services/org.velmoraos.sample.service'
    service.parent.mkdir(parents=True)
    service.write_text('[D-BUS Service]\nName=org.velmoraos.sample\nExec=/usr/bin/velmora-sample\n')
    return tmp_path / 'stage'


# The command and its exit status

@pytest.mark.parametrize('command, status', [
    ('exit 0', 0), ('exit 1', 1), ('exit 77', 77), ('exit 255', 255), ('kill -TERM $$', 128 + signal.SIGTERM),
    (None, 127)])
def test_exit_status_is_that_of_the_command(command, status):
    words = ['sh', '-c', command] if command else ['/no/such/program']
    assert device(*words, check=False).returncode == status


@pytest.mark.parametrize('options, complaint', [
    (['--stage'], '--stage needs a folder'),
    (['--stage', '/no/such/folder'], 'no such folder: /no/such/folder'),
    (['--writable', '/no/such/folder'], 'no such folder: /no/such/folder'),
    (['--show', '/etc/passwd'], 'no such folder: /etc/passwd'),
    (['--display'], 'there is no display to use'),
    (['--frobnicate'], 'unknown option --frobnicate'),
])
def test_wrong_options_are_refused(options, complaint):
    without_display = {name: value for name, value in os.environ.items() if name != 'DISPLAY'}
    result = subprocess.run([DEVICE, *options], text=True, capture_output=True, timeout=DEADLINE, env=without_display)
    assert result.returncode == 125
    assert complaint in result.stderr


def test_plain_users_are_told_that_root_is_needed():
    # The script comes from standard input, since a plain user may not be able to read the project's folder.
    result = subprocess.run(['setpriv', '--reuid=65534', '--clear-groups', 'bash', '-s'], text=True, capture_output=True,
                            input=Path(DEVICE).read_text().replace('$(realpath -- "$0")', DEVICE), timeout=DEADLINE)
    assert result.returncode == 125
    assert 'needs root' in result.stderr


def test_streams_pass_through():
    result = device('sh', '-c', 'cat; echo complaint >&2', input='question')
    assert (result.stdout, result.stderr) == ('question', 'complaint\n')


def test_arguments_pass_unchanged():
    arguments = ['two words', '', '$HOME', '*', 'a\nb', '--stage']
    assert output('printf', '[%s]', *arguments) == ''.join(f'[{argument}]' for argument in arguments)


def test_without_a_command_there_is_a_shell():
    result = subprocess.run([DEVICE, '--no-buses'], input='echo shell of $HOME\n', text=True, capture_output=True,
                            timeout=DEADLINE)
    assert (result.returncode, result.stdout) == (0, 'shell of /root\n')


# The contents of the device

def test_stage_covers_the_root(stage):
    assert output('stat', '-c', '%a %u', '/usr/bin/velmora-sample', options=['--stage', stage]) == '755 0\n'


def test_stage_may_be_anywhere(stage):
    odd = stage.rename(stage.with_name('a stage, with: odd\\name'))
    assert output('cat', '/usr/bin/velmora-sample', options=['--stage', odd]).startswith('#!/bin/sh')


def test_session_bus_starts_services_of_the_stage_only(stage):
    listing = output(SESSION, 'gdbus', 'call', '--session', '--dest', 'org.freedesktop.DBus', '--object-path', '/', '--method',
                     'org.freedesktop.DBus.ListActivatableNames', options=['--stage', stage])
    assert listing == "(['org.freedesktop.DBus', 'org.velmoraos.sample'],)\n"

    started = output(SESSION, 'sh', '-c', 'gdbus call --session --dest org.velmoraos.sample --object-path / --method a.b.C '
                     '>/dev/null 2>&1; cat /tmp/started', options=['--stage', stage])
    assert started == 'started\n'


def test_system_bus_is_at_its_place_and_open_to_all():
    everybody = 'dbus-send --system --print-reply=literal --dest=org.freedesktop.DBus / org.freedesktop.DBus.'
    script = f'setpriv --reuid=100000 --clear-groups {everybody}RequestName string:ru.quon.Sample uint32:0'
    assert output('sh', '-c', script).split() == ['uint32', '1']
    assert 'ru.quon' not in output('sh', '-c', f'{everybody}ListActivatableNames')


def test_no_buses_unless_wanted():
    assert output('ls', '-A', '/run/dbus', '/run/user/100000',
                  options=['--no-buses']) == '/run/dbus:\n\n/run/user/100000:\n'


def test_only_own_processes_are_seen():
    names = output('sh', '-c', 'cat /proc/[0-9]*/comm', options=['--no-buses']).split()
    assert names == ['init', 'sh'] or names == ['init', 'sh', 'cat']


def test_rpm_database_is_private_and_empty():
    assert output('rpm', '--eval', '%_dbpath') == '/var/lib/rpm\n'
    assert output('rpm', '-qa') == ''
    assert output('sh', '-c', 'ls /var/lib/rpm').strip() != ''


def test_private_folders_are_empty():
    """But for the project, which may lie in one of them."""
    seen = output('sh', '-c', 'ls -A /tmp /root /home/velmora /dev/shm /usr/share/applications; ls -d /etc/velmora*',
                  options=['--no-buses'], check=False).split()
    assert [name for name in seen if name not in Path(DEVICE).parts] == [
        '/dev/shm:', '/home/velmora:', '/root:', '/tmp:', '/usr/share/applications:']


def test_users_and_groups_of_a_device():
    assert output('getent', 'group', 'privileged') == 'privileged:x:100001:\n'
    assert output('id', '-nu', '100000') == 'velmora\n'


def test_environment_is_the_devices():
    passed = {'QT_LOGGING_RULES': '*=true', 'ASAN_OPTIONS': 'a=1', 'CI': '1'}
    replaced = {'HOME': '/root', 'LANG': 'C.UTF-8', 'XDG_RUNTIME_DIR': '/run/user/0'}
    dropped = {'DISPLAY': ':77', 'SECRET': 'x', 'DBUS_SESSION_BUS_ADDRESS': 'unix:path=/x'}
    caller = {'PATH': os.environ['PATH'], 'HOME': '/home/user', 'LANG': 'de_DE.UTF-8', **passed, **dropped}
    seen = dict(line.split('=', 1) for line in output('env', env=caller, options=['--no-buses']).splitlines())
    assert seen.items() >= {**passed, **replaced}.items()
    assert not dropped.keys() & seen.keys()


def test_display_of_the_caller_on_request_only():
    assert output('sh', '-c', 'echo $DISPLAY', options=['--display'], env={**os.environ, 'DISPLAY': ':77'}) == ':77\n'


# Control groups

def test_control_group_belongs_to_the_sessions_user():
    """Programs of root stay in the group above it."""
    script = 'cat /proc/self/cgroup; cd /sys/fs/cgroup; stat -c "%n %u" . velmora velmora/cgroup.procs'
    assert output('sh', '-c', script, options=['--no-buses', '--cgroup']).splitlines()[-4:] == [
        '0::/', '. 0', 'velmora 100000', 'velmora/cgroup.procs 100000']


def has_group(process):
    """Whether the machine has the control group of a device. It lies below the group of these tests.

    A search through all groups would fail when another device's group vanishes meanwhile.
    """
    script = f"""mount -n -t cgroup2 cgroup2 /mnt
        cd "/mnt$(sed -n 's/^0:://p' /proc/{os.getpid()}/cgroup)"
        umount -n --lazy /mnt
        [ ! -d velmora-device-{process} ] || echo there"""
    return subprocess.run(['unshare', '--mount', '--propagation', 'unchanged', 'sh', '-ec', script], check=True, text=True,
                          capture_output=True).stdout != ''


@pytest.mark.parametrize('number', [None, signal.SIGTERM, signal.SIGKILL])
def test_control_group_vanishes_with_the_device(number):
    script = 'mkdir /sys/fs/cgroup/velmora/below; echo ready; read line'
    with Running(script, '--no-buses', '--cgroup') as running:
        assert running.line() == 'ready'
        assert has_group(running.process.pid)
        if number:
            running.process.send_signal(number)
        running.vanish()
        end = time.monotonic() + DEADLINE
        # Nothing announces that a group has been removed.
        while has_group(running.process.pid) and time.monotonic() < end:
            time.sleep(0.05)
        assert not has_group(running.process.pid)


# The session

def test_session_is_that_of_its_user():
    script = 'id -nu; id -nG; echo $HOME $USER $LOGNAME $XDG_RUNTIME_DIR $DBUS_SESSION_BUS_ADDRESS $EXTRA "$@"'
    said = output(SESSION, 'EXTRA=more', 'sh', '-c', script, 'sh', 'NAME=VALUE', 'two  words', options=['--no-buses'])
    assert said.splitlines() == [
        'velmora', 'velmora',
        '/home/velmora velmora velmora /run/user/100000 unix:path=/run/user/100000/bus more NAME=VALUE two  words']


def test_folders_of_the_session_are_its_users_alone():
    assert output('stat', '-c', '%a %U %G %n', '/home/velmora', '/run/user/100000') == \
        '700 velmora velmora /home/velmora\n700 velmora velmora /run/user/100000\n'


@pytest.mark.parametrize('mode', [0o700, 0o750])
def test_project_that_the_sessions_user_cannot_read_is_refused(tmp_path, mode):
    project = tmp_path / 'project'
    shutil.copytree(PROJECT / 'sandbox', project / 'sandbox')
    project.chmod(mode)
    result = subprocess.run([project / 'sandbox/device', '--', 'true'],
                            text=True, capture_output=True, timeout=DEADLINE)
    assert (result.returncode, result.stderr) == (
        125,
        f"sandbox/device: the session's user cannot read {project}/sandbox; everybody has to be able to read the "
        "project's folder\n")


def test_program_of_the_session_in_another_group():
    said = output(SESSION, '--group', 'privileged', 'sh', '-c', 'id -nu; id -ng', options=['--no-buses'])
    assert said == 'velmora\nprivileged\n'


@pytest.mark.parametrize('who', [[], ['setpriv', '--reuid=65534', '--clear-groups']], ids=['root', 'another user'])
def test_session_bus_refuses_others(who):
    result = device(*who, 'dbus-send', '--bus=unix:path=/run/user/100000/bus', '--print-reply', '--dest=org.freedesktop.DBus',
                    '/', 'org.freedesktop.DBus.ListNames', check=False)
    assert (result.returncode, result.stdout) == (1, '')


# Folders of the machine

def test_project_is_shown_read_only():
    result = device('sh', '-c', f'cmp {DEVICE} {DEVICE} && ! touch {PROJECT}/velmora-stray')
    assert 'Read-only' in result.stderr
    assert not (PROJECT / 'velmora-stray').exists()


def test_shown_folder_is_read_only(tmp_path):
    (tmp_path / 'file').write_text('content')
    result = device('sh', '-c', f'cat {tmp_path}/file && ! touch {tmp_path}/velmora-stray',
                    options=['--show', tmp_path])
    assert result.stdout == 'content'
    assert not (tmp_path / 'velmora-stray').exists()


def test_writable_folder_is_the_machines(tmp_path):
    device('sh', '-c', f'echo content > {tmp_path}/file', options=['--writable', tmp_path])
    assert (tmp_path / 'file').read_text() == 'content\n'


def test_command_runs_in_the_folder_of_the_caller():
    assert output('pwd', cwd=PROJECT / 'sandbox') == f'{PROJECT}/sandbox\n'


# The machine stays unchanged

WRITE_EVERYWHERE = f"""
    for file in {" ".join(STRAY_FILES)}; do echo stray > $file || exit 9; done
    echo stray >> /etc/passwd
    setsid sleep 1000 &
    mkdir /tmp/place && mount -t tmpfs velmora-stray /tmp/place || exit 9
    echo ready"""


@pytest.mark.parametrize('number, status', [
    (None, 0), (signal.SIGINT, 130), (signal.SIGTERM, 143), (signal.SIGHUP, 129), (signal.SIGKILL, -9)])
def test_nothing_is_left_at_the_end(number, status):
    before = mounts()
    with Running(WRITE_EVERYWHERE + ("; trap '' INT TERM HUP; sleep 1000" if number else '')) as running:
        assert running.line() == 'ready'
        if number:
            running.process.send_signal(number)
        assert running.vanish() == ''
        assert running.process.returncode == status
    assert [path for path in STRAY_FILES if os.path.lexists(path)] == []
    assert 'stray' not in Path('/etc/passwd').read_text()
    assert mounts() == before


def test_signal_that_comes_while_the_device_ends():
    """The shell that supervises the device may just have taken its end. Many moments of the end are tried."""
    for attempt in range(20):
        with Running('echo ready; read line', '--no-buses', '--cgroup') as running:
            assert running.line() == 'ready'
            running.process.stdin.close()
            moment = time.monotonic() + attempt / 4000
            # This process stays busy, because the order of the two differs more often then.
            while time.monotonic() < moment:
                pass
            running.process.send_signal(signal.SIGTERM)
            assert running.process.wait(timeout=DEADLINE) in (1, 128 + signal.SIGTERM)


def test_devices_live_side_by_side():
    script = """gdbus call --system --dest org.freedesktop.DBus --object-path / \
        --method org.freedesktop.DBus.ListNames > /dev/null && echo {0} > /etc/velmora-name && echo up
        read line; cat /etc/velmora-name"""
    with Running(script.format('first')) as first, Running(script.format('second')) as second:
        assert (first.line(), second.line()) == ('up', 'up')
        assert first.process.communicate('go on\n', timeout=DEADLINE)[0] == 'first\n'
        assert second.process.communicate('go on\n', timeout=DEADLINE)[0] == 'second\n'
