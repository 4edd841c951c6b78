# SPDX-FileCopyrightText: velmora-installationhandler contributors
# SPDX-License-Identifier: BSD-3-Clause
"""The package is upgraded while the service runs. The service that runs ends later, as it would without the upgrade."""

import os
import shutil
import subprocess

import pytest
from packages.product import build_product
from support.packagekit import install

INSTALLED = (True, '')
PROGRAM, DIALOG = 'usr/bin/velmora-installationhandler', 'usr/share/velmora-installationhandler/SideloadDialog.qml'
OLD_TITLE, NEW_TITLE = 'Install this app?', 'A new dialog'


@pytest.fixture(scope='module')
def packages(pytestconfig, tmp_path_factory):
    """Two versions of the product's package: the installed files, and ones with another program and dialog."""
    folder = tmp_path_factory.mktemp('packages')
    old, new = pytestconfig.getoption('stage'), folder / 'stage'
    shutil.copytree(old, new)
    with (new / PROGRAM).open('ab') as program:
        program.write(b'new')
    dialog = (new / DIALOG).read_text(encoding='utf-8')
    (new / DIALOG).write_text(dialog.replace('title: question.text', f'title: "{NEW_TITLE}"'), encoding='utf-8')
    return build_product(folder / 'old', '1.0', old), build_product(folder / 'new', '2.0', new)


@pytest.fixture
def upgrade(device, packages, processes):
    """The old package is installed until the device is reset; a function that upgrades it, however long that takes, and
    meanwhile calls another one every 10 seconds."""
    old, new = packages
    install(old)

    def run(meanwhile=lambda: None):
        rpm = processes.start('rpm', ['rpm', '-U', '--nodeps', new])
        rpm.end_awaited = True
        while not processes.happens(lambda: not rpm.alive, 10):
            meanwhile()
        assert rpm.returncode == 0, rpm.text
    return run


@pytest.fixture
def package_manager(standins):
    return standins.start('package-manager', installs='nothing')


@pytest.fixture
def wait_dialog(unit, screen, signals):
    """Waits for a dialog, which comes after another one or first; its window."""
    def wait(after=None):
        signals.wait('needConfirm', 2 if after else 1)
        return screen.wait_for_window(unit.main_process(), after)
    return wait


def test_package_has_no_scriptlets(packages):
    scriptlets = subprocess.run(['rpm', '-qp', '--scripts', *packages], check=True, capture_output=True, text=True)
    assert scriptlets.stdout == ''


def is_new(process):
    """Whether a process runs the program of the new package."""
    return os.path.samefile(f'/proc/{process}/exe', f'/{PROGRAM}')


def test_while_a_dialog_is_on_screen(upgrade, package_manager, provide_display,
                                     client, signals, unit, screen, wait_dialog):
    """The request goes on with the dialog that the service has, which Qt reads once."""
    provide_display()
    client.install(['/one.rpm', '/two.rpm'])
    first = wait_dialog()
    process = unit.main_process()

    upgrade()

    screen.confirm(first)
    second = wait_dialog(after=first)
    assert screen.title(second) == OLD_TITLE
    screen.confirm(second)
    assert signals.wait('installFinished') == INSTALLED
    assert [call.arguments[0] for call in package_manager.calls('Install')] == ['/one.rpm', '/two.rpm']
    assert unit.main_process() == process


def test_while_the_service_is_idle(upgrade, package_manager, provide_display,
                                   client, signals, unit, screen, wait_dialog):
    """The service that still runs can use the new dialog. The next one is the new program."""
    provide_display()
    client.install([])
    process = unit.main_process()

    # Each request gives the service 30 seconds more.
    upgrade(meanwhile=lambda: client.install([]))

    before = len(signals.arguments('installFinished'))
    client.install(['/one.rpm'])
    window = wait_dialog()
    assert screen.title(window) == NEW_TITLE
    screen.confirm(window)
    assert signals.wait('installFinished', before + 1) == INSTALLED
    assert (unit.main_process(), is_new(process)) == (process, False)

    unit.stop()
    unit.wait_state('inactive (dead)', 'success')
    client.install([])
    assert is_new(unit.main_process())
