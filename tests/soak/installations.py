# SPDX-FileCopyrightText: velmora-installationhandler contributors
# SPDX-License-Identifier: BSD-3-Clause
"""What the installations of a round may come to."""

import re
from collections import Counter

from support.installationrequests import FORBIDDEN

from .plan import DisplayOff, Install

CANCELLED = 'The user cancelled the installation'
FAILED = re.compile(r'zarn_installation_error_desc_(NoReply|ServiceUnknown|Refused) \(code: \1\)')


class Installations:
    """The requests for installations of a round, with the outcomes that are allowed."""

    def __init__(self, planned):
        self._kind = planned.kind
        self._requests = [step for step in planned.steps if isinstance(step, Install)]
        self._peer_fails = planned.fails('package-manager')
        self._display_goes_off = any(isinstance(step, DisplayOff) for step in planned.steps)

    def problems(self, outcomes, more, handed_over, path):
        """What is not allowed: the outcomes of these requests and of some more without files, and the files that the package
        manager has received. `path` gives the path of a file of a request."""
        problems = [f'installFinished {outcome}' for outcome in outcomes if not self.may_end(*outcome)]
        if len(outcomes) != len(self._requests) + more:
            problems.append(f'{len(outcomes)} outcomes of {len(self._requests) + more} installations')
        files = Counter(path(number, request.declined) for request in self._requests for number in request.files)
        if not self._may_install():
            if sum(success for success, _ in outcomes) > more:
                problems.append('a success, although nothing may be installed')
            files.clear()
        if wrong := set(handed_over) - set(files):
            problems.append(f'handed over: {", ".join(sorted(wrong))}')
        # An answer of the user may hand over a file once more: Known behaviour 55. Nobody is asked in a silent round.
        if self._kind == 'silent' and not self._peer_fails and Counter(handed_over) != files:
            problems.append(f'handed over: {sorted(handed_over)}, instead of {sorted(files.elements())}')
        return problems

    def may_end(self, success, text):
        """Whether a request may end so."""
        if self._kind == 'forbidden':
            return (success, text) == (False, FORBIDDEN)
        if success:
            return not text
        lines = text.split('\n')
        if self._may_refuse() and CANCELLED in lines:
            # It replaces the lines before it: Known behaviour 51.
            lines = lines[1:] if lines[0] == CANCELLED else ['']
        return all(FAILED.fullmatch(line) and self._peer_fails for line in lines)

    def _may_install(self):
        """Whether a file may be handed over. An answer counts for all requests at work: Known behaviour 55."""
        if self._kind in ('silent', 'forbidden'):
            return self._kind == 'silent'
        return any(not request.declined or (request.sdk_mode and self._kind == 'alone') for request in self._requests)

    def _may_refuse(self):
        """Whether a dialog may be declined: by the user, or because the display goes off."""
        return (self._kind in ('asking', 'alone')
                and (self._display_goes_off or any(request.declined for request in self._requests)))
