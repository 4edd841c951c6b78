# SPDX-FileCopyrightText: velmora-installationhandler contributors
# SPDX-License-Identifier: BSD-3-Clause
"""Writes package files byte by byte, since rpmbuild refuses unusual headers.

A package file is a lead, the signature header, the header and the payload. A header is an intro (magic, number of index
entries, size of the data), the index entries (tag, type, offset, count) and the data. The first entry describes the
region of all other entries. The data end with a copy of it.
"""

import enum
import hashlib
import struct
from pathlib import Path

NAME, VERSION, RELEASE, SUMMARY = 1000, 1001, 1002, 1004
SIGNATURE_REGION, HEADER_REGION = 62, 63
SIGNATURE_PGP, SIGNATURE_SHA1, SIGNATURE_SHA256 = 259, 269, 273

LEAD = struct.pack('>4sBBhh66shh16x', b'\xed\xab\xee\xdb', 3, 0, 0, 0, b'package', 1, 5)
ENTRY = struct.Struct('>iiii')


class Type(enum.IntEnum):
    """The types of a header's data, with rpm's numbers."""

    INT16 = 3
    INT32 = 4
    INT64 = 5
    STRING = 6
    BIN = 7
    STRING_ARRAY = 8
    I18NSTRING = 9


NUMBERS = {Type.INT16: '>H', Type.INT32: '>I', Type.INT64: '>Q'}


def write(path, tags=None, payload=b''):
    """Writes a package and returns its path.

    tags    {tag number: (type, value)}, added to the default name, version, release and summary, or in place of them; the
            value is text or bytes, a list of them, or a list of numbers. None instead of the pair drops the tag.
    The digests of the header are correct. There is no signature.
    """
    common = {NAME: (Type.STRING, 'handmade'), VERSION: (Type.STRING, '1.0'), RELEASE: (Type.STRING, '1'),
              SUMMARY: (Type.I18NSTRING, ['Made by hand'])}
    packed = header({**common, **(tags or {})}, HEADER_REGION)
    path = Path(path)
    path.write_bytes(LEAD + signature(packed) + packed + payload)
    return path


def signature(of):
    """The signature header of a header, with its digests, padded to the alignment of the header."""
    packed = header({SIGNATURE_SHA1: (Type.STRING, hashlib.sha1(of).hexdigest()),
                     SIGNATURE_SHA256: (Type.STRING, hashlib.sha256(of).hexdigest())}, SIGNATURE_REGION)
    return packed + bytes(-len(packed) % 8)


def header(tags, region):
    entries, data = [], b''
    for tag, described in sorted(tags.items()):
        if described is None:
            continue
        kind, value = described
        if kind in NUMBERS:
            data += bytes(-len(data) % struct.calcsize(NUMBERS[kind]))
        stored, count = encoded(kind, value)
        entries.append(ENTRY.pack(tag, kind, len(data), count))
        data += stored
    size = ENTRY.size * (len(entries) + 1)
    entries.insert(0, ENTRY.pack(region, Type.BIN, len(data), ENTRY.size))
    data += ENTRY.pack(region, Type.BIN, -size, ENTRY.size)
    return intro(len(entries), len(data)) + b''.join(entries) + data


def intro(entries, size):
    """The start of a header that claims these numbers of index entries and of bytes of data."""
    return struct.pack('>4s4xII', b'\x8e\xad\xe8\x01', entries, size)


def encoded(kind, value):
    """The bytes and the number of elements of a value."""
    if kind in NUMBERS:
        return b''.join(struct.pack(NUMBERS[kind], number) for number in value), len(value)
    if kind == Type.BIN:
        return value, len(value)
    strings = value if isinstance(value, list) else [value]
    return b''.join((text.encode() if isinstance(text, str) else text) + b'\0' for text in strings), len(strings)
