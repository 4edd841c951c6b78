# SPDX-FileCopyrightText: velmora-installationhandler contributors
# SPDX-License-Identifier: BSD-3-Clause
"""The program speaks the language of the session. The catalogues themselves are a subject of tests/source."""

import xml.etree.ElementTree as ET
from pathlib import Path

from harness.client import NAME

FOLDER = Path(__file__).resolve().parents[2] / 'ctl'
CATALOGUES = sorted((FOLDER / 'translations').glob('*.ts'))
ENGLISH = FOLDER / 'translations/velmora-installctl_eng_en.ts'
LANGUAGES = {path.stem.partition('-installctl-')[2]: path for path in CATALOGUES if path != ENGLISH}


def texts(catalogue):
    """The text of each identifier."""
    return {message.get('id'): message.find('translation').text for message in ET.parse(catalogue).iter('message')}


def test_session_speaks(ctl, tmp_path):
    """The language of the environment, and English where there is no catalogue."""
    english = ctl('--help')
    for language, catalogue in LANGUAGES.items():
        translated = texts(catalogue)
        lines = ctl('--help', LANG=f'{language}.UTF-8').out
        assert len(lines) == len(english.out)
        assert translated['installctl-help-statuses'] in lines
        for identifier in translated:
            if identifier.startswith('installctl-help-'):
                assert translated[identifier] in '\n'.join(lines), identifier
        assert ctl('install', tmp_path, 'absent', LANG=f'{language}.UTF-8', LANGUAGE='').err[0] == \
            f'{tmp_path}: {translated["installctl-not-regular"]}'
    german = texts(LANGUAGES['de'])
    for variables in ({'LANG': 'de_AT.UTF-8'}, {'LC_ALL': 'de_DE.UTF-8'}, {'LANGUAGE': 'de', 'LANG': 'en_US.UTF-8'},
                      {'LC_MESSAGES': 'de_DE'}):
        assert ctl(**variables).err[0] == f'velmora-installctl: {german["installctl-usage-no-command"]}', variables
    for language in ('C', 'en_US.UTF-8', 'tlh.UTF-8', ''):
        assert ctl('--help', LANG=language) == english
    for languages in ('en:de', 'en_US:de', 'tlh:en:de'):
        assert ctl('--help', LANGUAGE=languages, LANG='de_DE.UTF-8') == english, languages
    assert ctl(LANGUAGE='tlh:de:en', LANG='en_US.UTF-8') == ctl(LANG='de_DE.UTF-8')


def test_lines_of_outcomes(manager, program, dialog, ctl, tmp_path):
    """The service may speak another language."""
    dialog.use('Confirming')
    program.start()
    (tmp_path / 'a').touch()
    german = texts(LANGUAGES['de'])

    run = ctl('install', 'a', folder=tmp_path, LANG='de_DE.UTF-8')
    assert (run.status, run.err) == (0, [])
    assert [line for line in run.out if german['installctl-waiting'] not in line] == \
        [f'a: {german[f"installctl-{identifier}"]}' for identifier in ('reading', 'confirming', 'installed')]
    manager.refuse('Install', 'org.example.Error.NoSpace', times=1)
    assert ctl('install', '--quiet', 'a', folder=tmp_path, LANG='de_DE.UTF-8').err == \
        [f'a: {german["installctl-failed"]}: zarn_installation_error_desc_NoSpace (code: NoSpace)']


def test_without_catalogues(catalogues, session_bus, ctl):
    """Identifiers stand for the texts then, followed by the words and numbers that belong in these."""
    catalogues.remove_all()
    program = 'velmora-installctl:'

    see_help = f'{program} installctl-see-help velmora-installctl --help'
    for arguments, reason in [
        (['remove', '--launcher', '/absent', '%1'], 'clash %1 --launcher'), (['remove', '--sdk', 'a'], 'clash --sdk remove'),
        (['frobnicate'], 'unknown-command frobnicate'), (['remove', '--timeout', 'x'], 'seconds --timeout 2147483'),
        (['remove', '--no-wait', *'a' * 101], 'too-many-names --no-wait 100'),
    ]:
        assert ctl(*arguments) == (64, [], [f'{program} installctl-usage-{reason}', see_help])
    assert ctl('remove', '--launcher', '/') == (66, [], ['/: installctl-not-regular'])
    run = ctl('remove', 'first', 'second')
    assert (run.status, run.out) == (69, ['first: installctl-removing-of 1 2'])
    assert run.err[0].startswith(f'{program} installctl-unavailable The name {NAME} was not provided')
    assert run.err[1:] == [f'{program} installctl-unrequested 1 2']
    assert ctl('--help')[::2] == (0, [])
