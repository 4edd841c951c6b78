# SPDX-FileCopyrightText: velmora-installationhandler contributors
# SPDX-License-Identifier: BSD-3-Clause
"""The messages of a process on a bus."""

import itertools

from harness.busmonitor import BusMonitor
from harness.client import INTERFACE, PATH
from model.answers import METHODS, PEERS, TRANSACTION, TRANSACTION_METHODS

from .peers import HOUSEKEEPING

BUS = 'org.freedesktop.DBus'
# The signals of the service, with the types of their arguments.
SIGNALS = {'installFinished': 'bs', 'removalFinished': 'bs', 'needConfirm': ''}


def is_announced(signal):
    """Whether a signal comes from the object and interface that has it, with arguments of the right types."""
    return (signal.path, signal.interface, signal.signature) == (PATH, INTERFACE, SIGNALS.get(signal.member))


def is_addressed(call):
    """Whether a call goes to the object and interface that has the method, with arguments of the right types."""
    method = METHODS.get(call.member)
    if not method or call.signature != method.types:
        return False
    peer = PEERS[method.peer]
    if call.member in TRANSACTION_METHODS:
        return (call.destination, call.interface) == (peer.name, TRANSACTION)
    return (call.destination, call.path, call.interface) == (peer.name, peer.path, peer.interface)


class Recording:
    """The messages of one connection on one bus, from now on, and its calls that have not been answered."""

    def __init__(self, bus, processes, name, client):
        """`name` is the connection's unique name, `client` that of the only caller whose requests count."""
        self._record = []
        self._monitor = BusMonitor(bus, processes, self._record)
        self._looked_at = 0
        self._name = name
        self._client = client
        self._requests = {}
        self._numbers = itertools.count(1)
        self._messages = []
        self.unanswered = {}

    def close(self):
        self._monitor.close()

    def look(self):
        """Looks at all that has passed the bus. Returns whether the connection has said something or got an answer."""
        self._monitor.settle()
        new, self._looked_at = self._record[self._looked_at:], len(self._record)
        return any([self._look_at(message) for message in new])

    def take(self):
        """The messages since the last call, as Seen has them."""
        messages, self._messages = self._messages, []
        return messages

    def _look_at(self, message):
        if message.destination == self._name and message.reply_serial:
            return self.unanswered.pop(message.reply_serial, None) is not None
        if message.sender == self._client and message.interface == INTERFACE:
            self._requests[message.serial] = next(self._numbers)
        if message.sender != self._name:
            return False
        if message.reply_serial:
            return self._look_at_reply(message)
        if message.kind == 'signal':
            self._messages.append(('signal' if is_announced(message) else 'signal elsewhere', message.member,
                                   *message.arguments))
        elif message.destination != BUS:
            self.unanswered[message.serial] = message
            if message.member not in HOUSEKEEPING:
                self._messages.append(('call' if is_addressed(message) else 'call elsewhere', message.member,
                                       *message.arguments))
        return True

    def _look_at_reply(self, message):
        """Replies to others than requests only answer a look at the process."""
        number = self._requests.pop(message.reply_serial, None)
        if number and message.error_name:
            self._messages.append(('error', number, message.error_name))
        elif number:
            self._messages.append(('reply', number))
        return number is not None
