# SPDX-FileCopyrightText: velmora-installationhandler contributors
# SPDX-License-Identifier: BSD-3-Clause

"""The device in a sandbox, looked at from the machine that it runs on."""

import os
import signal
import subprocess
from pathlib import Path

import pytest

PROJECT = Path(__file__).resolve().parents[2]
DEVICE = str(PROJECT / 'sandbox/device')
DEADLINE = 30

# One file in every place that programs commonly write to; none of them may appear on the machine.
STRAY_FILES = [f'{folder}/velmora-stray' for folder in (
    '', '/boot', '/dev/shm', '/etc', '/home', '/mnt', '/opt', '/root', '/run', '/srv', '/tmp', '/usr/bin',
    '/usr/share/applications', '/var/cache', '/var/lib', '/var/lib/rpm', '/var/log', '/var/tmp')]


def device(*command, options=(), check=True, **kwargs):
    """Runs a command on a device; its result."""
    result = subprocess.run([DEVICE, *options, '--', *command], text=True,
                            capture_output=True, timeout=DEADLINE, **kwargs)
    assert not check or result.returncode == 0, result.stderr
    return result


def output(*command, **kwargs):
    """What a command prints on a device."""
    return device(*command, **kwargs).stdout


def mounts():
    return Path('/proc/self/mountinfo').read_text()


class Running:
    """A device that runs a shell script; `line()` awaits what it prints, `vanish()` the end of its last process."""

    def __init__(self, script):
        self.process = subprocess.Popen([DEVICE, '--', 'bash', '-c', script], text=True, stdin=subprocess.PIPE,
                                        stdout=subprocess.PIPE)

    def line(self):
        return self.process.stdout.readline().strip()

    def vanish(self):
        """All processes of the device hold the pipe, so its end is theirs."""
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
    """A stage with a program and a service of the session bus that runs it. (Failing, so that the bus waits no longer.)"""
    program = tmp_path / 'stage/usr/bin/velmora-sample'
    program.parent.mkdir(parents=True)
    program.write_text('#!/bin/sh\necho started > /tmp/started\nexit 1\n')
    program.chmod(0o755)
    service = tmp_path / 'stage/usr/share/dbus-1/services/org.velmoraos.sample.service'
    service.parent.mkdir(parents=True)
    service.write_text('[D-BUS Service]\nName=org.velmoraos.sample\nExec=/usr/bin/velmora-sample\n')
    return tmp_path / 'stage'


# The command and how it ends

@pytest.mark.parametrize('status', [0, 1, 77, 255])
def test_exit_status_is_that_of_the_command(status):
    assert device('sh', '-c', f'exit {status}', check=False).returncode == status


def test_exit_status_of_a_command_that_a_signal_ended():
    assert device('sh', '-c', 'kill -TERM $$', check=False).returncode == 128 + signal.SIGTERM


def test_exit_status_of_a_missing_command():
    assert device('/no/such/program', check=False).returncode == 127


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
    # Read from standard input, since a plain user may have no access to the project's folder.
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
    assert (result.returncode, result.stdout) == (0, 'shell of /home/velmora\n')


# What the device is made of

def test_stage_lies_over_the_root(stage):
    assert output('stat', '-c', '%a %u', '/usr/bin/velmora-sample', options=['--stage', stage]) == '755 0\n'


def test_stage_may_be_anywhere(stage):
    odd = stage.rename(stage.with_name('a stage, with: odd\\name'))
    assert output('cat', '/usr/bin/velmora-sample', options=['--stage', odd]).startswith('#!/bin/sh')


def test_session_bus_starts_what_is_staged_and_knows_nothing_else(stage):
    listing = output('gdbus', 'call', '--session', '--dest', 'org.freedesktop.DBus', '--object-path', '/', '--method',
                     'org.freedesktop.DBus.ListActivatableNames', options=['--stage', stage])
    assert listing == "(['org.freedesktop.DBus', 'org.velmoraos.sample'],)\n"

    started = output('sh', '-c', 'gdbus call --session --dest org.velmoraos.sample --object-path / --method a.b.C '
                     '>/dev/null 2>&1; cat /tmp/started', options=['--stage', stage])
    assert started == 'started\n'


def test_system_bus_is_at_its_place_and_open_to_all():
    everybody = 'dbus-send --system --print-reply=literal --dest=org.freedesktop.DBus / org.freedesktop.DBus.'
    script = f'setpriv --reuid=100000 --clear-groups {everybody}RequestName string:ru.quon.Sample uint32:0'
    assert output('sh', '-c', script).split() == ['uint32', '1']
    assert 'ru.quon' not in output('sh', '-c', f'{everybody}ListActivatableNames')


def test_no_buses_unless_wanted():
    script = 'ls /run/dbus; echo address: ${DBUS_SESSION_BUS_ADDRESS-none}'
    assert output('sh', '-c', script, options=['--no-buses']) == 'address: none\n'


def test_only_own_processes_are_seen():
    names = output('sh', '-c', 'cat /proc/[0-9]*/comm', options=['--no-buses']).split()
    assert names == ['init', 'sh'] or names == ['init', 'sh', 'cat']


def test_rpm_database_is_own_and_empty():
    assert output('rpm', '--eval', '%_dbpath') == '/var/lib/rpm\n'
    assert output('rpm', '-qa') == ''
    assert output('sh', '-c', 'ls /var/lib/rpm').strip() != ''


def test_places_of_its_own_are_empty():
    assert output('sh', '-c', 'ls -A /tmp /home/velmora /dev/shm /usr/share/applications; ls -d /etc/velmora*',
                  options=['--no-buses'], check=False).split() == [
                      '/dev/shm:', '/home/velmora:', '/tmp:', '/usr/share/applications:']


def test_users_and_groups_of_a_device():
    assert output('getent', 'group', 'privileged') == 'privileged:x:100001:\n'
    assert output('id', '-nu', '100000') == 'velmora\n'


def test_environment_is_the_devices():
    caller = {'PATH': os.environ['PATH'], 'HOME': '/root', 'LANG': 'de_DE.UTF-8', 'DISPLAY': ':77', 'SECRET': 'x',
              'DBUS_SESSION_BUS_ADDRESS': 'unix:path=/x', 'QT_LOGGING_RULES': '*=true', 'ASAN_OPTIONS': 'a=1', 'CI': '1'}
    seen = dict(line.split('=', 1) for line in output('env', env=caller, options=['--no-buses']).splitlines())
    assert {name: seen[name] for name in ('HOME', 'LANG', 'XDG_RUNTIME_DIR', 'QT_LOGGING_RULES', 'ASAN_OPTIONS', 'CI')} == {
        'HOME': '/home/velmora', 'LANG': 'C.UTF-8', 'XDG_RUNTIME_DIR': '/run/user/0', 'QT_LOGGING_RULES': '*=true',
        'ASAN_OPTIONS': 'a=1', 'CI': '1'}
    assert not {'DISPLAY', 'SECRET', 'DBUS_SESSION_BUS_ADDRESS'} & seen.keys()


def test_display_of_the_caller_on_request_only():
    assert output('sh', '-c', 'echo $DISPLAY', options=['--display'], env={**os.environ, 'DISPLAY': ':77'}) == ':77\n'


# Folders of the machine

def test_project_is_shown_read_only():
    result = device('sh', '-c', f'cmp {DEVICE} {DEVICE} && ! touch {PROJECT}/velmora-stray')
    assert 'Read-only' in result.stderr
    assert not (PROJECT / 'velmora-stray').exists()


def test_shown_folder_is_read_only(tmp_path):
    (tmp_path / 'file').write_text('content')
    result = device(
        'sh',
        '-c',
        f'cat {tmp_path}/file && ! touch {tmp_path}/velmora-stray',
        options=[
            '--show',
            tmp_path])
    assert result.stdout == 'content'
    assert not (tmp_path / 'velmora-stray').exists()


def test_writable_folder_is_the_machines(tmp_path):
    device('sh', '-c', f'echo content > {tmp_path}/file', options=['--writable', tmp_path])
    assert (tmp_path / 'file').read_text() == 'content\n'


def test_command_runs_in_the_folder_of_the_caller():
    assert output('pwd', cwd=PROJECT / 'sandbox') == f'{PROJECT}/sandbox\n'


# Nothing reaches the machine

WRITE_EVERYWHERE = f"""
    for file in {" ".join(STRAY_FILES)}; do echo stray > $file || exit 9; done
    echo stray >> /etc/passwd
    setsid sleep 1000 &
    mkdir /tmp/place && mount -t tmpfs velmora-stray /tmp/place || exit 9
    echo ready"""


def assert_nothing_left(mounts_before):
    assert [path for path in STRAY_FILES if os.path.lexists(path)] == []
    assert 'stray' not in Path('/etc/passwd').read_text()
    assert mounts() == mounts_before


def test_nothing_is_left_after_an_ordinary_end():
    before = mounts()
    with Running(WRITE_EVERYWHERE) as running:
        assert running.line() == 'ready'
        assert running.vanish() == ''
        assert running.process.returncode == 0
    assert_nothing_left(before)


@pytest.mark.parametrize('number, status', [
    (signal.SIGINT, 130), (signal.SIGTERM, 143), (signal.SIGHUP, 129), (signal.SIGKILL, -9)])
def test_nothing_is_left_after_a_signal(number, status):
    before = mounts()
    with Running(WRITE_EVERYWHERE + "; trap '' INT TERM HUP; sleep 1000") as running:
        assert running.line() == 'ready'
        running.process.send_signal(number)
        assert running.vanish() == ''
        assert running.process.returncode == status
    assert_nothing_left(before)


def test_devices_live_side_by_side():
    script = """gdbus call --system --dest org.freedesktop.DBus --object-path / \
        --method org.freedesktop.DBus.ListNames > /dev/null && echo {0} > /etc/velmora-name && echo up
        read line; cat /etc/velmora-name"""
    with Running(script.format('first')) as first, Running(script.format('second')) as second:
        assert (first.line(), second.line()) == ('up', 'up')
        assert first.process.communicate('go on\n', timeout=DEADLINE)[0] == 'first\n'
        assert second.process.communicate('go on\n', timeout=DEADLINE)[0] == 'second\n'
