# SPDX-FileCopyrightText: velmora-installationhandler contributors
# SPDX-License-Identifier: BSD-3-Clause
"""Builds with link-time optimisation: they start, are the same wherever they are made, and can be packaged."""

import shutil

import debianpackage
import pytest
from builds import LEFTOVERS, TOGETHER, attempt, make, run, stage
from contents import INSTALLED, found, naming
from harness.service import PROGRAM

LINK_TIME_OPTIMISATION = '-g -O2 -flto=auto -fexceptions -Wp,-D_FORTIFY_SOURCE=3 ' \
    '-fstack-protector-strong -Wl,-z,relro,-z,now -fPIE -pie'


def optimise(source, build):
    """Builds the product with an explicit -fPIE and debug information. The build type adds no flags of CMake's own."""
    return make(source, build, '-DCMAKE_BUILD_TYPE=None', *TOGETHER, f'-DCMAKE_CXX_FLAGS={LINK_TIME_OPTIMISATION}')


@pytest.fixture
def optimised(source, builds):
    """A build in a folder inside of the source."""
    return optimise(source, builds / 'optimised')


@pytest.fixture
def optimised_elsewhere(source, builds):
    """The same from a copy of the source, in a folder outside of the copy."""
    copy = builds / 'elsewhere/source'
    shutil.rmtree(copy, ignore_errors=True)
    shutil.copytree(source, copy, ignore=LEFTOVERS)
    return optimise(copy, builds / 'elsewhere/build')


def test_service_starts(optimised, program, client):
    run(['cmake', '--install', optimised, '--prefix', '/usr'])

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


def test_lintian_finds_no_error(optimised, source, tmp_path):
    package = debianpackage.build(stage(optimised), source, tmp_path)

    done = attempt(['lintian', '--allow-root', '--fail-on', 'error', package])
    assert done.returncode == 0, done.stdout
