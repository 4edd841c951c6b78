# SPDX-FileCopyrightText: velmora-installationhandler contributors
# SPDX-License-Identifier: BSD-3-Clause
"""RPM packages for tests, built on demand by Debian's rpmbuild, rpmsign and gpg.

With the folder above this one on PYTHONPATH:

    from packages import build_package, SigningKey

    path = build_package(directory, 'hello')                        # hello-1.0-1.noarch.rpm, with a launcher
    path = build_package(directory, 'hello', version='2.0', summary='Greets you',
                         summaries={'de': 'Grüßt', 'fi': 'Tervehtii'},
                         files={'/opt/hello/data': b'...'},          # instead of the launcher
                         requires=['absent-library >= 3'], conflicts=['goodbye'], provides=['greeter'],
                         scripts={'pre': 'exit 1'})                  # %pre, %post, %preun, %postun
    path.name, path.read_bytes()                                     # a pathlib.Path

    with SigningKey('Somebody') as key:                              # a temporary key
        key.sign(path, legacy=True)                                  # with tag 259, the header-and-payload signature
        (directory / 'key.asc').write_text(key.public_key())         # for rpm --import

`handmade.write()` makes packages that rpmbuild refuses, with any header and with correct digests. `damage` breaks
packages in chosen ways. `python3 -m packages.fixtures FOLDER` makes the packages of the unit tests.
"""

from .build import build_package, launcher
from .signing import SigningKey

__all__ = ['SigningKey', 'build_package', 'launcher']
