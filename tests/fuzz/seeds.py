# SPDX-FileCopyrightText: velmora-installationhandler contributors
# SPDX-License-Identifier: BSD-3-Clause
"""seeds.py FOLDER: makes the inputs that fuzzing begins with, a folder for each target.

The folder tests/ has to be on PYTHONPATH.
"""

import sys
import tempfile
from pathlib import Path

from gi.repository import GLib
from packages import SigningKey, build_package, handmade
from packages.handmade import HEADER_REGION, LEAD, NAME, SIGNATURE_REGION, SUMMARY, VERSION, Type


def main(folder):
    texts = {
        'accesspolicy': POLICIES,
        'dialogtexts': DIALOG_TEXTS,
        'errordescription': ERRORS,
        'fileurls': URLS,
        'launcherfile': LAUNCHERS,
    }
    seeds = {target: [text.encode() for text in inputs] for target, inputs in texts.items()}
    seeds['displaystate'] = [arguments(signature, values) for signature, values in STATES]
    seeds['packagerecord'] = [arguments(signature, values) for signature, values in RECORDS]
    seeds['packagereader'] = list(packages())
    for target, inputs in seeds.items():
        (folder / target).mkdir(parents=True)
        for number, contents in enumerate(inputs, 1):
            (folder / target / f'seed-{number}').write_bytes(contents)


def arguments(signature, values):
    """The arguments of a message in GLib's serialised form, after a line with their signature."""
    return f'{signature}\n'.encode() + GLib.Variant(f'({signature})', values).get_data_as_bytes().get_data()


def packages():
    """Packages with a few values each, most of them without digests, so that a change of their header goes unnoticed."""
    unsigned = padded(handmade.header({}, SIGNATURE_REGION))
    for tags in HEADERS:
        header = handmade.header(tags, HEADER_REGION)
        yield LEAD + unsigned + header
        yield LEAD + handmade.signature(header) + header
    # With a signature of header and payload, which the reader has librpm verify.
    yield (LEAD + padded(handmade.header({WHOLE_SIGNATURE: (Type.BIN, b'unreadable')}, SIGNATURE_REGION))
           + handmade.header(HANDMADE, HEADER_REGION))
    with tempfile.TemporaryDirectory() as folder, SigningKey('Somebody') as key:
        package = build_package(folder, 'signed', files={})
        yield package.read_bytes()
        key.sign(package, legacy=True)
        yield package.read_bytes()
    # With a header that claims to be larger than a header may be, or than the file is.
    for entries, size in ((2**31 - 1, 2**31 - 1), (1, 2**27)):
        yield LEAD + unsigned + handmade.intro(entries, size)
    yield LEAD


def padded(header):
    return header + bytes(-len(header) % 8)


# The tag of a signature of header and payload, in the signature header.
WHOLE_SIGNATURE = 1002

HANDMADE = {NAME: (Type.STRING, 'handmade'), VERSION: (Type.STRING, '1.0'),
            SUMMARY: (Type.I18NSTRING, ['Made by hand'])}

# Of these tags librpm knows no type.
UNKNOWN = range(5900, 5910)

HEADERS = [
    HANDMADE,
    {},
    HANDMADE | {100: (Type.STRING_ARRAY, ['C', 'de']), SUMMARY: (Type.I18NSTRING, ['first', 'second'])},
    HANDMADE | {UNKNOWN[0]: (Type.INT64, [2**64 - 1, 0]), UNKNOWN[1]: (Type.INT16, [0o644, 0]),
                UNKNOWN[2]: (Type.BIN, b'bytes'), UNKNOWN[3]: (Type.INT32, [1, 2])},
    # librpm refuses a name that is a number.
    {NAME: (Type.INT32, [1, 2]), VERSION: (Type.INT16, [3]), SUMMARY: (Type.BIN, b'bytes')},
    {NAME: (Type.STRING_ARRAY, ['a', 'b']), SUMMARY: (Type.STRING, b'Gr\xfc\xdfe')},
]

POLICIES = [
    '',
    '[Applications]\nInstallationEnabled=true\n',
    '# A comment\n\n[Applications]\nInstallationEnabled = false\n[Other]\nkey[de]=a;b;\n',
    '[Applications]\nInstallationEnabled=1\n',
    'InstallationEnabled=true\n',
]

LAUNCHERS = [
    '[Desktop Entry]\nType=Application\nName=App\nName[de]=Anwendung\nX-zindro-apkfile=/data/app/base.apk\n',
    '[Desktop Entry]\nX-zindro-apkfile=/a\\sb\\n\\t\\r\\\\c\\x\n\n[Desktop Action new]\nExec=app\n',
    '# A comment\n[Desktop Entry]\nExec=app %u\nMimeType=a/b;c/d;\n',
]

URLS = [
    '/home/user/Downloads/app-1.0-1.noarch.rpm',
    'file:///tmp/a%20b.rpm\nfile://localhost/tmp/a.rpm\nfile:a.rpm\na.rpm\n~/a.rpm\n/',
    'https://example.org/a.rpm?b=c#d\nftp://user:secret@[::1]:21/a.rpm\n//host/a.rpm\nqrc:/a\n',
    ' /tmp/blanks.rpm \n/tmp/пакет.rpm\n/tmp/%2e%00\nfile:///tmp/%00/a',
]

ERRORS = [
    'ru.quon.ZARN.Error.NoSpace\nNot enough space',
    'ru.quon.ZARN.Error.NoSpace',
    'NoSpace\n%1 of %2, %L3, %n\n',
    'org.freedesktop.DBus.Error.\n',
]

DIALOG_TEXTS = [
    'lighthouse-tides',
    '/home/user/Downloads/lighthouse-tides-2.4.1-1.aarch64.rpm',
    'Two words\nand lines \u00a0\u2003',
    'invoice.pdf\u202empr.\u05d0.rpm \u2066\u2069\u200e',
    'नमस्ते\u200d क\u094d\u200cष 👨\u200d👩\u200d👧 ❤\ufe0f مرحبا שלום 你好 e\u0301\u0302\u0303',
    '\U000e0041\U0001d173\U0001bca0\U00013430 \ufeff\ufffc\u3164',
    'long ' * 40,
    '/folder' * 150,
    '😀' * 1100,
]

STATES = [('s', ('on',)), ('s', ('dimmed',)), ('s', ('off',)), ('', ()), ('i', (0,)), ('ss', ('off', 'off')),
          ('v', (GLib.Variant('s', 'off'),)), ('as', (['off'],)), ('a{sv}', ({'state': GLib.Variant('s', 'off')},))]

RECORDS = [('a{ss}', ({},)), ('a{ss}', ({'name': 'app', 'version': '1.0', '': 'пакет'},)),
           ('a{ss}sb', ({'name': 'app'}, 'more', True)), ('s', ('app',)),
           ('a{sv}', ({'name': GLib.Variant('s', 'app')},)),
           ('v', (GLib.Variant('a{ss}', {'name': 'app'}),)), ('a(ss)', ([('name', 'app')],)), ('', ())]


if __name__ == '__main__':
    if len(sys.argv) != 2:
        sys.exit(__doc__)
    main(Path(sys.argv[1]))
