# SPDX-FileCopyrightText: velmora-installationhandler contributors
# SPDX-License-Identifier: BSD-3-Clause
"""The tests that need no device, as an ordinary user runs them who builds packages."""

import re

from builds import run
from standin.names import SESSION


def test_all_pass_for_an_ordinary_user(build, tmp_path):
    # ctest writes its log beside this file, which the user may not do in the build folder.
    (tmp_path / 'CTestTestfile.cmake').write_text(f'subdirs("{build}/tests/unit")\n', encoding='utf-8')
    tmp_path.chmod(0o777)

    said = run([SESSION, 'ctest', '--test-dir', tmp_path, '--label-regex', '^anywhere$', '--no-tests=error',
                '--output-on-failure'])

    assert int(re.search(r'100% tests passed, 0 tests failed out of (\d+)', said)[1]) >= 14
