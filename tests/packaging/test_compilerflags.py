# SPDX-FileCopyrightText: velmora-installationhandler contributors
# SPDX-License-Identifier: BSD-3-Clause
"""Builds with the flags of distributions: they start, are the same wherever they are made, and can be packaged."""

import shutil

import debianpackage
import pytest
from builds import LEFTOVERS, attempt, make, run
from contents import INSTALLED, found, naming
from harness.service import PROGRAM

LINK_TIME_OPTIMISATION = '-g -O2 -flto=auto -ffat-lto-objects -fexceptions -Wp,-D_FORTIFY_SOURCE=3 ' \
    '-fstack-protector-strong -Wl,-z,relro,-z,now -fPIE -pie'


@pytest.fixture
def build_with_flags(source, builds):
    """Builds the product in a kept folder. The build type is that of packagers: it adds no flags of CMake's own."""
    def build(name, flags, linker_flags='', source=source):
        return make(source, builds / name, '-DCMAKE_BUILD_TYPE=None', f'-DCMAKE_CXX_FLAGS={flags}',
                    f'-DCMAKE_EXE_LINKER_FLAGS={linker_flags}')
    return build


@pytest.fixture
def optimised(build_with_flags):
    """A build with link-time optimisation, debug information and an explicit -fPIE, in a folder inside of the source."""
    return build_with_flags('optimised', LINK_TIME_OPTIMISATION)


@pytest.fixture
def optimised_elsewhere(build_with_flags, source, builds):
    """The same from a copy of the source, in a folder outside of the copy."""
    copy = builds / 'elsewhere/source'
    shutil.rmtree(copy, ignore_errors=True)
    shutil.copytree(source, copy, ignore=LEFTOVERS)
    return build_with_flags('elsewhere/build', LINK_TIME_OPTIMISATION, source=copy)


@pytest.fixture
def hardened(build_with_flags):
    """A build with the flags of Debian's packages, all hardening included."""
    def flags(name):
        return run(['dpkg-buildflags', '--get', name], DEB_BUILD_MAINT_OPTIONS='hardening=+all').strip()
    return build_with_flags('hardened', f'{flags("CPPFLAGS")} {flags("CXXFLAGS")}', flags('LDFLAGS'))


def stage(build):
    """Installs a build to an empty folder, which it returns."""
    shutil.rmtree(build / 'stage', ignore_errors=True)
    run(['cmake', '--install', build, '--prefix', '/usr'], DESTDIR=str(build / 'stage'))
    return build / 'stage'


@pytest.mark.parametrize('flags', ['optimised', 'hardened'])
def test_service_starts(request, program, client, flags):
    run(['cmake', '--install', request.getfixturevalue(flags), '--prefix', '/usr'])

    # Qt's libraries do not see the copies of their objects that such a relocation makes.
    assert '_COPY' not in run(['readelf', '--relocs', '--wide', PROGRAM])
    program.start()
    assert 'installFiles' in client.introspect()


def test_place_of_the_build_makes_no_difference(optimised, optimised_elsewhere, source):
    one, other = stage(optimised), stage(optimised_elsewhere)

    assert found(one) == INSTALLED
    assert '.debug_info' in run(['readelf', '--sections', '--wide', one / PROGRAM[1:]])
    assert [name for name in INSTALLED if (one / name).read_bytes() != (other / name).read_bytes()] == []
    assert naming(one, [source]) == []


def test_lintian_finds_no_error(hardened, source, tmp_path):
    package = debianpackage.build(stage(hardened), source, tmp_path)

    done = attempt(['lintian', '--allow-root', '--fail-on', 'error', package])
    assert done.returncode == 0, done.stdout
