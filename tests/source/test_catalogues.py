# SPDX-FileCopyrightText: velmora-installationhandler contributors
# SPDX-License-Identifier: BSD-3-Clause
"""The catalogues of each program have exactly its texts, translated. So has the desktop entry."""

import re
import unicodedata
import xml.etree.ElementTree
from configparser import ConfigParser
from itertools import combinations
from pathlib import Path
from typing import NamedTuple

import pytest
from test_sources import ROOT

# The characters of all languages that end a text like the English one. Thai marks neither sentences nor questions.
ENDS = {'.': '.。।', '?': '?？؟;', ':': ':：', '…': '…'}
# Letters that look like the right ones and belong to other languages.
LOOKALIKES = {'fa': 'يك', 'ro': 'şţŞŢ'}
# Languages that have many texts in common. Others agree in a few words.
NEIGHBOURS = [('fr', 'fr_CA'), ('id', 'ms'), ('pt', 'pt_BR')]
# The languages whose desktop entry has the same words. That of engineering English has no code.
NAMESAKES = [['', 'en_GB'], ['da', 'nb'], ['fr', 'fr_CA'], ['pt', 'pt_BR']]

IDENTIFIER = re.compile(r'\bq[st]TrId\("([^"]+)"')
ENGLISH_AND_IDENTIFIER = re.compile(r'//% "(.*)"\n.*' + IDENTIFIER.pattern)


class Program(NamedTuple):
    """A program, or the service with its dialog."""

    name: str
    folder: Path
    sources: tuple
    # The texts that are the same in several languages.
    international: tuple = ()

    def texts(self, pattern):
        """The matches of a pattern in its source."""
        files = [path for glob in self.sources for path in sorted(ROOT.glob(glob))]
        return [match for path in files for match in pattern.findall(path.read_text())]

    @property
    def english(self):
        return self.folder / f'{self.name}_eng_en.ts'

    def catalogues(self):
        return sorted(self.folder.glob('*.ts'))

    def translated(self):
        return [path for path in self.catalogues() if path != self.english]


SERVICE = Program('velmora-installationhandler', ROOT / 'translations',
                  ('common/*.cpp', 'service/*.cpp', 'install/*.cpp', 'removal/*.cpp', 'qml/*.qml'),
                  ('installationhandler-version',))
COMPANION = Program('velmora-installctl', ROOT / 'ctl/translations', ('ctl/*.cpp',))
PROGRAMS = [SERVICE, COMPANION]

CATALOGUES = [(program, path) for program in PROGRAMS for path in program.catalogues()]
TRANSLATED = [(program, path) for program in PROGRAMS for path in program.translated()]


def each_of(catalogues):
    """Runs a test for each catalogue, with its program."""
    return pytest.mark.parametrize('program, catalogue', catalogues, ids=[path.name for _, path in catalogues])


def messages(catalogue):
    return xml.etree.ElementTree.parse(catalogue).getroot().findall('context/message')


def translations(catalogue):
    return {message.get('id'): message.findtext('translation') for message in messages(catalogue)}


def placeholders(text):
    return sorted(re.findall(r'%\d', text))


def language(catalogue):
    return catalogue.stem.rpartition('-')[2]


def mark_at_end(text):
    """The English punctuation mark that stands for the last character, empty for a letter."""
    return next((mark for mark, ends in ENDS.items() if text[-1] in ends), '')


@pytest.mark.parametrize('program', PROGRAMS, ids=lambda program: program.name)
def test_every_catalogue_is_compiled(program):
    (languages,) = re.findall(r'set\(VELMORA_LANGUAGES\s([^)]+)\)', (ROOT / 'cmake/Catalogues.cmake').read_text())
    assert program.english.exists()
    assert [path.name for path in program.translated()] == [f'{program.name}-{code}.ts' for code in languages.split()]


@each_of(TRANSLATED)
def test_catalogue_tells_its_language(program, catalogue):
    assert xml.etree.ElementTree.parse(catalogue).getroot().get('language') == language(catalogue)


def test_service_has_its_texts():
    assert {'installationhandler-user-aborted',
            'installationhandler-application_installation_disallowed'} <= set(SERVICE.texts(IDENTIFIER))


@each_of(CATALOGUES)
def test_catalogue_has_exactly_the_texts_of_the_sources(program, catalogue):
    identifiers = [message.get('id') for message in messages(catalogue)]
    assert len(identifiers) == len(set(identifiers))
    assert set(identifiers) == set(program.texts(IDENTIFIER))


@each_of(CATALOGUES)
def test_every_text_is_translated(program, catalogue):
    for message in messages(catalogue):
        translation = message.find('translation')
        assert translation.get('type') is None, message.get('id')
        assert translation.text, message.get('id')


@each_of(CATALOGUES)
def test_texts_begin_and_end_with_a_visible_character(program, catalogue):
    for identifier, text in translations(catalogue).items():
        assert text[0].isprintable() and not text[0].isspace(), identifier
        assert text[-1].isprintable() and not text[-1].isspace(), identifier


@each_of(CATALOGUES)
def test_letters_have_one_form(program, catalogue):
    assert unicodedata.is_normalized('NFC', ''.join(translations(catalogue).values()))


@each_of(TRANSLATED)
def test_typography(program, catalogue):
    for identifier, text in translations(catalogue).items():
        assert not set('\'"`´' + LOOKALIKES.get(language(catalogue), '')) & set(text), identifier
        assert '...' not in text and '  ' not in text, identifier


@each_of(TRANSLATED)
def test_texts_end_as_in_english(program, catalogue):
    english = translations(program.english)
    thai = language(catalogue) == 'th'
    for identifier, text in translations(catalogue).items():
        mark = mark_at_end(english[identifier])
        assert mark_at_end(text) == ('' if thai and mark in '.?' else mark), identifier


@each_of(CATALOGUES)
def test_english_of_the_sources_is_that_of_the_catalogue(program, catalogue):
    english = dict((identifier, text) for text, identifier in program.texts(ENGLISH_AND_IDENTIFIER))
    assert english == {message.get('id'): message.findtext('source') for message in messages(catalogue)}


@each_of(CATALOGUES)
def test_translators_are_told_what_each_text_is(program, catalogue):
    assert all(message.findtext('extracomment') for message in messages(catalogue))


@each_of(CATALOGUES)
def test_placeholders_are_the_same(program, catalogue):
    english = translations(program.english)
    for identifier, text in translations(catalogue).items():
        assert placeholders(text) == placeholders(english[identifier]), identifier


@each_of([(program, path) for program, path in TRANSLATED if language(path) != 'en_GB'])
def test_language_is_not_english(program, catalogue):
    english = translations(program.english)
    for identifier, text in translations(catalogue).items():
        assert text != english[identifier] or identifier in program.international, identifier


@pytest.mark.parametrize('program', PROGRAMS, ids=lambda program: program.name)
def test_no_catalogue_is_a_copy(program):
    texts = {language(path): translations(path) for path in program.translated()}
    for pair in combinations(texts, 2):
        one, other = (texts[code].items() for code in pair)
        most = len(one) - 1 if pair in NEIGHBOURS else len(one) // 4
        assert len(one & other) <= most, pair


@pytest.mark.parametrize('program', PROGRAMS, ids=lambda program: program.name)
def test_engineering_english_is_the_sources_text(program):
    for message in messages(program.english):
        assert message.findtext('translation') == message.findtext('source')


def test_desktop_entry_has_the_languages_of_its_program():
    entry = ConfigParser(delimiters='=', interpolation=None)
    entry.optionxform = str
    entry.read(ROOT / 'ctl/velmora-installctl.desktop', encoding='utf-8')
    names = {key[5:-1]: value for key, value in entry['Desktop Entry'].items() if key.startswith('Name')}
    assert list(names) == ['', *(language(path) for path in COMPANION.translated())]
    namesakes = [[code for code in names if names[code] == name] for name in dict.fromkeys(names.values())]
    assert [codes for codes in namesakes if len(codes) > 1] == NAMESAKES
