# SPDX-FileCopyrightText: velmora-installationhandler contributors
# SPDX-License-Identifier: BSD-3-Clause
"""The package of the product itself, without compiling it."""

import os
import re
import shutil
import subprocess
from pathlib import Path

SOURCE = Path(__file__).resolve().parents[2]
NAME = 'velmora-installationhandler'
# Takes the place of CMake in the build: copies the installed files, and does nothing else. Qt's cache of the compiled dialog
# goes by the file's time, so the copies keep it.
CMAKE = '#!/bin/sh\n[ "$1" != --install ] || cp -R --preserve=timestamps "{stage}/." "$DESTDIR"\n'


def build_product(directory, version, stage):
    """Builds the package by the project's own spec file from the installed files in `stage`; returns its path."""
    text = (SOURCE / f'packaging/{NAME}.spec').read_text(encoding='utf-8')
    tree = directory / f'{NAME}-{version}'
    for document in ' '.join(re.findall(r'(?m)^%(?:doc|license) (.*)', text)).split():
        copy(SOURCE / document, tree / document)
    shutil.make_archive(tree, 'xztar', directory, tree.name)
    cmake = directory / 'bin/cmake'
    cmake.parent.mkdir()
    cmake.write_text(CMAKE.format(stage=stage), encoding='utf-8')
    cmake.chmod(0o755)
    spec = directory / f'{NAME}.spec'
    spec.write_text(re.sub(r'(?m)^(Version:\s*).*', rf'\g<1>{version}', text), encoding='utf-8')
    done = subprocess.run(['rpmbuild', '-bb', '--quiet', '--nodeps', '--define', f'_topdir {directory}', '--define',
                           f'_sourcedir {directory}', '--define', 'debug_package %{nil}', spec], check=False, text=True,
                          env={**os.environ, 'PATH': f'{cmake.parent}:{os.environ["PATH"]}'}, capture_output=True)
    assert done.returncode == 0, done.stderr
    (built,) = directory.glob('RPMS/*/*.rpm')
    return built


def copy(source, target):
    """Copies a file or a folder with all that is in it."""
    target.parent.mkdir(parents=True, exist_ok=True)
    if source.is_dir():
        shutil.copytree(source, target)
    else:
        shutil.copy(source, target)
