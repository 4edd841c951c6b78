# SPDX-FileCopyrightText: velmora-installationhandler contributors
# SPDX-License-Identifier: BSD-3-Clause
"""The catalogues that texts and descriptions of errors come from."""

import pytest

ABORTED = 'installationhandler-user-aborted'
OURS, OURS_GERMAN = 'velmora-installationhandler_eng_en', 'velmora-installationhandler-de'
PREFIX = 'zarn_installation_error_desc_'
ZARN, ZARN_GERMAN = 'zarn_eng_en', 'zarn-de'
ENGLISH, GERMAN = 'The user cancelled the installation', 'Die Installation wurde vom Benutzer abgebrochen'


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
    *((language, ENGLISH) for language in ('C.UTF-8', 'en_GB.UTF-8', 'en_US.UTF-8', 'tlh.UTF-8', 'zh_HK.UTF-8')),
    *((language, GERMAN) for language in ('de_DE.UTF-8', 'de_AT.UTF-8', 'de_CH@euro')),
    *((language, 'O utilizador cancelou a instalação') for language in ('pt_PT.UTF-8', 'pt_AO.UTF-8')),
    ('pt_BR.UTF-8', 'O usuário cancelou a instalação'),
    ('fr_CH.UTF-8', 'Installation annulée par l’utilisateur'),
    ('fr_CA.UTF-8', 'L’utilisateur a annulé l’installation'),
    ('zh_CN.UTF-8', '用户已取消安装'),
    ('zh_TW.UTF-8', '使用者已取消安裝'),
    *((language, 'Brukeren avbrøt installasjonen') for language in ('nb_NO.UTF-8', 'no_NO.UTF-8')),
    *((language, 'Корисник је отказао инсталацију') for language in ('sr_RS.UTF-8', 'sr_RS@latin')),
])
def test_installed_catalogues_speak(text_of_a_refusal, language, text):
    assert text_of_a_refusal(language) == text


@pytest.mark.parametrize('region, languages, text', [
    ('en_US.UTF-8', 'de', GERMAN), ('de_DE.UTF-8', 'nn_NO:pt_BR:de', 'O usuário cancelou a instalação')])
def test_session_may_choose_another_language_than_its_region(text_of_a_refusal, region, languages, text):
    assert text_of_a_refusal(region, LANGUAGE=languages) == text


@pytest.mark.parametrize('present, speaks', [
    ([], ABORTED), ([OURS], OURS), ([OURS, OURS_GERMAN], OURS_GERMAN), ([OURS_GERMAN], OURS_GERMAN),
    ([OURS, OURS_GERMAN, ZARN], ZARN), ([OURS, OURS_GERMAN, ZARN, ZARN_GERMAN], ZARN_GERMAN),
    ([OURS, OURS_GERMAN, ZARN_GERMAN], ZARN_GERMAN),
    ([OURS_GERMAN, 'velmora-installationhandler-de_DE'], 'velmora-installationhandler-de_DE'),
    ([ZARN_GERMAN, 'zarn-de_DE'], 'zarn-de_DE'), ([OURS, 'velmora-installationhandler-fr', 'zarn-fr'], OURS),
    ([OURS, 'velmora-installationhandler_de', 'zarn_de', 'zarn-eng_en'], OURS),
], ids=lambda value: '+'.join(value) if isinstance(value, list) else '')
def test_catalogue_installed_last_speaks(catalogues, text_of_a_refusal, present, speaks):
    """The catalogues of the package manager come before our own, and those of the language before engineering
    English."""
    catalogues.remove_all()
    for name in present:
        catalogues.install(name, {ABORTED: name})

    assert text_of_a_refusal() == speaks


def test_text_that_a_catalogue_lacks_comes_from_the_next(catalogues, text_of_a_refusal):
    catalogues.install(ZARN_GERMAN, {'something-else': 'etwas anderes'})
    catalogues.install(ZARN, {'something-else': 'something else'})

    assert text_of_a_refusal() == 'Die Installation wurde vom Benutzer abgebrochen'


def test_error_descriptions_are_in_the_users_language(standins, catalogues, device, program, install_and_wait):
    standins.start('package-manager').refuse('Install', 'a.b.NoSpace')
    device.mark_as_emulator()
    catalogues.install(ZARN, {'zarn_installation_error_desc_NoSpace': 'No space'})
    catalogues.install(ZARN_GERMAN, {'zarn_installation_error_desc_NoSpace': 'Kein Platz'})
    program.start(environment={'LANG': 'de_DE.UTF-8'})

    assert install_and_wait(['/absent.rpm']) == (False, 'Kein Platz (code: NoSpace)')


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


@pytest.mark.parametrize('error', ['ru.quon.ZARN.Error.NoSpace', 'a.b', 'a.b.c.d.e.F',
                                   'org.freedesktop.DBus.Error.NoReply', 'a.b._1'])
def test_without_catalogue_the_identifier_stands_in(outcomes, error):
    """Known behaviour 64, 65."""
    code = error.rpartition('.')[2]
    assert outcomes({}, error) == (False, f'zarn_installation_error_desc_{code} (code: {code})')


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
    """Known behaviour 66."""
    texts = {'NoSpace': 'Kein Platz, nirgends', 'One': 'Only %1 of them', 'Two': 'Only %2 of them',
             'Three': 'Only %3 of them', 'Four': 'Only %4 of them', 'Percent': '100 %', 'Lines': 'One\nand another',
             'Markup': '<b>&amp;</b>'}
    assert outcomes(texts, error) == (False, text)


def test_one_line_for_each_file(outcomes):
    assert outcomes({'NoSpace': 'No space'}, 'a.b.NoSpace', 'a.b.Conflict', 'c.d.NoSpace') == \
        (False, 'No space (code: NoSpace)\nzarn_installation_error_desc_Conflict (code: Conflict)\n'
                'No space (code: NoSpace)')
