# SPDX-FileCopyrightText: velmora-installationhandler contributors
# SPDX-License-Identifier: BSD-3-Clause
"""Faults of the peers of an installation."""

from typing import NamedTuple

from gi.repository import GLib

from .installationrequests import ALL, ORDINARY, Installation

NONSENSE = GLib.Variant('(a{sv})', ({},))
TRUE = GLib.Variant('(b)', (True,))
REFUSED = ('a.b.Refused', 'not today')

MANAGER, DEVELOPER_MODE, MCE, NOTIFICATIONS = 'package-manager', 'developer-mode', 'mce', 'notifications'

# The methods that each peer is called for, in this order.
CALLS = {
    MANAGER: ['Install'], DEVELOPER_MODE: ['IsSilentInstallationEnabled'],
    MCE: ['get_display_status', 'notification_begin_req', 'notification_end_req'], NOTIFICATIONS: ['Notify'],
}
# The service does not wait for the answers to these.
NOT_AWAITED = ('get_display_status', 'Notify')

# A peer that dies after its reply must be gone before it is called again. The call of another peer comes in between, and is
# held; the number is that of its calls that come earlier.
HELD = {'Install': (DEVELOPER_MODE, 'IsSilentInstallationEnabled', 1),
        'IsSilentInstallationEnabled': (MANAGER, 'Install', 0)}


class Cell(NamedTuple):
    """A fault of a peer, at a call or at "any", in a request."""

    peer: str
    call: str
    fault: str
    request: Installation

    def __str__(self):
        return ' '.join(map(str, self))


# The faults of a peer, and of its calls.
FAULTS = ('absent', 'returns')
CALL_FAULTS = ('dies before the reply', 'dies after the reply', 'hangs', 'wrong type', 'error')
# The answer of the bus to a call that hangs when its peer goes. One request shows it.
LATER_FAULTS = ('hangs and dies', 'hangs and replies without its name')


def cells(peer):
    """All cells of a peer. MCE is only called in requests that ask the user."""
    for request in ALL:
        yield from (Cell(peer, 'any', fault, request) for fault in FAULTS)
        if peer != MCE or request.asks:
            faults = CALL_FAULTS + LATER_FAULTS if request == ORDINARY else CALL_FAULTS
            yield from (Cell(peer, call, fault, request) for call in CALLS[peer] for fault in faults)


class Fault:
    """Brings a fault about: before the request, and while it is under way."""

    def __init__(self, device, cell):
        self._device = device
        self._cell = cell
        self._standin = device.peer(cell.peer)
        self._held = HELD.get(cell.call) if cell.request.files > 1 else None

    def prepare(self):
        """What is wrong before the request comes."""
        standin, call = self._standin, self._cell.call
        match self._cell.fault:
            case 'absent':
                standin.kill()
                self._device.wait_gone(self._cell.peer)
            case 'returns':
                self._leave()
                standin.come_back()
            case 'dies before the reply':
                standin.exit_on(call, 'before')
            case 'dies after the reply':
                standin.exit_on(call, 'after')
                self._hold_next_call()
            case 'wrong type':
                standin.answer(call, NONSENSE, 1)
            case 'error':
                standin.refuse(call, *REFUSED, 1)
            case _:
                standin.hang(call, 1)
        if call == 'get_display_status':
            # It is asked for whenever MCE appears.
            self._leave()
            standin.come_back()
            standin.wait_call(call)

    def follow(self):
        """What goes on once the request is there."""
        fault = self._cell.fault
        if fault.startswith('dies'):
            self._standin.wait_exit()
            self._device.wait_gone(self._cell.peer)
            self._release_next_call()
        elif fault.startswith('hangs'):
            self._standin.wait_call(self._cell.call)
            self._wait_in_vain()
            self._end_hanging()

    def repair(self):
        """The peer is as it was at first."""
        self._device.repair(self._cell.peer, *([] if self._cell.call == 'any' else [self._cell.call]))

    def _leave(self):
        self._standin.vanish()
        self._device.wait_gone(self._cell.peer)

    def _hold_next_call(self):
        if self._held:
            peer, call, earlier = self._held
            if earlier:
                self._device.peer(peer).answer(call, TRUE, earlier)
            self._device.peer(peer).hang(call, 1)

    def _release_next_call(self):
        if self._held and self._cell.fault == 'dies after the reply':
            peer, call, earlier = self._held
            self._device.peer(peer).wait_call(call, earlier + 1)
            self._device.peer(peer).release(call)

    def _wait_in_vain(self):
        """The caller hears nothing as long as a peer hangs whose answer matters."""
        if self._cell.call in NOT_AWAITED:
            self._device.wait_signals('installFinished', 1)
        else:
            if self._cell.call == 'Install':
                # The service is free meanwhile. In all other calls it waits.
                self._device.service.barrier()
            assert self._device.told() == []

    def _end_hanging(self):
        if self._cell.fault == 'hangs and dies':
            self._standin.kill()
            return
        if self._cell.fault == 'hangs and replies without its name':
            self._leave()
        self._standin.release(self._cell.call)
