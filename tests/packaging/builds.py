# SPDX-FileCopyrightText: velmora-installationhandler contributors
# SPDX-License-Identifier: BSD-3-Clause
"""Builds of the product, as packagers make them."""

import os
import shutil
import subprocess

LEFTOVERS = shutil.ignore_patterns('.git', '.pytest_cache', '__pycache__', 'build', 'stage')


def run(command, folder=None, **variables):
    """Runs a command, or a script if it is a text, which must succeed, and returns its output."""
    done = attempt(command, folder, **variables)
    assert done.returncode == 0, done.stdout
    return done.stdout


def attempt(command, folder=None, **variables):
    """Runs a command, or a script if it is a text. The output is all in stdout."""
    return subprocess.run(command, shell=isinstance(command, str), cwd=folder, env={**os.environ, **variables},
                          stdout=subprocess.PIPE, stderr=subprocess.STDOUT, text=True, timeout=500, check=False)


def configuring(source, build, *options):
    """The command that configures a build."""
    return ['cmake', '-S', source, '-B', build, '-G', 'Ninja', '-DCMAKE_COMPILE_WARNING_AS_ERROR=ON', *options]


def make(source, build, *options, **variables):
    """Builds the product. A build folder that was kept is brought up to date."""
    run(configuring(source, build, *options), **variables)
    run(['cmake', '--build', build], **variables)
    return build
