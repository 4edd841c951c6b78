# SPDX-FileCopyrightText: velmora-installationhandler contributors
# SPDX-License-Identifier: BSD-3-Clause

"""python3 -m packages.fixtures FOLDER: makes the packages that the unit tests read, and the keys that sign some."""

import sys
from pathlib import Path

from . import damage, handmade
from .build import build_package
from .handmade import NAME, SUMMARY, VERSION, Type
from .signing import SigningKey

# Where rpm keeps the two signatures in the signature header.
HEADER_SIGNATURE, WHOLE_SIGNATURE = 268, 1002

LARGE = 8 * 1024 * 1024


def main(folder):
    folder.mkdir(parents=True, exist_ok=True)
    make_built(folder)
    make_handmade(folder)
    make_signed(folder)


def make_built(folder):
    """Packages as anybody builds them, and the damage that befalls them."""
    plain = built(folder, 'plain', version='1.2.3', release='4', summary='A plain package')
    built(folder, 'translated', summary='Says hello',
          summaries={'de': 'Sagt Hallo', 'fi': 'Sanoo hei', 'zh_CN': '打招呼', 'ar': 'يقول مرحبا'})
    built(folder, 'large', files={'/opt/large/data': bytes(LARGE)}, payload='w0.ufdio')
    save(folder, 'damaged-payload', damage.payload(plain))
    save(folder, 'damaged-header', damage.text(plain, 'A plain', 'AnOther'))
    make_claims(folder, plain)


def make_claims(folder, plain):
    """Headers that claim more than librpm believes: 65,535 entries and 256 MiB, in a signature header 32 and 64 MiB."""
    most = 0xffffffff
    for name, entries, size in (('nothing', 0, 0), ('most', most, most), ('most-entries', most, 16),
                                ('most-data', 2, most), ('entries', 0x10000, 16), ('data', 2, 0x10000000),
                                ('all-allowed', 0xffff, 0x0fffffff)):
        save(folder, f'claims-{name}', damage.claiming(plain, entries, size))
    for name, entries, size in (('most', most, most), ('entries', 33, 16), ('data', 2, 64 * 1024 * 1024 + 1),
                                ('all-allowed', 32, 64 * 1024 * 1024)):
        save(folder, f'signature-claims-{name}', damage.claiming(plain, entries, size, in_signature=True))


def make_handmade(folder):
    """Packages whose values nobody expects."""
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
        save_text(folder, 'known.asc', known.public_key())
        save_text(folder, 'modern.asc', modern.public_key())
        whole = signed(folder, 'signed', known, legacy=True)
        signed(folder, 'signed-header-only', known)
        signed(folder, 'signed-unknown-key', unknown, legacy=True)
        signed(folder, 'signed-unknown-key-header-only', unknown)
        signed(folder, 'signed-modern', modern, legacy=True)
    save(folder, 'signed-damaged-payload', damage.payload(whole))
    save(folder, 'signed-damaged-header', damage.text(whole, 'The application', 'A different one'))
    save(folder, 'signed-damaged-signature', flipped_end(whole, WHOLE_SIGNATURE))
    save(folder, 'signed-unreadable-signature', damage.signature_tag(whole, WHOLE_SIGNATURE, b'nonsense'))
    save(folder, 'signed-damaged-header-signature', flipped_end(whole, HEADER_SIGNATURE))
    save(folder, 'signed-unreadable-header-signature', damage.signature_tag(whole, HEADER_SIGNATURE, b'nonsense'))


def built(folder, name, **arguments):
    path = build_package(folder, name, **arguments).rename(folder / f'{name}.rpm')
    return path.read_bytes()


def signed(folder, name, key, legacy=False):
    built(folder, name, files={})
    path = folder / f'{name}.rpm'
    key.sign(path, legacy=legacy)
    return path.read_bytes()


def flipped_end(package, tag):
    at, size = damage.find(package, len(handmade.LEAD), tag)
    return damage.overwritten(package, at + size - 1, bytes([package[at + size - 1] ^ 0xff]))


def save(folder, name, package):
    (folder / f'{name}.rpm').write_bytes(package)


def save_text(folder, name, text):
    (folder / name).write_text(text)


if __name__ == '__main__':
    if len(sys.argv) != 2:
        sys.exit(__doc__)
    main(Path(sys.argv[1]))
