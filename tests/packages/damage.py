# SPDX-FileCopyrightText: velmora-installationhandler contributors
# SPDX-License-Identifier: BSD-3-Clause
"""Breaks package files. The functions take the bytes of a package and return those of a broken one."""

import struct

from .handmade import ENTRY, LEAD, intro

INTRO_SIZE = len(intro(0, 0))


class Layout:
    """The offsets at which the parts of a package start."""

    def __init__(self, package):
        self.signature = len(LEAD)
        end = self.signature + header_size(package, self.signature)
        self.header = end + -end % 8
        self.payload = self.header + header_size(package, self.header)


def counts(package, at):
    """The number of index entries and the size of the data of the header at an offset."""
    return struct.unpack_from('>II', package, at + 8)


def header_size(package, at):
    entries, size = counts(package, at)
    return INTRO_SIZE + ENTRY.size * entries + size


def find(package, at, tag):
    """The offset of a tag's data in the header at an offset, and the number of its elements."""
    entries, _ = counts(package, at)
    for index in range(entries):
        found, _, offset, count = ENTRY.unpack_from(package, at + INTRO_SIZE + ENTRY.size * index)
        if found == tag:
            return at + INTRO_SIZE + ENTRY.size * entries + offset, count
    raise KeyError(tag)


def overwritten(package, at, replacement):
    return package[:at] + replacement + package[at + len(replacement):]


def payload(package):
    """Inverts eight bytes in the middle of the payload."""
    start = Layout(package).payload
    middle = start + (len(package) - start) // 2
    return overwritten(package, middle, bytes(byte ^ 0xff for byte in package[middle:middle + 8]))


def text(package, old, new):
    """Replaces a text of the header by another of the same length."""
    at = package.index(old.encode(), Layout(package).header)
    return overwritten(package, at, new.encode())


def signature_tag(package, tag, replacement):
    """Replaces the beginning of a tag's data in the signature header."""
    at, _ = find(package, len(LEAD), tag)
    return overwritten(package, at, replacement)


def claiming(package, entries, size, in_signature=False):
    """Ends the package with a header that claims these numbers of index entries and of bytes of data."""
    layout = Layout(package)
    return package[:layout.signature if in_signature else layout.header] + intro(entries, size) + bytes(64)
