# SPDX-FileCopyrightText: velmora-installationhandler contributors
# SPDX-License-Identifier: BSD-3-Clause
"""Peers that are absent, die, hang or refuse, at each call that the service makes to them."""

from dataclasses import dataclass
from typing import Callable

import pytest

ASKED = ('"Unable install package without confirm: The installation is not running in sdk mode. '
         'Silent software instalation is not allowed"')
UNKNOWN = 'Could not fetch developer mode state:  '
NOT_THERE = UNKNOWN + '"The name ru.quon.developermode was not provided by any .service files"'
NO_REPLY = UNKNOWN + '"Message recipient disconnected from message bus without replying"'
FAILED = 'zarn_installation_error_desc_{0} (code: {0})'

PEERS = {
    'IsSilentInstallationEnabled': ('developer-mode', 'ru.quon.developermode'),
    'get_display_status': ('mce', 'com.nokia.mce'),
    'notification_begin_req': ('mce', 'com.nokia.mce'),
    'notification_end_req': ('mce', 'com.nokia.mce'),
    'Install': ('package-manager', 'ru.quon.ZARN'),
    'Notify': ('notifications', 'org.freedesktop.Notifications'),
}


class Peer:
    """The stand-in at fault, and the method that is called."""

    def __init__(self, method, standins, bus):
        self.method = method
        self.name, self._bus_name = PEERS[method]
        self._standins = standins
        self._bus = bus
        self.standin = None

    def found(self):
        self.standin = getattr(self._standins, self.name.replace('-', '_'))

    def go(self):
        """The peer dies, and the bus has noticed it."""
        self.standin.kill()
        self._bus.wait_owner(self._bus_name, owned=False)

    def repair(self):
        """Makes the peer work again, whatever has happened to it."""
        if self.standin is None or not self.standin.process.alive:
            self.standin = self._standins.start(self.name)
        elif not self._bus.has_owner(self._bus_name):
            self.standin.come_back()
        self.standin.restore(self.method)


@dataclass
class Fault:
    """The changes to the peer before and during its call, and the signs of the fault. A fault without signs changes
    neither the log nor the outcome."""

    before: Callable = lambda peer: None
    during: Callable = None
    absent: bool = False
    dies: bool = False
    warning: str = ASKED
    code: str = None


def answer_nameless(peer):
    peer.standin.vanish()
    peer.standin.release(peer.method)


FAULTS = {
    'absent': Fault(absent=True, warning=NOT_THERE, code='ServiceUnknown'),
    'dead before the call': Fault(Peer.go, warning=NOT_THERE, code='ServiceUnknown'),
    'without its name': Fault(lambda peer: peer.standin.vanish(), warning=NOT_THERE, code='ServiceUnknown'),
    'dies in the call': Fault(lambda peer: peer.standin.exit_on(peer.method, 'before'), dies=True, warning=NO_REPLY,
                              code='NoReply'),
    'dies after its answer': Fault(lambda peer: peer.standin.exit_on(peer.method, 'after'), dies=True),
    'hangs and dies': Fault(lambda peer: peer.standin.hang(peer.method), Peer.go, warning=NO_REPLY, code='NoReply'),
    'hangs and answers without its name': Fault(lambda peer: peer.standin.hang(peer.method), answer_nameless),
    'refuses': Fault(lambda peer: peer.standin.refuse(peer.method, 'a.b.Refused', 'not today'),
                     warning=UNKNOWN + '"not today"', code='Refused'),
}


@pytest.fixture
def peer(request, standins, system_bus, session_bus):
    """The peer at fault, not started."""
    return Peer(request.param, standins, session_bus if request.param == 'Notify' else system_bus)


@pytest.mark.parametrize('fault', FAULTS)
@pytest.mark.parametrize('peer', PEERS, indirect=True)
def test_fault(peer, standins, program, client, signals, dialog, device, installation_table, fault):
    what = FAULTS[fault]
    row = installation_table.begin(peer.method, fault)
    dialog.use('Confirming')
    if peer.method == 'Notify':
        device.forbid_installing()
    start_standins(standins, peer, what)

    # The display's state is asked for at the start, everything else for a request.
    if peer.method != 'get_display_status':
        program.start()
    what.before(peer)
    if peer.method == 'get_display_status':
        program.start()
    request = client.start('installFiles', '(as)', ['/absent.rpm'])
    if what.during:
        peer.standin.wait_call(peer.method)
        what.during(peer)
    if what.dies:
        peer.standin.wait_exit()
    request.wait()

    outcome = signals.wait('installFinished')
    program.barrier()
    row.append(outcome[1].partition('.')[0] or 'installed')
    if peer.method == 'Notify':
        check_refused_request(program, signals, outcome)
        device.set_policy(None)
    else:
        check_request(peer, what, program, signals, outcome)
    check_next_request(peer, program, client, signals)
    row.append('installed')


def start_standins(standins, peer, what):
    """The peer, unless it is to be absent, and the package manager, which installs nothing."""
    names = {peer.name, 'package-manager'} - ({peer.name} if what.absent else set())
    if names:
        standins.start(*names)
    if 'package-manager' in names:
        standins.package_manager.configure('installs', 'nothing')
    if not what.absent:
        peer.found()


def normal_warning(peer):
    return ASKED if peer.name == 'developer-mode' else NOT_THERE


def check_refused_request(service, signals, outcome):
    assert outcome[0] is False and outcome[1].startswith("This device's policy does not allow installing apps (")
    assert signals.names() == ['installFinished']
    assert service.log() == []


def check_request(peer, what, service, signals, outcome):
    failed = peer.method == 'Install' and what.code
    assert outcome == ((False, FAILED.format(what.code)) if failed else (True, ''))
    assert signals.names() == ['needConfirm', 'installFinished']
    assert service.warnings() == [what.warning if peer.name == 'developer-mode' else normal_warning(peer)]


def check_next_request(peer, service, client, signals):
    """The fault has left no trace."""
    peer.repair()
    if peer.name == 'package-manager':
        peer.standin.configure('installs', 'nothing')
    signals.all.clear()
    warnings = len(service.warnings())

    client.install(['/absent.rpm'])

    assert signals.wait('installFinished') == (True, '')
    service.barrier()
    assert signals.names() == ['needConfirm', 'installFinished']
    assert service.warnings()[warnings:] == [normal_warning(peer)]
