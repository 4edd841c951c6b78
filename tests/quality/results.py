# SPDX-FileCopyrightText: velmora-installationhandler contributors
# SPDX-License-Identifier: BSD-3-Clause
"""The results of the last measurement of each part, in a file that is committed."""

import json

LICENSE = ['SPDX-FileCopyrightText: velmora-installationhandler contributors', 'SPDX-License-Identifier: BSD-3-Clause']


class Results:
    """`parts` has a dictionary for each part that has been measured: date, commit, machine and figures."""

    def __init__(self, path):
        self._path = path
        self.parts = json.loads(path.read_text(encoding='utf-8'))['parts'] if path.exists() else {}

    def keep(self, part, date, commit, machine, figures):
        """Replaces the result of a part, and writes the file."""
        self.parts[part] = {'date': date, 'commit': commit, 'machine': machine, 'figures': figures}
        text = json.dumps({'license': LICENSE, 'parts': self.parts}, indent=1, ensure_ascii=False)
        self._path.write_text(f'{text}\n', encoding='utf-8')
