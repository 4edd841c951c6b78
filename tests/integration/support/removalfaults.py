# SPDX-FileCopyrightText: velmora-installationhandler contributors
# SPDX-License-Identifier: BSD-3-Clause
"""All that may happen to one peer of a removal, one fault after the other, before one and the same service."""

from gi.repository import GLib
from standin.names import BUSES

from .faulttable import written
from .removalrequests import DELETED, PEERS, End

NONSENSE = GLib.Variant('(a{sv})', ({},))
NO_REPLY = 'Message recipient disconnected from message bus without replying'
CRASHED = 'The PackageKit daemon has crashed'

# PackageKit's end and the missing answer are both reported, in the order in which they arrive, as long as an object
# receives them: Known behaviour 26.
CRASH = End(log=DELETED)

# What never gets an answer that ends it comes last: it would hear of every later death.
CALL_FAULTS = ('dies', 'hangs', 'wrong type')


class RemovalFaults:
    """Makes a peer of the removal faulty; `ends` has what then differs from the usual end, by call and fault."""

    def __init__(self, removal, peer, ends, buses, table):
        self._removal = removal
        self._name = peer
        self._ends = ends
        self._bus = buses[BUSES[peer]]
        self._table = table

    def try_all(self):
        """Each fault, and after it the same request once more, which takes its usual course."""
        self._try('any', 'absent', self._go)
        self._try('any', 'returns', self._leave_and_return)
        for fault in CALL_FAULTS:
            for method in self._removal.request.methods_of(self._name):
                self._try(method, fault, lambda method=method, fault=fault: self._plan(method, fault))

    def _try(self, method, fault, prepare):
        removal = self._removal
        cell = (removal.request.name, self._name, method, fault)
        row = self._table.begin(*cell)
        end = self._ends.get((method, fault), removal.request.usual)
        removal.set_up()
        prepare()

        outcomes = self._run(method, fault, end)

        if end is CRASH:
            failures = {text for success, text in outcomes if not success}
            assert outcomes[0][0] is False and failures <= {CRASHED, NO_REPLY}, (cell, outcomes)
        else:
            assert outcomes == end.outcomes, cell
        row.append(written(outcomes))
        self._repair()
        row.append(removal.repeat())

    def _run(self, method, fault, end):
        removal = self._removal
        standin = removal.peer(self._name)
        seen = len(standin.calls(method)) if fault in CALL_FAULTS else 0
        asked = removal.ask(end)
        if fault == 'dies':
            standin.wait_exit()
        elif fault == 'hangs':
            removal.wait_answered(method, seen + 1)
            assert standin.hanging() == [method]
            assert removal.outcomes() == ()
            standin.release(method)
        elif fault == 'wrong type':
            removal.wait_answered(method, seen + 1)
        asked.wait()
        return removal.wait_end(end)

    def _plan(self, method, fault):
        standin = self._removal.peer(self._name)
        standin.restore(method)
        if fault == 'dies':
            standin.exit_on(method, 'before')
        elif fault == 'hangs':
            standin.hang(method, 1)
        else:
            standin.answer(method, NONSENSE, 1)
        self._removal.set_up_peer(self._name)

    def _go(self):
        self._removal.peer(self._name).kill()
        self._bus.wait_owner(PEERS[self._name], owned=False)

    def _leave_and_return(self):
        self._removal.peer(self._name).vanish()
        self._removal.peer(self._name).come_back()

    def _repair(self):
        if not self._removal.peer(self._name).process.alive:
            self._removal.standins.start(self._name)
