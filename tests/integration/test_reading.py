# SPDX-FileCopyrightText: velmora-installationhandler contributors
# SPDX-License-Identifier: BSD-3-Clause
"""Package files, good and bad ones, in the dialog and in the log."""

import subprocess

import pytest
from packages import SigningKey, damage


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
    assert signals.arguments('installFinished') == [(False, '\n'.join(
        f'zarn_installation_error_desc_{code} (code: {code})'
        for code in ('NotAPackage', 'NotAPackage', 'FileNotFound')))]
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
    assert signals.arguments('installFinished') == \
        [(False, 'zarn_installation_error_desc_DamagedPackage (code: DamagedPackage)')]


def test_known_key_verifies(service, ask, package, tmp_path):
    """librpm logs the verification, which shows that the service reads with it."""
    file = package('trusted')
    with SigningKey('Somebody known') as key:
        key.sign(file, legacy=True)
        (tmp_path / 'key.asc').write_text(key.public_key())
    subprocess.run(['rpm', '--import', tmp_path / 'key.asc'], check=True)

    assert ask(file)[0]['name'] == 'trusted'

    assert f'{file}: digests signatures OK' in service.log()
