# SPDX-FileCopyrightText: velmora-installationhandler contributors
# SPDX-License-Identifier: BSD-3-Clause
"""python3 -m packages.fixtures FOLDER: makes the packages of the unit tests, and the keys of the signed ones."""

import sys
from pathlib import Path

from . import damage, handmade
from .build import build_package
from .handmade import NAME, SUMMARY, VERSION, Type
from .signing import SigningKey

# The tags of the two signatures in the signature header.
HEADER_SIGNATURE, WHOLE_SIGNATURE = 268, 1002

LARGE = 8 * 1024 * 1024


def main(folder):
    folder.mkdir(parents=True, exist_ok=True)
    make_built(folder)
    make_handmade(folder)
    make_signed(folder)


def make_built(folder):
    """Ordinary and damaged packages."""
    plain = built(folder, 'plain', version='1.2.3', release='4', summary='A plain package')
    built(folder, 'translated', summary='Says hello',
          summaries={'de': 'Sagt Hallo', 'fi': 'Sanoo hei', 'zh_CN': '打招呼', 'ar': 'يقول مرحبا'})
    built(folder, 'large', files={'/opt/large/data': bytes(LARGE)}, payload='w0.ufdio')
    save(folder, 'damaged-payload', damage.payload(plain))
    save(folder, 'damaged-header', damage.text(plain, 'A plain', 'AnOther'))
    make_claims(folder, plain)


def make_claims(folder, plain):
    """Headers at and above the limits of librpm: 65,535 entries and 256 MiB, 32 and 64 MiB in a signature header."""
    most = 0xffffffff
    for name, entries, size, in_signature in (
            ('nothing', 0, 0, False), ('most', most, most, False), ('most-entries', most, 16, False),
            ('most-data', 2, most, False), ('entries', 0x10000, 16, False), ('data', 2, 0x10000000, False),
            ('all-allowed', 0xffff, 0x0fffffff, False), ('most', most, most, True), ('entries', 33, 16, True),
            ('data', 2, 64 * 1024 * 1024 + 1, True), ('all-allowed', 32, 64 * 1024 * 1024, True)):
        package = damage.claiming(plain, entries, size, in_signature)
        save(folder, f'{"signature-" if in_signature else ""}claims-{name}', package)


def make_handmade(folder):
    """Packages with unusual values."""
    summaries = {
        'empty': '',
        'quotes': '""',
        'latin1': b'Gr\xfc\xdfe',
        'long': 'x' * 10_000,
        'markup': "<b>bold</b> <img src='file:///etc/passwd'> &amp; %1",
        'control': 'bell \a, tab \t, line\nfeed, escape \x1b[31m, override \u202e, astral \U0001f600',
    }
    for name, summary in summaries.items():
        handmade.write(folder / f'summary-{name}.rpm', {SUMMARY: (Type.I18NSTRING, [summary])})
    handmade.write(folder / 'summary-first.rpm', {SUMMARY: (Type.I18NSTRING, ['first', 'second', 'third'])})
    handmade.write(folder / 'summary-array.rpm', {SUMMARY: (Type.STRING_ARRAY, ['first', 'second'])})
    for tag, name in ((NAME, 'name'), (VERSION, 'version'), (SUMMARY, 'summary')):
        handmade.write(folder / f'no-{name}.rpm', {tag: None})
    handmade.write(folder / 'name-number.rpm', {NAME: (Type.INT32, [1])})


def make_signed(folder):
    """Packages with every kind of signature."""
    with SigningKey('Known to the database') as known, SigningKey('Unknown') as unknown, \
            SigningKey('Known and modern', 'ed25519') as modern:
        (folder / 'known.asc').write_text(known.public_key())
        (folder / 'modern.asc').write_text(modern.public_key())
        whole = built(folder, 'signed', known, legacy=True, files={})
        built(folder, 'signed-header-only', known, files={})
        built(folder, 'signed-unknown-key', unknown, legacy=True, files={})
        built(folder, 'signed-unknown-key-header-only', unknown, files={})
        built(folder, 'signed-modern', modern, legacy=True, files={})
    save(folder, 'signed-damaged-payload', damage.payload(whole))
    save(folder, 'signed-damaged-header', damage.text(whole, 'The application', 'A different one'))
    for name, tag in (('signature', WHOLE_SIGNATURE), ('header-signature', HEADER_SIGNATURE)):
        save(folder, f'signed-damaged-{name}', flipped_end(whole, tag))
        save(folder, f'signed-unreadable-{name}', damage.signature_tag(whole, tag, b'nonsense'))


def built(folder, name, key=None, legacy=False, **arguments):
    path = build_package(folder, name, **arguments).rename(folder / f'{name}.rpm')
    if key:
        key.sign(path, legacy=legacy)
    return path.read_bytes()


def flipped_end(package, tag):
    at, size = damage.find(package, len(handmade.LEAD), tag)
    return damage.overwritten(package, at + size - 1, bytes([package[at + size - 1] ^ 0xff]))


def save(folder, name, package):
    (folder / f'{name}.rpm').write_bytes(package)


if __name__ == '__main__':
    if len(sys.argv) != 2:
        sys.exit(__doc__)
    main(Path(sys.argv[1]))
