# SPDX-FileCopyrightText: velmora-installationhandler contributors
# SPDX-License-Identifier: BSD-3-Clause
"""The format of the tree as far as the formatters leave it open, and as .editorconfig says."""

import tokenize

from test_sources import ROOT, texts


def is_python(path, text):
    return path.suffix == '.py' or text.startswith('#!') and 'python' in text.partition('\n')[0]


def python_files():
    return [ROOT / path for path, text in texts() if is_python(path, text)]


def strings(path):
    """All literals, each as its line and its text. Since Python 3.12 one with placeholders consists of many tokens."""
    with path.open('rb') as file:
        depth, text = 0, ''
        for token in tokenize.tokenize(file.readline):
            kind = tokenize.tok_name[token.type]
            depth += kind == 'FSTRING_START'
            if depth or kind == 'STRING':
                text += token.string
            depth -= kind == 'FSTRING_END'
            if text and not depth:
                yield token.start[0], text
                text = ''


def needs_single_quotes(string):
    """All strings except docstrings and those that contain a quote."""
    literal = string.lstrip('rbf')
    return literal.startswith('"') and not literal.startswith('"""') and not set(literal[1:-1]) & set('\'"')


def test_strings_have_single_quotes():
    assert not [f'{path}:{line}' for path in python_files() for line, text in strings(path)
                if needs_single_quotes(text)]


def has_tabs(path, line):
    """Whether a line has a tab that its language does not ask for: scdoc indents with them."""
    return '\t' in (line.lstrip('\t') if path.suffix == '.scd' else line)


def test_lines_match_editorconfig():
    wrong = []
    for path, text in texts():
        lines = text.split('\n')
        if lines[-1] or not lines[-2]:
            wrong.append(f'{path}: has no line feed, or an empty line, at its end')
        for number, line in enumerate(lines, 1):
            if line != line.rstrip() or has_tabs(path, line):
                wrong.append(f'{path}:{number}: has a tab, or blanks at its end')
    assert not wrong
