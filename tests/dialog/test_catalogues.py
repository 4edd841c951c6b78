# SPDX-FileCopyrightText: velmora-installationhandler contributors
# SPDX-License-Identifier: BSD-3-Clause
"""The catalogues have exactly the texts of the service and of the dialog, translated."""

import re
import unicodedata
import xml.etree.ElementTree
from pathlib import Path

import pytest

PROJECT = Path(__file__).resolve().parents[2]
SOURCES = sorted(path for pattern in ('common/*.cpp', 'service/*.cpp', 'install/*.cpp', 'removal/*.cpp', 'qml/*.qml')
                 for path in PROJECT.glob(pattern))
CATALOGUES = sorted((PROJECT / 'translations').glob('*.ts'))
ENGLISH = PROJECT / 'translations/velmora-installationhandler_eng_en.ts'
TRANSLATED = [path for path in CATALOGUES if path != ENGLISH]

# The characters of all languages that end a text like the English one. Thai marks neither sentences nor questions.
ENDS = {'.': '.。।', '?': '?？؟;', ':': ':：'}
# Letters that look like the right ones and belong to other languages.
LOOKALIKES = {'fa': 'يك', 'ro': 'şţŞŢ'}

IDENTIFIER = re.compile(r'\bq[st]TrId\("([^"]+)"')
ENGLISH_AND_IDENTIFIER = re.compile(r'//% "(.*)"\n.*' + IDENTIFIER.pattern)


def sources(pattern):
    return [match for path in SOURCES for match in pattern.findall(path.read_text())]


def messages(catalogue):
    return xml.etree.ElementTree.parse(catalogue).getroot().findall('context/message')


def translations(catalogue):
    return {message.get('id'): message.findtext('translation') for message in messages(catalogue)}


def placeholders(text):
    return sorted(re.findall(r'%\d', text))


def name(path):
    return path.name


def language(catalogue):
    return catalogue.stem.rpartition('-')[2]


def mark_at_end(text):
    """The English punctuation mark that stands for the last character, empty for a letter."""
    return next((mark for mark, ends in ENDS.items() if text[-1] in ends), '')


def test_every_catalogue_is_compiled():
    (languages,) = re.findall(r'set\(languages\s([^)]+)\)', (PROJECT / 'translations/CMakeLists.txt').read_text())
    assert name(ENGLISH) == 'velmora-installationhandler_eng_en.ts'
    assert [name(path) for path in TRANSLATED] == \
        [f'velmora-installationhandler-{code}.ts' for code in languages.split()]


@pytest.mark.parametrize('catalogue', TRANSLATED, ids=name)
def test_catalogue_tells_its_language(catalogue):
    assert xml.etree.ElementTree.parse(catalogue).getroot().get('language') == language(catalogue)


def test_service_has_its_texts():
    assert {'installationhandler-user-aborted',
            'installationhandler-application_installation_disallowed'} <= set(sources(IDENTIFIER))


@pytest.mark.parametrize('catalogue', CATALOGUES, ids=name)
def test_catalogue_has_exactly_the_texts_of_the_sources(catalogue):
    identifiers = [message.get('id') for message in messages(catalogue)]
    assert len(identifiers) == len(set(identifiers))
    assert set(identifiers) == set(sources(IDENTIFIER))


@pytest.mark.parametrize('catalogue', CATALOGUES, ids=name)
def test_every_text_is_translated(catalogue):
    for message in messages(catalogue):
        translation = message.find('translation')
        assert translation.get('type') is None, message.get('id')
        assert translation.text, message.get('id')


@pytest.mark.parametrize('catalogue', CATALOGUES, ids=name)
def test_texts_begin_and_end_with_a_visible_character(catalogue):
    for identifier, text in translations(catalogue).items():
        assert text[0].isprintable() and not text[0].isspace(), identifier
        assert text[-1].isprintable() and not text[-1].isspace(), identifier


@pytest.mark.parametrize('catalogue', CATALOGUES, ids=name)
def test_letters_have_one_form(catalogue):
    assert unicodedata.is_normalized('NFC', ''.join(translations(catalogue).values()))


@pytest.mark.parametrize('catalogue', TRANSLATED, ids=name)
def test_typography(catalogue):
    for identifier, text in translations(catalogue).items():
        assert not set('\'"`´' + LOOKALIKES.get(language(catalogue), '')) & set(text), identifier
        assert '...' not in text and '  ' not in text, identifier


@pytest.mark.parametrize('catalogue', TRANSLATED, ids=name)
def test_texts_end_as_in_english(catalogue):
    english = translations(ENGLISH)
    thai = language(catalogue) == 'th'
    for identifier, text in translations(catalogue).items():
        mark = mark_at_end(english[identifier])
        assert mark_at_end(text) == ('' if thai and mark in '.?' else mark), identifier


@pytest.mark.parametrize('catalogue', CATALOGUES, ids=name)
def test_english_of_the_sources_is_that_of_the_catalogue(catalogue):
    english = dict((identifier, text) for text, identifier in sources(ENGLISH_AND_IDENTIFIER))
    assert english == {message.get('id'): message.findtext('source') for message in messages(catalogue)}


@pytest.mark.parametrize('catalogue', CATALOGUES, ids=name)
def test_translators_are_told_what_each_text_is(catalogue):
    assert all(message.findtext('extracomment') for message in messages(catalogue))


@pytest.mark.parametrize('catalogue', CATALOGUES, ids=name)
def test_placeholders_are_the_same(catalogue):
    english = translations(ENGLISH)
    for identifier, text in translations(catalogue).items():
        assert placeholders(text) == placeholders(english[identifier]), identifier


@pytest.mark.parametrize('catalogue', [path for path in TRANSLATED if language(path) != 'en_GB'], ids=name)
def test_language_is_not_english(catalogue):
    english = translations(ENGLISH)
    for identifier, text in translations(catalogue).items():
        # The word "Version" is the same in several languages.
        assert text != english[identifier] or identifier == 'installationhandler-version', identifier


def test_engineering_english_is_the_sources_text():
    for message in messages(ENGLISH):
        assert message.findtext('translation') == message.findtext('source')
