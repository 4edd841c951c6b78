# SPDX-FileCopyrightText: velmora-installationhandler contributors
# SPDX-License-Identifier: BSD-3-Clause
"""Other programs that ask the service at the same time: outcomes that may be theirs."""

import pytest
from gi.repository import Gio, GLib
from harness import bus
from harness.client import NAME, PATH
from support.removalrequests import KNOWN

QUESTION = 'waiting for your answer'
UNCERTAIN = '(may be the outcome of another request)'
DECLINED, CONFIRMED = 'dismissed', 'requestInstall'


@pytest.fixture
def files(tmp_path):
    """The folder of the files a and b."""
    for name in 'ab':
        (tmp_path / name).touch()
    return tmp_path


@pytest.fixture
def asking(manager, service, dialog):
    """The service, whose dialogs stay until they are answered."""
    dialog.use('Controlled')
    return service


def test_installation_that_nobody_asks_about(asking, standins, dialog, ctl, client, files, signals):
    """Its report looks like the one that is waited for."""
    standins.start('developer-mode', silent_installation=True)
    run = ctl.start('install', '--json', 'a', folder=files)
    dialog.wait_shown(1)
    client.install(['/other.rpm'], sdk_mode=True)
    dialog.answer(CONFIRMED)

    assert run.wait()[::2] == (4, [f'a: installed {UNCERTAIN}'])
    assert run.objects()[-2:] == [
        {'event': 'result', 'subject': f'{files}/a', 'position': 1, 'count': 1, 'outcome': 'done', 'text': '',
         'reported': True, 'uncertain': True},
        {'event': 'end', 'outcome': 'unclear', 'status': 4}]
    signals.wait('installFinished', 2)

    # Nobody knows of requests that other programs have made before.
    run = ctl.start('install', 'a', folder=files)
    dialog.wait_shown(2)
    dialog.answer(DECLINED, number=2)
    assert run.wait().status == 2


def test_two_runs(asking, manager, dialog, ctl, files, signals):
    """The second one begins while the first one installs, whose report comes before the second one's answer."""
    manager.hang('Install', 1)
    first = ctl.start('install', '--quiet', 'a', folder=files)
    dialog.wait_shown(1)
    dialog.answer(CONFIRMED)
    manager.wait_call('Install')
    second = ctl.start('install', '--quiet', 'b', folder=files)
    dialog.wait_shown(2)
    manager.release('Install')

    assert first.wait() == (4, [], [f'a: installed {UNCERTAIN}'])
    assert second.wait() == (4, [], [f'b: installed {UNCERTAIN}'])
    dialog.answer(DECLINED, number=2)
    signals.wait('installFinished', 2)
    # Nobody waits any more.
    run = ctl.start('install', '--quiet', 'a', folder=files)
    dialog.wait_shown(3)
    dialog.answer(CONFIRMED, number=3)
    assert run.wait() == (0, [], [])


def test_two_runs_that_remove(manager, service, ctl):
    manager.answer('GetPackage', KNOWN)
    manager.hang('Remove', 2)
    runs = {}
    for number, name in enumerate(('app', 'other'), 1):
        runs[name] = ctl.start('remove', '--quiet', name)
        manager.wait_call('Remove', number)
    manager.release('Remove')
    for name, run in runs.items():
        assert run.wait() == (4, [], [f'{name}: removed {UNCERTAIN}'])


def test_second_question(asking, manager, dialog, ctl, client, files, signals):
    """The dialogs of two requests, one of which installs already."""
    manager.hang('Install', 1)
    run = ctl.start('install', '--quiet', 'a', folder=files)
    dialog.wait_shown(1)
    dialog.answer(CONFIRMED)
    manager.wait_call('Install')
    client.install(['/other.rpm'])
    dialog.wait_shown(2)
    manager.release('Install')

    assert run.wait() == (4, [], [f'a: installed {UNCERTAIN}'])
    dialog.answer(DECLINED, number=2)
    signals.wait('installFinished', 2)


def request_before(dialog, ctl, client, files, *option):
    """A run that begins while the user is asked about the file of another request."""
    client.install(['/other.rpm'])
    dialog.wait_shown(1)
    run = ctl.start('install', *option, 'a', folder=files)
    run.wait_line('waiting')
    dialog.answer(DECLINED)
    dialog.wait_shown(2)
    dialog.answer(CONFIRMED, number=2)
    assert run.wait()[::2] == (0, [])
    return run


def test_request_before(asking, dialog, ctl, client, files):
    """Its report is passed over, since the service has not asked again."""
    run = request_before(dialog, ctl, client, files)
    assert run.wait().out == [
        'a: reading', 'a: waiting for the service',
        "a: waiting for your answer on the device's screen, then installing", 'a: installed']


def test_silent_installations(asking, manager, device, ctl, client, files, signals):
    """On the emulator, any other installation may be the one that is reported."""
    device.mark_as_emulator()
    manager.hang('Install')
    run = ctl.start('install', '--sdk', '--quiet', 'a', folder=files)
    manager.wait_call('Install')
    client.install(['/other.rpm'])
    manager.wait_call('Install', 2)
    manager.release('Install')

    assert run.wait() == (4, [], [f'a: installed {UNCERTAIN}'])
    signals.wait('installFinished', 2)
    # Removals end in other reports.
    manager.hang('Install')
    run = ctl.start('install', '--quiet', 'a', folder=files)
    manager.wait_call('Install', 3)
    client.remove([])
    manager.release('Install')
    assert run.wait() == (0, [], [])


def test_removals(manager, service, ctl, client, signals, device):
    """All that ends in a report of a removal counts, and that is not only removals."""
    device.mark_as_emulator()
    manager.answer('GetPackage', KNOWN)
    others = [
        (lambda: client.remove(['other']), UNCERTAIN, 3),
        (lambda: client.remove_launcher('/absent.desktop'), UNCERTAIN, 2),
        (lambda: client.call('installFiles', '(asb)', ['/other.rpm'], True), UNCERTAIN, 3),
        (lambda: client.call('installFiles', '(as)', ['/other.rpm']), '', 2),
    ]
    without_interface = Gio.DBusMessage.new_method_call(NAME, PATH, None, 'removePackages')
    without_interface.set_body(GLib.Variant('(as)', (['other'],)))
    others.append(
        (lambda: client.connection.send_message(
            without_interface,
            Gio.DBusSendMessageFlags.NONE),
            UNCERTAIN,
            3))
    removals = 0
    for ask, mark, count in others:
        manager.hang('Remove', 1)
        run = ctl.start('remove', '--quiet', 'app', 'next')
        manager.wait_call('Remove', removals + 1)
        ask()
        manager.release('Remove')
        assert run.wait() == ((4, [], [f'{name}: removed {mark}' for name in ('app', 'next')]) if mark else (0, [], []))
        removals += count
        signals.wait('removalFinished', removals)


def test_service_that_starts_again(session_bus, manager, program, ctl, client):
    """Requests to the service that has ended do not count for the next one."""
    session_bus.allow_activation()
    program.start()
    manager.answer('GetPackage', KNOWN)
    manager.hang('Remove', 2)
    run = ctl.start('remove', '--quiet', 'app', 'next')
    manager.wait_call('Remove')
    client.remove(['other'])
    manager.wait_call('Remove', 2)
    program.kill()

    assert run.wait() == (4, [], ['app: unclear: the service ended before it reported an outcome'])


class TestWithoutMonitor:
    """A bus that lets nobody see the calls of others."""

    @pytest.fixture
    def session_bus(self, processes, environment, tmp_path, monkeypatch):
        configuration = bus.SESSION_CONFIGURATION.read_text(encoding='utf-8')
        rule = '<deny send_interface="org.freedesktop.DBus.Monitoring"/>'
        strict = tmp_path / 'session-bus.conf'
        strict.write_text(configuration.replace('</policy>', f'{rule}</policy>'), encoding='utf-8')
        monkeypatch.setattr(bus, 'SESSION_CONFIGURATION', strict)
        return bus.PrivateBus.session(processes, environment)

    def test_questions_tell(self, asking, manager, dialog, ctl, client, files, signals):
        """Calls are not seen, but a second question is."""
        run = ctl.start('monitor')
        run.wait_line('the service runs')
        objects = request_before(dialog, ctl, client, files, '--json').objects()
        assert [made.get('state') for made in objects] == ['reading', 'waiting', 'confirming', None, None]

        manager.hang('Install', 1)
        install = ctl.start('install', '--quiet', 'a', folder=files)
        dialog.wait_shown(3)
        dialog.answer(CONFIRMED, number=3)
        manager.wait_call('Install', 2)
        client.install(['/other.rpm'])
        dialog.wait_shown(4)
        manager.release('Install')
        assert install.wait() == (4, [], [f'a: installed {UNCERTAIN}'])
        dialog.answer(DECLINED, number=4)

        run.wait_line('installFinished', 4)
        assert not [line for line in run.process.lines() if 'installFiles' in line]
