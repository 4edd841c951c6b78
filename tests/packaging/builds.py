# SPDX-FileCopyrightText: velmora-installationhandler contributors
# SPDX-License-Identifier: BSD-3-Clause
"""Builds of the product, as packagers make them."""

import os
import shutil
import subprocess

# CMake's options to compile all files of a library as one, which takes half the time.
TOGETHER = '-DCMAKE_UNITY_BUILD=ON', '-DCMAKE_UNITY_BUILD_BATCH_SIZE=0', '-DCMAKE_DISABLE_PRECOMPILE_HEADERS=ON'

LEFTOVERS = shutil.ignore_patterns('.git', '.pytest_cache', '__pycache__', 'build', 'stage')


def run(command, folder=None, **variables):
    """Runs a command, or a script if it is a text, which must succeed, and returns its output."""
    done = attempt(command, folder, **variables)
    assert done.returncode == 0, done.stdout
    return done.stdout


def attempt(command, folder=None, **variables):
    """Runs a command, or a script if it is a text. The output is all in stdout."""
    return subprocess.run(command, shell=isinstance(command, str), cwd=folder, env={**os.environ, **variables},
                          stdout=subprocess.PIPE, stderr=subprocess.STDOUT, text=True, timeout=1100, check=False)


def configuring(source, build, *options):
    """The command that configures a build."""
    return ['cmake', '-S', source, '-B', build, '-G', 'Ninja', '-DCMAKE_COMPILE_WARNING_AS_ERROR=ON', *options]


def make(source, build, *options, **variables):
    """Builds the product. A build folder that was kept is brought up to date."""
    run(configuring(source, build, *options), **variables)
    run(['cmake', '--build', build], **variables)
    return build


def stage(build):
    """Installs a build to an empty folder, which it returns."""
    shutil.rmtree(build / 'stage', ignore_errors=True)
    run(['cmake', '--install', build, '--prefix', '/usr'], DESTDIR=str(build / 'stage'))
    return build / 'stage'


def repository(source, folder):
    """A repository with a copy of the source as its only commit, which is always the same for the same source."""
    shutil.copytree(source, folder, ignore=LEFTOVERS)
    run('git init --quiet && git add --all && git commit --quiet --message copy', folder,
        **{f'GIT_{who}_{what}': value for who in ('AUTHOR', 'COMMITTER')
           for what, value in (('NAME', 'tests'), ('EMAIL', 'tests@localhost'), ('DATE', '2026-01-01T00:00:00Z'))})
    return folder


def source_package(source, build):
    """The path of the source package of a repository."""
    run(configuring(source, build))
    run(['cmake', '--build', build, '--target', 'package_source'])
    (package,) = build.glob('*.tar.*')
    return package
