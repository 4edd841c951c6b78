# SPDX-FileCopyrightText: velmora-installationhandler contributors
# SPDX-License-Identifier: BSD-3-Clause
"""Builds packages with rpmbuild. The same arguments give the same bytes."""

import os
import shutil
import subprocess
import tempfile
from pathlib import Path

# 1 January 2024. Packages do not contain the real time of a build or of a file, and no host name.
EPOCH = '1704067200'

MACROS = {
    '_buildhost': 'localhost',
    'use_source_date_epoch_as_buildtime': '1',
    'clamp_mtime_to_source_date_epoch': '1',
    '__os_install_post': '%{nil}',
    'debug_package': '%{nil}',
    '_build_id_links': 'none',
    # A comparison of the files with the list that they come from.
    '__check_files': '%{nil}',
}


def launcher(name):
    """The files of an application that has a launcher only: {path: contents}."""
    entry = f'[Desktop Entry]\nType=Application\nName={name}\nExec=/usr/bin/{name}\nIcon={name}\n'
    return {f'/usr/share/applications/{name}.desktop': entry}


def build_package(directory, name, version='1.0', release='1', summary=None, summaries=None, files=None, requires=(),
                  conflicts=(), provides=(), scripts=None, payload='w9.gzdio'):
    """Builds a package for every architecture in `directory`, creates that folder if necessary, and returns the path.

    summary     the untranslated summary, one line; "The application NAME" by default
    summaries   {language: translated summary}
    files       {absolute path: text or bytes}; the launcher NAME.desktop by default
    requires, conflicts, provides
                relations in the syntax of spec files: ["name", "name >= 1.0"]
    scripts     {"pre", "post", "preun" or "postun": shell commands}
    payload     rpmbuild's name of a compression; "w0.ufdio" does not compress
    If rpmbuild refuses, the function prints its output and raises subprocess.CalledProcessError.
    """
    files = launcher(name) if files is None else files
    directory = Path(directory)
    directory.mkdir(parents=True, exist_ok=True)
    with tempfile.TemporaryDirectory(prefix='package-') as work:
        work = Path(work)
        for path, contents in files.items():
            target = work / 'tree' / path.lstrip('/')
            target.parent.mkdir(parents=True, exist_ok=True)
            target.write_bytes(contents.encode() if isinstance(contents, str) else contents)
        spec = work / 'package.spec'
        spec.write_text('\n'.join([
            *preamble(name, version, release, summary or f'The application {name}', summaries or {}),
            *(f'Requires: {escaped(relation)}' for relation in requires),
            *(f'Conflicts: {escaped(relation)}' for relation in conflicts),
            *(f'Provides: {escaped(relation)}' for relation in provides),
            '%description', 'A package for trying things out.',
            '%install', 'mkdir -p %{buildroot}', f'cp -R {work}/tree/. %{{buildroot}}/' if files else '',
            *(line for script, commands in (scripts or {}).items() for line in (f'%{script}', escaped(commands))),
            '%files', *(f'"{escaped(path)}"' for path in files), '']))
        rpmbuild(work, spec, payload)
        (built,) = work.glob('RPMS/*/*.rpm')
        return Path(shutil.move(built, directory / built.name))


def preamble(name, version, release, summary, summaries):
    return [
        f'Name: {escaped(name)}',
        f'Version: {version}',
        f'Release: {release}',
        f'Summary: {escaped(summary)}',
        *(f'Summary({language}): {escaped(text)}' for language, text in summaries.items()),
        'License: BSD-3-Clause',
        'BuildArch: noarch',
        'AutoReqProv: no',
    ]


def escaped(text):
    return text.replace('%', '%%')


def rpmbuild(work, spec, payload):
    macros = {**MACROS, '_topdir': work, '_tmppath': work, '_dbpath': work / 'db', '_binary_payload': payload}
    command = ['rpmbuild', '-bb', '--quiet', '--nodeps', '--target', 'noarch']
    for macro, value in macros.items():
        command += ['--define', f'{macro} {value}']
    environment = {**os.environ, 'HOME': str(work), 'SOURCE_DATE_EPOCH': EPOCH, 'LC_ALL': 'C.UTF-8'}
    done = subprocess.run([*command, spec], env=environment, text=True, stdin=subprocess.DEVNULL,
                          stdout=subprocess.PIPE, stderr=subprocess.STDOUT, timeout=60, check=False)
    if done.returncode:
        print(done.stdout)
        done.check_returncode()
