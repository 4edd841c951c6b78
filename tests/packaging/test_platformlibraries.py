# SPDX-FileCopyrightText: velmora-installationhandler contributors
# SPDX-License-Identifier: BSD-3-Clause
"""The choice between the platform's own libraries and the portable implementations."""

from pathlib import Path

import pytest
from builds import TOGETHER, attempt, configuring, make, run
from harness.service import PROGRAM

CLASSES = {
    'MDeclarativeCache': 'mdeclarativecache5',
    'AccessPolicy': 'velmorapolicy',
    'Notification': 'orrinnotifications-qt5',
    'AboutSettings': 'systemsettings',
    'MceDisplay': 'mce-qt5',
    'MDesktopEntry': 'mlite5',
}
LAUNCHER = Path('/usr/share/applications/platform.desktop')


@pytest.fixture
def configure(source, tmp_path):
    """Configures a build on a machine with some of the libraries; see "attempt"."""
    def run_cmake(libraries, *options):
        for library in libraries:
            (tmp_path / f'{library}.pc').write_text(f'Name: {library}\nDescription: of the platform\nVersion: 1.2\n',
                                                    encoding='utf-8')
        return attempt(configuring(source, tmp_path / 'build', *options), PKG_CONFIG_PATH=str(tmp_path))
    return run_cmake


def chosen(said):
    """The messages about the choice."""
    return [line.removeprefix('-- Platform::') for line in said.splitlines() if 'Platform::' in line]


def test_libraries_of_the_platform_are_preferred(configure):
    own = ['velmorapolicy', 'mlite5']

    done = configure(own)

    assert done.returncode == 0
    assert chosen(done.stdout) == [
        f'{name}: {library} 1.2 of this machine' if library in own else f'{name}: portable implementation'
        for name, library in CLASSES.items()]


def test_portable_implementations_can_be_asked_for(configure):
    done = configure(CLASSES.values(), '-DVELMORA_PLATFORM=portable')

    assert done.returncode == 0
    assert chosen(done.stdout) == [f'{name}: portable implementation' for name in CLASSES]


def test_tests_are_built_with_libraries_of_the_platform(configure):
    done = configure(CLASSES.values(), '-DVELMORA_PLATFORM=system', '-DBUILD_TESTING=ON')

    assert done.returncode == 0, done.stdout


@pytest.mark.parametrize('missing', [['velmorapolicy'], [*CLASSES.values()]], ids=['one', 'all'])
def test_missing_library_stops_the_configuration(configure, missing):
    done = configure(set(CLASSES.values()) - set(missing), '-DVELMORA_PLATFORM=system')

    assert done.returncode == 1
    assert f'VELMORA_PLATFORM is "system", but pkg-config does not know {", ".join(missing)}' in \
        ' '.join(done.stdout.split())


def test_unknown_choice_stops_the_configuration(configure):
    done = configure([], '-DVELMORA_PLATFORM=sytem')

    assert done.returncode == 1
    assert 'VELMORA_PLATFORM is "sytem"; it can be auto, system or portable' in ' '.join(done.stdout.split())


def debian_flags(name):
    """The flags of Debian's packages, all hardening included."""
    return run(['dpkg-buildflags', '--get', name], DEB_BUILD_MAINT_OPTIONS='hardening=+all').strip()


@pytest.fixture
def platform_build(source, builds):
    """Installs shared libraries with pkg-config files on this device, and builds the product with them as Debian does."""
    libraries = make(source / 'tests/packaging/platformlibraries', builds / 'platformlibraries',
                     '-DCMAKE_INSTALL_PREFIX=/usr')
    run(['cmake', '--install', libraries])
    return make(source, builds / 'platform', '-DCMAKE_BUILD_TYPE=None', *TOGETHER, '-DVELMORA_PLATFORM=system',
                f'-DCMAKE_CXX_FLAGS={debian_flags("CPPFLAGS")} {debian_flags("CXXFLAGS")}',
                f'-DCMAKE_EXE_LINKER_FLAGS={debian_flags("LDFLAGS")}')


def test_service_runs_with_libraries_of_the_platform(platform_build, program, client, signals):
    run(['cmake', '--install', platform_build, '--prefix', '/usr'])
    LAUNCHER.touch()

    # Qt's libraries do not see the copies of their objects that such a relocation makes.
    assert '_COPY' not in run(['readelf', '--relocs', '--wide', PROGRAM])
    program.start()
    client.install([])
    text = "This device's policy does not allow installing apps (Platform OS)."
    assert signals.wait('installFinished') == (False, text)
    client.remove_launcher(LAUNCHER)
    program.wait_for_log('MDesktopEntry', count=2)  # before and after the search for the owner

    assert [line for line in program.log() if 'platform: ' in line] == [
        f'info default: platform: {call}' for call in (
            'qApplication', 'qQuickView', 'QMceDisplay', 'applicationInstallationEnabled', f'publish {text}',
            f'MDesktopEntry {LAUNCHER}', f'MDesktopEntry {LAUNCHER}')]
