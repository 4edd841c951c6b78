# SPDX-FileCopyrightText: velmora-installationhandler contributors
# SPDX-License-Identifier: BSD-3-Clause
"""Descriptions of what the package manager refuses."""

import pytest

PREFIX = 'zarn_installation_error_desc_'


@pytest.fixture
def outcomes(standins, catalogues, device, program, client, signals):
    """Starts the service with a catalogue of the package manager's, and lets it fail with errors."""
    package_manager = standins.start('package-manager', installs='nothing')
    device.mark_as_emulator()

    def install(texts, *errors):
        if texts:
            catalogues.install('zarn_eng_en', {PREFIX + code: text for code, text in texts.items()})
        program.start()
        for error in errors:
            package_manager.refuse('Install', error, 'Not for users: %1 %2', times=1)
        client.install([f'/{error}.rpm' for error in errors])
        return signals.wait('installFinished')
    return install


@pytest.mark.parametrize('error, text', [
    ('ru.quon.ZARN.Error.NoSpace', 'zarn_installation_error_desc_NoSpace (code: NoSpace)'),
    ('a.b', 'zarn_installation_error_desc_b (code: b)'),
    ('a.b.c.d.e.F', 'zarn_installation_error_desc_F (code: F)'),
    ('org.freedesktop.DBus.Error.NoReply', 'zarn_installation_error_desc_NoReply (code: NoReply)'),
    ('a.b._1', 'zarn_installation_error_desc__1 (code: _1)'),
])
def test_without_catalogue_the_identifier_stands_in(outcomes, error, text):
    assert outcomes({}, error) == (False, text)


@pytest.mark.parametrize('error, text', [
    ('ru.quon.ZARN.Error.NoSpace', 'Kein Platz, nirgends (code: NoSpace)'),
    ('another.prefix.NoSpace', 'Kein Platz, nirgends (code: NoSpace)'),
    ('a.b.nospace', 'zarn_installation_error_desc_nospace (code: nospace)'),
    ('a.b.Error', 'zarn_installation_error_desc_Error (code: Error)'),
    ('a.b.One', 'Only One of them (code: %3)'),
    ('a.b.Two', 'Only Two of them (code: %3)'),
    ('a.b.Three', 'Only Three of them (code: Three)'),
    ('a.b.Four', 'Only %4 of them (code: Four)'),
    ('a.b.Percent', '100 % (code: Percent)'),
    ('a.b.Lines', 'One\nand another (code: Lines)'),
    ('a.b.Markup', '<b>&amp;</b> (code: Markup)'),
])
def test_catalogue_describes(outcomes, error, text):
    texts = {'NoSpace': 'Kein Platz, nirgends', 'One': 'Only %1 of them', 'Two': 'Only %2 of them',
             'Three': 'Only %3 of them', 'Four': 'Only %4 of them', 'Percent': '100 %', 'Lines': 'One\nand another',
             'Markup': '<b>&amp;</b>'}
    assert outcomes(texts, error) == (False, text)


def test_one_line_for_each_file(outcomes):
    assert outcomes({'NoSpace': 'No space'}, 'a.b.NoSpace', 'a.b.Conflict', 'c.d.NoSpace') == \
        (False, 'No space (code: NoSpace)\nzarn_installation_error_desc_Conflict (code: Conflict)\n'
                'No space (code: NoSpace)')


def test_absent_package_manager_is_described(device, service, client, signals):
    device.mark_as_emulator()

    client.install(['/absent.rpm'])

    assert signals.wait('installFinished') == \
        (False, 'zarn_installation_error_desc_ServiceUnknown (code: ServiceUnknown)')


def test_package_manager_that_dies_is_described(standins, device, service, client, signals):
    device.mark_as_emulator()
    package_manager = standins.start('package-manager')
    package_manager.exit_on('Install', 'before')

    client.install(['/absent.rpm'])

    package_manager.wait_exit()
    assert signals.wait('installFinished') == (False, 'zarn_installation_error_desc_NoReply (code: NoReply)')
