# SPDX-FileCopyrightText: velmora-installationhandler contributors
# SPDX-License-Identifier: BSD-3-Clause
"""Launchers in the user's own folder: deleted, and the runtime manager hears of it."""

import pytest
from gi.repository import GLib
from support.devicestate import make_own_folder

FAILED = "Failed to call ZARN hook 'OnRemove' for Runtime Manager service:  "
ABSENT = FAILED + '"The name ru.quon.RuntimeManager was not provided by any .service files"'


@pytest.fixture
def launcher(applications):
    path = applications / 'org.example.App.desktop'
    path.touch()
    return path


@pytest.fixture
def calls(service, system_calls):
    """The service's calls of other programs on the system bus."""
    return lambda: [(call.destination, call.path, call.interface, call.member, call.signature, call.arguments)
                    for call in system_calls() if call.destination != 'com.nokia.mce']


def hook(name):
    return 'ru.quon.RuntimeManager', '/ru/quon/ZARN/Hooks', 'ru.quon.ZARN.Hooks', 'OnRemove', 's', (name,)


@pytest.mark.parametrize('file, name', [
    ('org.example.App.desktop', 'org'), ('app.desktop', 'app'), ('app', 'app'), ('.hidden.desktop', ''),
    ('two..desktop', 'two'), ('with blank, and-more.desktop', 'with blank, and-more'),
    ('\u00e4\u4e2d\u6587.desktop', '\u00e4\u4e2d\u6587'), ('sub.folder/deep/nested.app.desktop', 'nested'),
    ('org.example.App.txt', 'org'),
])
def test_is_deleted_and_the_hook_called(standins, service, client, signals, applications, calls, file, name,
                                        session_calls):
    """The hook receives the part of the file's name before its first dot. The back ends and the home screen hear
    nothing. Known behaviour 21, 40."""
    standins.start('runtime-manager', 'package-manager')
    path = applications / file
    make_own_folder(path.parent)
    path.touch()

    assert client.remove_launcher(path) == ()

    assert not path.exists()
    assert calls() == [hook(name)]
    assert session_calls() == []
    assert signals.names() == []
    assert service.log() == []


def test_hook_follows_the_deletion(standins, service, client, launcher):
    """The caller gets no answer before the hook has returned. Known behaviour 3."""
    hooks = standins.start('runtime-manager')
    hooks.hang('OnRemove')

    pending = client.start('removePackageByDesktopFile', '(s)', str(launcher))
    hooks.wait_call('OnRemove')

    assert not launcher.exists()
    assert not pending.answered
    hooks.release('OnRemove')
    assert pending.wait() == ()


@pytest.mark.parametrize('hook_there', [True, False])
def test_hook_is_called_for_what_cannot_be_deleted(standins, service, client, signals, applications, calls, hook_there):
    if hook_there:
        standins.start('runtime-manager')
    (applications / 'kernel').symlink_to('/proc/sys/kernel')
    path = applications / 'kernel/osrelease'

    client.remove_launcher(path)

    assert calls() == [hook('osrelease')]
    assert signals.names() == []
    assert service.warnings() == [f'Failed to remove desktopFile: "{path}"', *([] if hook_there else [ABSENT])]


@pytest.mark.parametrize('text, shown', [('not today', '"not today"'), ('', '""'), ('a\n"b"', r'"a\n\"b\""')])
def test_hook_refuses(standins, service, client, signals, launcher, text, shown):
    standins.start('runtime-manager').refuse('OnRemove', 'a.b.Refused', text)

    assert client.remove_launcher(launcher) == ()

    service.barrier()
    assert service.log() == ['warning default: ' + FAILED + shown]
    assert not launcher.exists()
    assert signals.names() == []


@pytest.mark.parametrize('values', ['(true,)', "('', 1)", '([1, 2],)', '()'])
def test_answer_of_the_hook_is_not_looked_at(standins, service, client, launcher, values):
    standins.start('runtime-manager').answer('OnRemove', GLib.Variant.parse(None, values, None, None))

    client.remove_launcher(launcher)

    service.barrier()
    assert service.log() == []


def test_same_launcher_twice(standins, service, client, launcher, calls):
    standins.start('runtime-manager')

    client.remove_launcher(launcher)
    client.remove_launcher(launcher)

    assert calls() == [hook('org')]
    assert service.warnings() == ['void InstallationHandler::removePackageByDesktopFile(const QString&) '
                                  f'bad desktop file: "{launcher}"']
