# SPDX-FileCopyrightText: velmora-installationhandler contributors
# SPDX-License-Identifier: BSD-3-Clause
"""PackageKit on a device in a sandbox, seen from the machine that it runs on."""

import subprocess
from pathlib import Path

import pytest

PROJECT = Path(__file__).resolve().parents[2]
DEVICE = PROJECT / 'sandbox/device'
BUILD_BACKEND = PROJECT / 'sandbox/packagekit/build-backend'
BUILT = PROJECT / 'build/packagekit'
CONFIGURATION = Path('/etc/PackageKit/PackageKit.conf')

ASK_BACKEND = ['gdbus', 'call', '--system', '--dest', 'org.freedesktop.PackageKit', '--object-path',
               '/org/freedesktop/PackageKit', '--method', 'org.freedesktop.DBus.Properties.Get',
               'org.freedesktop.PackageKit', 'BackendName']


def run(*command):
    return subprocess.run(command, text=True, capture_output=True, timeout=30, check=False)


def test_backend_is_built_once_and_needs_no_network_later():
    backend = BUILT / 'libpk_backend_zypp.so'
    before = backend.stat()
    again = run('unshare', '--net', BUILD_BACKEND, BUILT)
    assert (again.returncode, again.stdout, again.stderr) == (0, '', '')
    assert backend.stat().st_mtime_ns == before.st_mtime_ns
    assert {path.name for path in BUILT.iterdir()} == {'built-by', backend.name, 'log'}


@pytest.mark.parametrize('arguments', [[], ['here', 'there']])
def test_backend_takes_one_folder(arguments):
    refused = run(BUILD_BACKEND, *arguments)
    assert (refused.returncode, refused.stderr) == (1, 'build-backend: say the folder to build in, and nothing else\n')


def test_device_has_packagekit_only_when_asked_for():
    without = run(DEVICE, '--', *ASK_BACKEND)
    assert without.returncode == 1
    assert 'org.freedesktop.DBus.Error.ServiceUnknown' in without.stderr


def test_device_has_packagekit_for_rpm_packages():
    before = CONFIGURATION.read_text()
    assert run(DEVICE, '--packagekit', BUILT, '--', *ASK_BACKEND).stdout == "(<'zypp'>,)\n"
    assert CONFIGURATION.read_text() == before


def test_device_refuses_a_folder_without_backend(tmp_path):
    refused = run(DEVICE, '--packagekit', tmp_path, '--', 'true')
    assert (refused.returncode, refused.stderr) == (
        125, f'sandbox/device: PackageKit needs {tmp_path}/libpk_backend_zypp.so, which is missing\n')
