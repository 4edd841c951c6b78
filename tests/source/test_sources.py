# SPDX-FileCopyrightText: velmora-installationhandler contributors
# SPDX-License-Identifier: BSD-3-Clause
"""Rules for all files of the tree."""

import os
import re
from pathlib import Path

import pytest

ROOT = Path(__file__).resolve().parents[2]

# Files and folders that builds and tests leave in the tree.
LEFTOVERS = {'.git', '.pytest_cache', '__pycache__', 'build', 'stage'}

PRODUCT = ('common', 'ctl', 'install', 'platform', 'qml', 'removal', 'service')

COPYRIGHT = 'SPDX-FileCopyrightText: velmora-installationhandler contributors'
LICENSE = 'SPDX-License-Identifier: BSD-3-Clause'

# Files that cannot hold these lines.
WITHOUT_LICENSE = {'CMakePresets.json', 'LICENSE'}

# References that readers of the tree cannot look up. A letter in brackets keeps a pattern from matching itself.
REFERENCES = {
    'a document': r'\bspecificatio[n]s?\b|\bas specifie[d]\b|\bPart[ ]\d+\.\d',
    'a ticket': r'\bissue[ ]#?\d|\bticket[ ]#?\d|\B#[1-9]\d*\b(?![0-9a-fA-F]*[;"\')])',
    'somebody\'s folder': r'/(home/(?!user\b|velmora\b)|Users/|wor[k]/|mnt/)\w',
}


def files(pattern='*'):
    """All files that belong to the tree."""
    for folder, folders, names in os.walk(ROOT):
        folders[:] = sorted(set(folders) - LEFTOVERS)
        yield from (Path(folder, name) for name in sorted(set(names) - LEFTOVERS) if Path(name).match(pattern))


def texts(pattern='*'):
    """All text files, each as its path and its text."""
    for path in files(pattern):
        try:
            yield path.relative_to(ROOT), path.read_text(encoding='utf-8')
        except UnicodeDecodeError:
            assert path.suffix == '.png', f'{path} is no text'


def findings(pattern, chosen):
    """All matches in the form "file:line: text"."""
    return [f'{path}:{number}: {line.strip()}' for path, text in chosen
            for number, line in enumerate(text.splitlines(), 1) if re.search(pattern, line)]


def product():
    return [(path, text) for path, text in texts() if path.parts[0] in PRODUCT]


def test_tree_is_read():
    seen = {str(path) for path, _ in texts()}
    assert {
        'README.md',
        'service/main.cpp',
        'qml/SideloadDialog.qml',
        'tests/source/test_sources.py',
        '.ci/run'} <= seen
    assert 'build' not in {Path(path).parts[0] for path in seen}


def test_every_file_names_its_license():
    assert not [path for path, text in texts() if str(path) not in WITHOUT_LICENSE
                and not all(line in text[:500] for line in (COPYRIGHT, LICENSE))]


@pytest.mark.parametrize('kind', REFERENCES)
def test_nothing_refers_to(kind):
    assert not findings(REFERENCES[kind], texts())


def test_product_has_no_conditional_compilation():
    assert not findings(r'^\s*#\s*(if|ifdef|ifndef|elif|else|endif)\b', product())


def test_every_header_has_an_include_guard():
    assert not [path for path, text in texts('*.h') if text.count('#pragma once') != 1]


def test_bus_names_of_the_product_are_in_one_place():
    names = r'"(org\.velmoraos\.installationhandler|ru\.quon\.\w+)"'
    assert {finding.partition(':')[0] for finding in findings(names, product())} == \
        {'common/busnames.h', 'service/installationhandler.h'}


def test_links_have_targets():
    broken = []
    for path, text in texts('*.md'):
        for target in re.findall(r'\]\(([^)\s]+)\)', text):
            if not re.match(r'\w+:|#', target) and not (ROOT / path.parent / target.partition('#')[0]).exists():
                broken.append(f'{path}: {target}')
    assert not broken


def test_no_test_is_forgotten():
    """The CMakeLists.txt of a folder names each test file in it."""
    lists = {folder: (ROOT / folder / 'CMakeLists.txt').read_text(encoding='utf-8')
             for folder in {path.parent for path, _ in texts('CMakeLists.txt')}}
    forgotten = []
    for path, _ in texts('*'):
        match = re.fullmatch(r'(test|tst)_(\w+)\.(py|cpp)', path.name)
        # The list of a folder of unit tests has the classes: RpmInfoTest is in tst_rpminfo.cpp.
        if match and not re.search(rf'\b({match[2]}(Test)?\b|{path.name}|pytest.*CURRENT_SOURCE_DIR}}")',
                                   lists[path.parent], re.IGNORECASE):
            forgotten.append(path)
    assert not forgotten


def test_scripts_alone_are_executable():
    for path in files():
        with path.open('rb') as file:
            is_script = file.read(2) == b'#!'
        assert bool(path.stat().st_mode & 0o111) == is_script, path
