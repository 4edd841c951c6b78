# SPDX-FileCopyrightText: velmora-installationhandler contributors
# SPDX-License-Identifier: BSD-3-Clause
"""The package that is installed, made on the device like everything else."""

from pathlib import Path

from acts.program import run

NAME = 'velmora-hello'
LAUNCHER = Path('/usr/share/applications/velmora-hello.desktop')
SPEC = Path(__file__).parents[1] / 'velmora-hello.spec'


def build_sample(folder):
    """Builds the package into the folder; its path."""
    folder.mkdir(parents=True, exist_ok=True)
    run('rpmbuild', '-bb', '--quiet', '--define', '_topdir /tmp/rpmbuild', '--define', f'_rpmdir {folder}',
        '--define', '_rpmfilename %{NAME}-%{VERSION}-%{RELEASE}.%{ARCH}.rpm', str(SPEC))
    return next(folder.glob('*.rpm'))


def is_installed():
    """Whether the RPM database of the device knows the package."""
    return NAME in run('rpm', '--query', '--all', '--queryformat', '%{NAME}\n').split()
