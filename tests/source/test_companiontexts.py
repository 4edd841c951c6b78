# SPDX-FileCopyrightText: velmora-installationhandler contributors
# SPDX-License-Identifier: BSD-3-Clause
"""The catalogues of the companion program have exactly its texts, translated. So has its desktop entry."""

import re
import unicodedata
from configparser import ConfigParser
from xml.etree import ElementTree

import pytest
from test_sources import ROOT

FOLDER = ROOT / 'ctl'
CATALOGUES = sorted((FOLDER / 'translations').glob('*.ts'))
ENGLISH = FOLDER / 'translations/velmora-installctl_eng_en.ts'
TRANSLATED = [path for path in CATALOGUES if path != ENGLISH]
IN_SOURCE = re.compile(r'((?: *//: .*\n)+) *//% "(.*)"\n.*\bqtTrId\("([^"]+)"')


def in_source():
    """The texts in the source: by identifier, the English text."""
    found = [match for path in FOLDER.glob('*.cpp') for match in IN_SOURCE.findall(path.read_text(encoding='utf-8'))]
    assert len({identifier for _, _, identifier in found}) == len(found)
    return {identifier: text for _, text, identifier in found}


def messages(catalogue):
    return ElementTree.parse(catalogue).getroot().findall('context/message')


def translations(catalogue):
    return {message.get('id'): message.findtext('translation') for message in messages(catalogue)}


def language(catalogue):
    return catalogue.stem.partition('-installctl-')[2]


def parts(text):
    """The parts of a text that every language keeps."""
    return sorted(re.findall(r'%\d|[…:]$', text.replace('：', ':').replace(' …', '…')))


def test_every_text_has_a_comment_for_translators():
    calls = sum(path.read_text(encoding='utf-8').count('qtTrId("') for path in FOLDER.glob('*.cpp'))
    assert len(in_source()) == calls


def test_every_catalogue_is_compiled():
    (languages,) = re.findall(r'set\(languages ([^)]+)\)',
                              (FOLDER / 'translations/CMakeLists.txt').read_text(encoding='utf-8'))
    assert [language(path) for path in TRANSLATED] == languages.split()


@pytest.mark.parametrize('catalogue', CATALOGUES, ids=lambda path: path.stem)
def test_catalogue_has_exactly_the_texts_of_the_source(catalogue):
    assert {message.get('id'): message.findtext('source') for message in messages(catalogue)} == in_source()
    assert all(message.findtext('extracomment') for message in messages(catalogue))
    assert ElementTree.parse(catalogue).getroot().get('language') == (language(catalogue) or 'en')


@pytest.mark.parametrize('catalogue', CATALOGUES, ids=lambda path: path.stem)
def test_texts_keep_their_form(catalogue):
    english = translations(ENGLISH)
    assert english == in_source()
    for message in messages(catalogue):
        identifier, translation = message.get('id'), message.find('translation')
        assert translation.get('type') is None, identifier
        assert translation.text == translation.text.strip(), identifier
        assert parts(translation.text) == parts(english[identifier]), identifier
        assert unicodedata.is_normalized('NFC', translation.text), identifier


@pytest.mark.parametrize('catalogue', TRANSLATED, ids=language)
def test_language_is_not_english(catalogue):
    english = translations(ENGLISH)
    assert not [identifier for identifier, text in translations(catalogue).items() if text == english[identifier]]
    assert not [text for text in translations(catalogue).values() if re.search('[\'"`´]|\\.\\.\\.|  ', text)]


def test_desktop_entry_has_the_same_languages():
    entry = ConfigParser(delimiters='=', interpolation=None)
    entry.optionxform = str
    entry.read(FOLDER / 'velmora-installctl.desktop', encoding='utf-8')
    names = {key: value for key, value in entry['Desktop Entry'].items() if key.startswith('Name')}
    assert list(names) == ['Name', *(f'Name[{language(path)}]' for path in TRANSLATED)]
    assert len(set(names.values())) == len(names)
