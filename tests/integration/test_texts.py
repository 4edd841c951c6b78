# SPDX-FileCopyrightText: velmora-installationhandler contributors
# SPDX-License-Identifier: BSD-3-Clause
"""From which catalogue a text comes."""

import pytest

ABORTED = 'installationhandler-user-aborted'
OURS, OURS_GERMAN = 'velmora-installationhandler_eng_en', 'velmora-installationhandler-de'
ZARN, ZARN_GERMAN = 'zarn_eng_en', 'zarn-de'


@pytest.fixture
def text_of_a_refusal(dialog, program, client, signals):
    """Starts the service in a language, and declines an installation."""
    def decline(language='de_DE.UTF-8', **variables):
        dialog.use('Dismissing')
        program.start(environment={'LANG': language, **variables})
        client.install(['/absent.rpm'])
        return signals.wait('installFinished')[1]
    return decline


@pytest.mark.parametrize('language, text', [
    ('C.UTF-8', 'The user cancelled the installation'),
    ('en_GB.UTF-8', 'The user cancelled the installation'),
    ('tlh.UTF-8', 'The user cancelled the installation'),
    ('de_DE.UTF-8', 'Die Installation wurde vom Benutzer abgebrochen'),
    ('de_AT.UTF-8', 'Die Installation wurde vom Benutzer abgebrochen'),
    ('de_CH@euro', 'Die Installation wurde vom Benutzer abgebrochen'),
])
def test_installed_catalogues_speak(text_of_a_refusal, language, text):
    assert text_of_a_refusal(language) == text


def test_session_may_choose_another_language_than_its_region(text_of_a_refusal):
    assert text_of_a_refusal('en_US.UTF-8', LANGUAGE='de') == 'Die Installation wurde vom Benutzer abgebrochen'


@pytest.mark.parametrize('present, speaks', [
    ([], ABORTED),
    ([OURS], OURS),
    ([OURS, OURS_GERMAN], OURS_GERMAN),
    ([OURS_GERMAN], OURS_GERMAN),
    ([OURS, OURS_GERMAN, ZARN], ZARN),
    ([OURS, OURS_GERMAN, ZARN, ZARN_GERMAN], ZARN_GERMAN),
    ([OURS, OURS_GERMAN, ZARN_GERMAN], ZARN_GERMAN),
    ([OURS_GERMAN, 'velmora-installationhandler-de_DE'], 'velmora-installationhandler-de_DE'),
    ([ZARN_GERMAN, 'zarn-de_DE'], 'zarn-de_DE'),
    ([OURS, 'velmora-installationhandler-fr', 'zarn-fr'], OURS),
    ([OURS, 'velmora-installationhandler_de', 'zarn_de', 'zarn-eng_en'], OURS),
], ids=lambda value: '+'.join(value) if isinstance(value, list) else '')
def test_catalogue_installed_last_speaks(catalogues, text_of_a_refusal, present, speaks):
    """Those of the package manager before our own, the language's before engineering English."""
    catalogues.remove_all()
    for name in present:
        catalogues.install(name, {ABORTED: name})

    assert text_of_a_refusal() == speaks


def test_text_that_a_catalogue_lacks_comes_from_the_next(catalogues, text_of_a_refusal):
    catalogues.install(ZARN_GERMAN, {'something-else': 'etwas anderes'})
    catalogues.install(ZARN, {'something-else': 'something else'})

    assert text_of_a_refusal() == 'Die Installation wurde vom Benutzer abgebrochen'


def test_error_descriptions_are_in_the_users_language(standins, catalogues, device, program, client, signals):
    standins.start('package-manager').refuse('Install', 'a.b.NoSpace')
    device.mark_as_emulator()
    catalogues.install(ZARN, {'zarn_installation_error_desc_NoSpace': 'No space'})
    catalogues.install(ZARN_GERMAN, {'zarn_installation_error_desc_NoSpace': 'Kein Platz'})
    program.start(environment={'LANG': 'de_DE.UTF-8'})

    client.install(['/absent.rpm'])

    assert signals.wait('installFinished') == (False, 'Kein Platz (code: NoSpace)')
