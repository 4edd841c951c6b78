# SPDX-FileCopyrightText: velmora-installationhandler contributors
# SPDX-License-Identifier: BSD-3-Clause
"""Signs packages with temporary keys."""

import os
import subprocess
import tempfile


class SigningKey:
    """A context manager with a key, whose key ring and gpg agent end with it."""

    def __init__(self, owner, algorithm='rsa2048'):
        self.owner = owner
        self.algorithm = algorithm

    def __enter__(self):
        # The path must be short, since gpg's agent listens on a socket in this folder.
        self.home = tempfile.TemporaryDirectory(prefix='gpg-', dir='/tmp')
        self.run('gpg', '--batch', '--passphrase', '', '--quick-gen-key', self.owner, self.algorithm, 'sign', 'never')
        return self

    def __exit__(self, *_):
        self.run('gpgconf', '--kill', 'all')
        self.home.cleanup()

    def public_key(self):
        """The public key in the format of rpm --import."""
        return self.run('gpg', '--armor', '--export', self.owner)

    def sign(self, path, legacy=False):
        """Signs the package in place; `legacy` adds the signature of header and payload together (tag 259)."""
        macros = {'__gpg': '/usr/bin/gpg', '_gpg_path': self.home.name, '_gpg_name': self.owner}
        defines = [word for macro, value in macros.items() for word in ('--define', f'{macro} {value}')]
        self.run('rpmsign', *defines, '--addsign', *(['--rpmv3'] if legacy else []), str(path))

    def run(self, *command):
        environment = {**os.environ, 'GNUPGHOME': self.home.name, 'HOME': self.home.name, 'LC_ALL': 'C.UTF-8'}
        done = subprocess.run(command, env=environment, text=True, stdin=subprocess.DEVNULL, stdout=subprocess.PIPE,
                              stderr=subprocess.PIPE, timeout=60, check=False)
        if done.returncode:
            print(done.stdout, done.stderr)
            done.check_returncode()
        return done.stdout
