# SPDX-FileCopyrightText: velmora-installationhandler contributors
# SPDX-License-Identifier: BSD-3-Clause
"""Pieces of Markdown."""


def table(titles, rows):
    """The lines of a table. All columns but the first one have numbers."""
    yield '| ' + ' | '.join(titles) + ' |'
    yield '|---' + '|--:' * (len(titles) - 1) + '|'
    for row in rows:
        yield '| ' + ' | '.join(map(str, row)) + ' |'
    yield ''


def paragraph(text):
    yield text
    yield ''


def whole(number):
    return f'{number:,}'


def counted(number, noun, plural=None):
    """A number with its noun."""
    return f'{number:,} {noun if number == 1 else plural or noun + "s"}'
