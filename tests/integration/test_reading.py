# SPDX-FileCopyrightText: velmora-installationhandler contributors
# SPDX-License-Identifier: BSD-3-Clause
"""Package files, good and bad ones, in the dialog and in the log, and files that change while the user is asked."""

import os
import re
import signal
import subprocess
from pathlib import Path

import pytest
from packages import SigningKey, damage
from standin.remoteerror import RemoteError

LARGE, HUGE = 1 << 26, 1 << 40
FAILED = 'zarn_installation_error_desc_{0} (code: {0})'


@pytest.fixture
def ask(platform, service, client, signals, dialog):
    """Has files installed, and returns the contents of the dialog for each one."""
    dialog.use('Confirming')

    def install(*files):
        client.install(files)
        signals.wait('installFinished')
        service.barrier()
        assert [call.arguments for call in platform.package_manager.calls()] == [(str(file), {}) for file in files]
        return [dialog.wait_shown(number) for number in range(1, len(files) + 1)]
    return install


def test_package_is_shown(service, signals, device, ask, package):
    file = package('shown', version='1.2~rc3', summary='Äpfel & <b>Birnen</b>', summaries={'de': 'Obst'})

    assert ask(file) == [{'name': 'shown', 'version': '1.2~rc3', 'summary': 'Äpfel & <b>Birnen</b>',
                          'fileName': str(file)}]

    assert service.debugs() == ['RPM Package info: "shown" "1.2~rc3" "Äpfel & <b>Birnen</b>"']
    assert signals.arguments('installFinished') == [(True, '')]


def test_unreadable_file_is_shown_with_what_was_read_before(service, signals, device, ask, package, tmp_path):
    """The package manager is the one to refuse it. Known behaviour 43, 44."""
    good = package('good', summary='The one before')
    bad = tmp_path / 'bad.rpm'
    bad.write_bytes(b'no package at all' * 1000)
    missing = tmp_path / 'missing.rpm'

    shown = ask(bad, good, bad, missing)

    before = {'name': 'good', 'version': '1.0', 'summary': 'The one before'}
    nothing = {'name': '', 'version': '', 'summary': ''}
    assert shown == [{**nothing, 'fileName': str(bad)}, {**before, 'fileName': str(good)},
                     {**before, 'fileName': str(bad)}, {**before, 'fileName': str(missing)}]
    first, good_one, second = service.debugs()
    assert first.startswith('could not read rpm: 1 "')
    assert good_one == 'RPM Package info: "good" "1.0" "The one before"'
    assert second.startswith('could not read rpm: 1 "')
    assert signals.arguments('installFinished') == [
        (False, '\n'.join(FAILED.format(code) for code in ('NotAPackage', 'NotAPackage', 'FileNotFound')))]
    assert device.packages() == ['good']


def test_names_of_one_request_are_not_shown_in_the_next(service, client, signals, dialog, ask, package):
    ask(package('earlier'))

    client.install(['/absent.rpm'])

    assert dialog.wait_shown(2) == {'name': '', 'version': '', 'summary': '', 'fileName': '/absent.rpm'}


@pytest.mark.parametrize('legacy', [False, True], ids=['header', 'header and payload'])
def test_unknown_key_changes_nothing(service, signals, device, ask, package, legacy):
    """Known behaviour 45."""
    file = package('signed')
    with SigningKey('Nobody knows') as key:
        key.sign(file, legacy=legacy)

    assert ask(file)[0]['name'] == 'signed'

    assert service.debugs() == ['RPM Package info: "signed" "1.0" "The application signed"']
    assert signals.arguments('installFinished') == [(True, '')]
    assert device.packages() == ['signed']


def test_signature_that_does_not_match_changes_nothing(service, signals, ask, package):
    """The package manager makes its own checks. Known behaviour 45."""
    file = package('tampered')
    with SigningKey('Somebody') as key:
        key.sign(file, legacy=True)
    file.write_bytes(damage.payload(file.read_bytes()))

    assert ask(file)[0]['name'] == 'tampered'

    assert service.debugs() == ['RPM Package info: "tampered" "1.0" "The application tampered"']
    assert signals.arguments('installFinished') == [(False, FAILED.format('DamagedPackage'))]


def test_known_key_verifies(service, ask, package, tmp_path):
    """librpm logs the verification, which shows that the service reads with it."""
    file = package('trusted')
    with SigningKey('Somebody known') as key:
        key.sign(file, legacy=True)
        (tmp_path / 'key.asc').write_text(key.public_key())
    subprocess.run(['rpm', '--import', tmp_path / 'key.asc'], check=True)

    assert ask(file)[0]['name'] == 'trusted'

    assert f'{file}: digests signatures OK' in service.log()


@pytest.fixture
def signed(package):
    """Makes a package that is signed by a key that nobody knows, followed by a hole in the file up to a size."""
    def make(size, legacy):
        file = package('sparse')
        with SigningKey('Nobody knows') as key:
            key.sign(file, legacy=legacy)
        os.truncate(file, size)
        return file
    return make


def bytes_read(process):
    """All that a process has read so far."""
    return int(re.search(r'rchar: (\d+)', Path(f'/proc/{process.pid}/io').read_text(encoding='ascii'))[1])


@pytest.mark.parametrize('legacy', [False, True], ids=['header', 'header and payload'])
def test_signature_of_the_payload_makes_the_service_read_all(
        service, manager, install_and_wait, device, signed, legacy):
    """Known behaviour 75."""
    file = signed(LARGE, legacy)
    device.mark_as_emulator()
    before = bytes_read(service.process)

    assert install_and_wait([file]) == (True, '')

    assert (bytes_read(service.process) - before > LARGE) == legacy


def test_service_that_reads_a_huge_file_can_be_stopped(service, client, signed):
    """Known behaviour 75."""
    request = client.start('installFiles', '(as)', [str(signed(HUGE, legacy=True))])
    service.wait_for_log('NOKEY')

    service.process.send_signal(signal.SIGTERM)

    assert service.wait_exit() == -signal.SIGTERM
    with pytest.raises(RemoteError) as unanswered:
        request.wait()
    assert unanswered.value.name == 'org.freedesktop.DBus.Error.NoReply'


def test_line_feed_in_a_path_begins_a_line_of_the_log(service, ask, package, tmp_path):
    """librpm writes the path as it is. Known behaviour 76."""
    file = package('loud')
    with SigningKey('Nobody knows') as key:
        key.sign(file)
    file = file.rename(tmp_path / 'a\nwarning default: forged.rpm')

    ask(file)

    assert any(line.startswith('forged.rpm: Header ') for line in service.warnings())


@pytest.fixture
def asked(standins, dialog):
    """The package manager installs, and the user answers when told."""
    standins.start('package-manager')
    dialog.use('Controlled')


@pytest.fixture
def file(asked, package):
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
    (lambda file: file.unlink(), 'FileNotFound'), (replace_by_folder, 'NotAPackage'), (replace_by_link, 'Failed'),
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
