# SPDX-FileCopyrightText: velmora-installationhandler contributors
# SPDX-License-Identifier: BSD-3-Clause
"""The catalogues have exactly the texts of the service and of the dialog, translated."""

import re
import xml.etree.ElementTree
from pathlib import Path

import pytest

PROJECT = Path(__file__).resolve().parents[2]
SOURCES = sorted(path for pattern in ('common/*.cpp', 'service/*.cpp', 'install/*.cpp', 'removal/*.cpp', 'qml/*.qml')
                 for path in PROJECT.glob(pattern))
CATALOGUES = sorted((PROJECT / 'translations').glob('*.ts'))
ENGLISH = PROJECT / 'translations/velmora-installationhandler_eng_en.ts'

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


def test_languages():
    assert [path.name for path in CATALOGUES] == [
        *(f'velmora-installationhandler-{language}.ts' for language in ('ar', 'de', 'es', 'fi', 'fr', 'ru', 'zh_CN')),
        'velmora-installationhandler_eng_en.ts']


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
        assert translation.text.strip(), message.get('id')


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


@pytest.mark.parametrize('catalogue', [path for path in CATALOGUES if path != ENGLISH], ids=name)
def test_language_is_not_english(catalogue):
    english = translations(ENGLISH)
    for identifier, text in translations(catalogue).items():
        assert text != english[identifier], identifier


def test_engineering_english_is_the_sources_text():
    for message in messages(ENGLISH):
        assert message.findtext('translation') == message.findtext('source')
