# SPDX-FileCopyrightText: velmora-installationhandler contributors
# SPDX-License-Identifier: BSD-3-Clause
"""Package files that change while the user is asked about them."""

import pytest

FAILED = 'zarn_installation_error_desc_{0} (code: {0})'


@pytest.fixture(autouse=True)
def asked(standins, dialog):
    """The package manager installs, and the user answers when told."""
    standins.start('package-manager')
    dialog.use('Controlled')


@pytest.fixture
def file(package):
    return package('before', version='1.0', summary='What the user sees')


def confirm(client, dialog, signals, file, change):
    """Changes a file while its dialog is up, and confirms; the outcome."""
    client.install([file])
    shown = dialog.wait_shown()
    assert (shown['name'], shown['summary'], shown['fileName']) == ('before', 'What the user sees', str(file))
    change(file)
    dialog.answer('requestInstall')
    return signals.wait('installFinished')


def replace_by_folder(file):
    file.unlink()
    file.mkdir()


def replace_by_link(file):
    file.unlink()
    file.symlink_to(file)


@pytest.mark.parametrize('change, code', [
    (lambda file: file.unlink(), 'FileNotFound'),
    (replace_by_folder, 'NotAPackage'),
    (replace_by_link, 'Failed'),
    (lambda file: file.write_bytes(b''), 'NotAPackage'),
    (lambda file: file.write_bytes(file.read_bytes()[:-10]), 'DamagedPackage'),
], ids=['deleted', 'replaced by a folder', 'replaced by a link', 'emptied', 'cut off'])
def test_package_manager_finds_out(service, client, signals, dialog, device, package, file, change, code):
    assert confirm(client, dialog, signals, file, change) == (False, FAILED.format(code))
    assert device.packages() == []

    client.install([package('after')])
    dialog.wait_shown(2)
    dialog.answer('requestInstall', number=2)
    assert signals.wait('installFinished', 2) == (True, '')
    assert device.packages() == ['after']


def test_package_manager_gets_what_is_there_by_then(service, client, signals, dialog, device, package, file):
    """Files go by their paths. Known behaviour 46."""
    assert confirm(client, dialog, signals, file, package('other').replace) == (True, '')
    assert device.packages() == ['other']
    assert service.debugs() == ['RPM Package info: "before" "1.0" "What the user sees"']


def test_next_file_is_read_when_its_turn_comes(service, client, signals, dialog, device, package, file):
    later = [package('deleted'), package('replaced'), package('declined')]
    client.install([file, *later])
    dialog.wait_shown(1)
    later[0].unlink()
    package('replacement').replace(later[1])

    dialog.answer('requestInstall', number=1)
    seen = dialog.wait_shown(2)
    assert (seen['name'], seen['fileName']) == ('before', str(later[0]))
    dialog.answer('requestInstall', number=2)
    assert dialog.wait_shown(3)['name'] == 'replacement'
    dialog.answer('requestInstall', number=3)

    assert dialog.wait_shown(4)['name'] == 'declined'
    later[2].unlink()
    dialog.answer('dismissed', number=4)
    assert signals.wait('installFinished') == (False, 'The user cancelled the installation')
    assert sorted(device.packages()) == ['before', 'replacement']
