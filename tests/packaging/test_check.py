# SPDX-FileCopyrightText: velmora-installationhandler contributors
# SPDX-License-Identifier: BSD-3-Clause
"""The tests that need no device, as an ordinary user runs them who builds packages."""

import json
import re
import shutil
from pathlib import Path

import pytest
from builds import run
from standin.names import SESSION


@pytest.fixture
def programs(source, tmp_path):
    """A folder with the programs that the spec file requires for the tests, and no others."""
    required = run(['rpmspec', '--query', '--buildrequires', '--define', '_with_platform 1', '--define', '_with_check 1',
                    source / 'packaging/velmora-installationhandler.spec']).split()
    folder = tmp_path / 'programs'
    folder.mkdir()
    for program in (Path(name) for name in required if name.startswith('/')):
        (folder / program.name).symlink_to(program)
    return folder


@pytest.fixture
def label(source):
    """The label of the tests that the preset runs."""
    presets = json.loads((source / 'CMakePresets.json').read_text(encoding='utf-8'))['testPresets']
    return next(preset for preset in presets if preset['name'] == 'check')['filter']['include']['label']


def test_spec_file_runs_the_tests_of_the_preset(source, label):
    commands = run(['rpmspec', '--parse', '--define', '_with_check 1',
                    source / 'packaging/velmora-installationhandler.spec'])
    assert re.search(r"^ctest .* --label-regex '(.*?)' ", commands, re.MULTILINE)[1] == label
    # The target "anywhere" builds what the label runs.
    assert re.search(r'^cmake --build .* --target .* (\S+)$', commands, re.MULTILINE)[1] == label.strip('^$')


def test_all_pass_for_an_ordinary_user(build, tmp_path, programs, label):
    # ctest writes its log beside this file, which the user may not do in the build folder.
    (tmp_path / 'CTestTestfile.cmake').write_text(f'subdirs("{build}/tests/unit")\n', encoding='utf-8')
    tmp_path.chmod(0o777)

    said = run([SESSION, f'PATH={programs}', shutil.which('ctest'), '--test-dir', tmp_path, '--label-regex', label,
                '--no-tests=error', '--output-on-failure'])

    assert int(re.search(r'100% tests passed, 0 tests failed out of (\d+)', said)[1]) >= 14
