# SPDX-FileCopyrightText: velmora-installationhandler contributors
# SPDX-License-Identifier: BSD-3-Clause
"""The notifications of --notify, and package files that are opened by what the desktop knows of them."""

import signal
import subprocess
from configparser import ConfigParser
from pathlib import Path

import documents
import pytest
from oddservice import OddService, ask, die
from standin.names import SESSION

DECLINED, CONFIRMED = 'dismissed', 'requestInstall'
DESKTOP_ENTRY = Path('/usr/share/applications/velmora-installctl.desktop')
TYPES = ('application/x-rpm', 'application/x-redhat-package-manager')

INSTALLING = ('system-software-install', 'Installing…')
INSTALLED = ('dialog-information', 'Installed')
FAILED = ('dialog-error', 'Not installed')
UNKNOWN = ('dialog-warning', 'Outcome not known')

# How long a notification stays: until it is replaced, or as long as the desktop's notifications do.
FOR_EVER, USUAL = 0, -1


@pytest.fixture
def files(tmp_path):
    """The folder of some files."""
    for name in ('a', 'b', '<b>&amp;"', 'two  words.rpm'):
        (tmp_path / name).touch()
    return tmp_path


@pytest.fixture
def notifications(standins):
    """The stand-in of the notification service."""
    return standins.start('notifications')


@pytest.fixture
def shown(standins):
    """The notifications of the program since the last time: the number that is replaced, icon and title, body, and how long
    it stays; or the number that is closed. The service has notifications of its own."""
    def take():
        calls = standins.notifications.calls()
        standins.notifications.clear()
        return [read(call) for call in calls if call.method != 'Notify' or call.arguments[0] == 'velmora-installctl']
    return take


def read(call):
    if call.method == 'CloseNotification':
        return call.arguments[0]
    assert call.method == 'Notify', call
    _, replaced, icon, title, body, actions, hints, expiry = call.arguments
    assert (list(actions), hints) == ([], {'desktop-entry': DESKTOP_ENTRY.stem})
    return replaced, (icon, title), body, expiry


def test_outcomes(notifications, shown, manager, service, dialog, ctl, files, device):
    """The outcome takes the place of "Installing…". The service's text is the body."""
    dialog.use('Controlled')

    def end(number, answer, *names, status):
        run = ctl.start('install', '--notify', '--quiet', *names, folder=files)
        for position in range(len(names)):
            dialog.wait_shown(number + position)
            dialog.answer(answer, number=number + position)
        assert run.wait().status == status
        return shown()

    assert end(1, CONFIRMED, 'a', status=0) == [(0, INSTALLING, 'a', FOR_EVER), (1, INSTALLED, 'a', USUAL)]
    # It is known to the user, who has done that.
    assert end(2, DECLINED, 'a', status=2) == [(0, INSTALLING, 'a', FOR_EVER), 2]
    manager.refuse('Install', 'org.example.Error.NoSpace', '')
    assert end(3, CONFIRMED, f'{files}/a', status=1) == \
        [(0, INSTALLING, 'a', FOR_EVER),
         (3, FAILED, 'a: zarn_installation_error_desc_NoSpace (code: NoSpace)', USUAL)]
    manager.restore('Install')

    # One notification for all files. Those that need somebody's attention are told.
    assert end(4, CONFIRMED, 'a', '<b>&amp;"', status=0) == \
        [(0, INSTALLING, 'a', FOR_EVER), (4, INSTALLING, '&lt;b&gt;&amp;amp;&quot;', FOR_EVER),
         (4, INSTALLED, 'a\n&lt;b&gt;&amp;amp;&quot;', USUAL)]
    manager.refuse('Install', 'org.example.Error.NoSpace', '', times=1)
    assert end(6, CONFIRMED, 'a', 'b', status=1)[1:] == \
        [(5, INSTALLING, 'b', FOR_EVER),
         (5, FAILED, 'a: zarn_installation_error_desc_NoSpace (code: NoSpace)', USUAL)]

    assert ctl('install', '--notify', 'absent', 'a', '/', folder=files).status == 66
    assert shown() == [(0, FAILED, 'absent: No such file or directory\n/: not a regular file', USUAL)]
    many = [f'absent{number}' for number in range(11)]
    lines = [f'{name}: No such file or directory' for name in many]
    for count, body in (10, lines[:10]), (11, [*lines[:10], '… +1']):
        assert ctl('install', '--notify', *many[:count], folder=files).status == 66
        assert shown() == [(0, FAILED, '\n'.join(body), USUAL)]
    device.forbid_installing()
    assert ctl('install', '--notify', 'a', 'b', folder=files).status == 3
    # The service has a notification of its own for it.
    assert shown() == [(0, INSTALLING, 'a', FOR_EVER), 9]


def test_one_is_declined(notifications, shown, manager, service, dialog, ctl, files, device):
    """The other files have been installed all the same."""
    dialog.use('Controlled')

    def install(number, *answers):
        run = ctl.start('install', '--notify', '--quiet', 'a', 'b', folder=files)
        for position, answer in enumerate(answers):
            dialog.wait_shown(number + position)
            dialog.answer(answer, number=number + position)
        return run.wait().status, shown()[2:]

    assert install(1, CONFIRMED, DECLINED) == (2, [(1, INSTALLED, 'a', USUAL)])
    assert install(3, DECLINED, CONFIRMED) == (2, [(2, INSTALLED, 'b', USUAL)])
    assert install(5, DECLINED, DECLINED) == (2, [3])


def test_unknown_outcomes(notifications, shown, session_bus, processes, ctl, files):
    """Nobody knows how it ends."""
    assert ctl('install', '--notify', '--quiet', 'a', folder=files).status == 69
    begin, (*end, body, _) = shown()
    assert (begin, end) == ((0, INSTALLING, 'a', FOR_EVER), [1, FAILED])
    assert body.startswith('a: the service is not available: ')

    odd = OddService(session_bus, processes)
    odd.plans['a'] = [ask, die]
    assert ctl('install', '--notify', '--quiet', 'a', folder=files).status == 4
    assert shown()[1:] == [(2, UNKNOWN, 'a: the service ended before it reported an outcome', USUAL)]

    odd.start()
    odd.plans['a'] = [ask]
    assert ctl('install', '--notify', '--timeout', '1', 'a', 'b', folder=files).status == 124
    assert shown()[1:] == [(3, UNKNOWN, 'a: no outcome within 1 s; the service goes on', USUAL)]
    run = ctl.start('install', '--notify', 'a', folder=files)
    run.wait_line('waiting for your answer')
    run.send_signal(signal.SIGTERM)
    assert run.wait().status == 143
    assert shown()[1:] == [(4, UNKNOWN, 'a: the service goes on', USUAL)]


def test_language(notifications, shown, ctl):
    assert ctl('install', '--notify', 'absent', LANG='de_DE.UTF-8', LANGUAGE='').status == 66
    assert shown()[0][1] != FAILED


def test_notification_service_that_fails(standins, manager, service, device, ctl, files):
    """Without notifications everything else is as usual, and nothing is waited for longer than 3 seconds."""
    device.mark_as_emulator()

    def install():
        return ctl('install', '--notify', '--quiet', 'a', folder=files)
    assert install() == (0, [], [])

    notifications = standins.start('notifications')
    notifications.refuse('Notify', 'org.example.Error.Full', 'Too many.', times=1)
    assert install() == (0, [], [])
    assert [call.arguments[1] for call in notifications.calls('Notify')] == [0, 0]
    # After a call that is not answered there is no other one.
    notifications.clear()
    notifications.hang('Notify')
    assert install() == (0, [], [])
    assert len(notifications.calls('Notify')) == 1
    notifications.restore('Notify')
    notifications.exit_on('Notify', 'after')
    assert install() == (0, [], [])
    notifications.wait_exit()
    standins.start('notifications').exit_on('Notify', 'before')
    assert install() == (0, [], [])


def test_desktop_entry():
    """It is valid, and no default by itself."""
    check = subprocess.run(['desktop-file-validate', DESKTOP_ENTRY], capture_output=True, text=True)
    assert (check.returncode, check.stdout) == (0, '')
    entry = ConfigParser(delimiters='=', interpolation=None)
    entry.optionxform = str
    entry.read(DESKTOP_ENTRY, encoding='utf-8')
    entry = entry['Desktop Entry']
    assert entry['MimeType'] == ''.join(f'{name};' for name in TYPES)
    assert (entry['NoDisplay'], entry['Terminal']) == ('true', 'false')


@pytest.fixture
def desktop(processes, environment):
    """Starts a program of the desktop, which knows the installed desktop entries. What it starts in turn may stay."""
    subprocess.run(['update-desktop-database', DESKTOP_ENTRY.parent], check=True)

    def start(*command, **variables):
        quiet = ['sh', '-c', 'exec "$0" "$@" >/dev/null 2>&1', *command]
        return processes.start_in_session(command[0], quiet, {**environment, **variables})
    return start


@pytest.fixture
def default(processes, desktop):
    """The desktop entry that opens package files."""
    def ask(name):
        said = processes.run('gio', [SESSION, 'gio', 'mime', name], {'LC_ALL': 'C.UTF-8'})
        return said.splitlines()[0].rpartition(' ')[2]
    return lambda: {ask(name) for name in TYPES}


@pytest.fixture
def others():
    """Files that a test makes, and that go at its end."""
    made = []

    def make(path, text):
        made.append(path)
        path.parent.mkdir(exist_ok=True)
        path.write_text(text, encoding='utf-8')
    yield make
    for path in set(made):
        path.unlink()


def test_default(processes, desktop, default, others):
    """The choice of a device, and that of a user, come before it. Both can choose it."""
    assert default() == {DESKTOP_ENTRY.name}
    other = '[Desktop Entry]\nType=Application\nName=Other\nExec=true %f\nMimeType=' + ';'.join(TYPES)
    others(DESKTOP_ENTRY.with_name('other.desktop'), f'{other};\n')
    subprocess.run(['update-desktop-database', DESKTOP_ENTRY.parent], check=True)
    (example,) = documents.examples('docs/integration.md', 'Opening package files')
    path = Path(example.partition('\n')[0].removeprefix('# '))
    others(path, example.replace(DESKTOP_ENTRY.name, 'other.desktop'))
    assert default() == {'other.desktop'}
    others(path, example)
    assert default() == {DESKTOP_ENTRY.name}
    processes.run('xdg-mime', [SESSION, 'xdg-mime', 'default', 'other.desktop', *TYPES])
    assert default() == {'other.desktop'}


def test_file_that_is_opened(platform, shown, processes, program, screen, desktop, device, package):
    """As file managers and browsers do it, with the real dialog."""
    program.start(environment=screen.environment())
    first, second = package('first'), package('second')
    first = first.rename(first.with_name('fir st %20.rpm'))

    desktop('gio', 'open', first, **screen.environment()).end_awaited = True
    window = screen.wait_for_window(program.process.pid)
    screen.press_keys(window, 'Escape')
    platform.notifications.wait_call('CloseNotification')
    assert shown() == [(0, INSTALLING, first.name, FOR_EVER), 1]
    assert device.packages() == []

    opening = desktop('xdg-open', second, **screen.environment())
    screen.wait_for_window(program.process.pid, after=window)
    screen.click(*screen.wait_for_install_button())
    assert processes.wait_end(opening) == 0
    assert shown() == [(0, INSTALLING, second.name, FOR_EVER), (2, INSTALLED, second.name, USUAL)]
    assert device.packages() == ['second']
