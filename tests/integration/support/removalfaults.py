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
    """Makes a peer of the scene faulty; `ends` has what then differs from the usual end, by call and fault."""

    def __init__(self, scene, peer, ends, buses, table):
        self._scene = scene
        self._name = peer
        self._ends = ends
        self._bus = buses[BUSES[peer]]
        self._table = table

    def try_all(self):
        """Each fault, and after it the same request once more, which takes its usual course."""
        self._try('any', 'absent', self._go)
        self._try('any', 'returns', self._leave_and_return)
        for fault in CALL_FAULTS:
            for method in self._scene.request.methods_of(self._name):
                self._try(method, fault, lambda method=method, fault=fault: self._plan(method, fault))

    def _try(self, method, fault, prepare):
        scene = self._scene
        cell = (scene.request.name, self._name, method, fault)
        row = self._table.begin(*cell)
        end = self._ends.get((method, fault), scene.request.usual)
        scene.set_up()
        prepare()

        outcomes = self._run(method, fault, end)

        if end is CRASH:
            failures = {text for success, text in outcomes if not success}
            assert outcomes[0][0] is False and failures <= {CRASHED, NO_REPLY}, (cell, outcomes)
        else:
            assert outcomes == end.outcomes, cell
        row.append(written(outcomes))
        self._repair()
        row.append(scene.repeat())

    def _run(self, method, fault, end):
        scene = self._scene
        standin = scene.peer(self._name)
        seen = len(standin.calls(method)) if fault in CALL_FAULTS else 0
        asked = scene.ask(end)
        if fault == 'dies':
            standin.wait_exit()
        elif fault == 'hangs':
            scene.wait_answered(method, seen + 1)
            assert standin.hanging() == [method]
            assert scene.outcomes() == ()
            standin.release(method)
        elif fault == 'wrong type':
            scene.wait_answered(method, seen + 1)
        asked.wait()
        return scene.wait_end(end)

    def _plan(self, method, fault):
        standin = self._scene.peer(self._name)
        standin.restore(method)
        if fault == 'dies':
            standin.exit_on(method, 'before')
        elif fault == 'hangs':
            standin.hang(method, 1)
        else:
            standin.answer(method, NONSENSE, 1)
        self._scene.set_up_peer(self._name)

    def _go(self):
        self._scene.peer(self._name).kill()
        self._bus.wait_owner(PEERS[self._name], owned=False)

    def _leave_and_return(self):
        self._scene.peer(self._name).vanish()
        self._scene.peer(self._name).come_back()

    def _repair(self):
        if not self._scene.peer(self._name).process.alive:
            self._scene.standins.start(self._name)
