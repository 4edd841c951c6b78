# SPDX-FileCopyrightText: velmora-installationhandler contributors
# SPDX-License-Identifier: BSD-3-Clause
"""The services that the service calls, and the calls that wait for an answer."""

from dataclasses import dataclass
from typing import Callable

from model.answers import ANSWERED, METHODS, PEERS, Answers, Reply
from model.steps import ERRORS

NO_REPLY = 'org.freedesktop.DBus.Error.NoReply'
DISCONNECTED = Reply(None, NO_REPLY, 'Message recipient disconnected from message bus without replying')
TIMED_OUT = Reply(None, NO_REPLY, (
    'Did not receive a reply. Possible causes include: the remote application did not send a reply, the message '
    'bus security policy blocked the reply, the reply timeout expired, or the network connection was broken.'))


@dataclass(eq=False)
class Call:
    """A call that waits for its answer. `answered` gets the answer of one that does not block."""

    method: str
    arguments: tuple
    deadline: int
    answered: Callable = None
    transaction: int = None
    held: bool = False

    @property
    def blocks(self):
        return self.answered is None


class Peers:
    """The peers that are there, their answers, and the calls that wait."""

    def __init__(self, loop, trace, clock):
        self._loop = loop
        self._trace = trace
        self._clock = clock
        self._held = set()
        self.answers = Answers()
        self.present = set(PEERS)
        self.waiting = []
        self.given_up = []  # the calls whose time-out has come
        self.running = []  # PackageKit's transactions

    def hold(self, method):
        self._held.add(method)

    def is_held(self, method):
        return method in self._held

    def ask(self, method, *arguments):
        """Calls a method and waits for its answer. A generator."""
        call, reply = self._send(method, arguments)
        if reply is None:
            self.waiting.append(call)
            reply = yield
        return reply

    def send(self, method, *arguments, answered, transaction=None):
        """Calls a method. Its answer goes to a function when it arrives."""
        call, reply = self._send(method, arguments, answered, transaction)
        if reply is None:
            self.waiting.append(call)
        else:
            # The bus may refuse the call before QtDBus knows who waits for its answer. Then one event leads to another.
            self._loop.post_later(lambda: answered(reply), in_two=True)

    def answer(self, call, reply):
        """An answer of a peer or of the bus to a call that waits."""
        self.waiting.remove(call)
        if call.answered:
            self._loop.post_later(lambda: call.answered(reply))
        else:
            self._loop.resume(reply)

    def give_up(self, call):
        """The time-out of a call has come."""
        self.given_up.append(call)
        self.answer(call, TIMED_OUT)

    def answer_next(self):
        """Answers a call that neither blocks nor waits for a step, if there is one. Returns whether there was."""
        for call in self.waiting:
            if call.method in ANSWERED and not call.blocks and not call.held:
                self.answer(call, self.reply_to(call, 'usual'))
                return True
        return False

    def place_of(self, call):
        """The method of a call that waits, and its number among those of that method."""
        return call.method, [other for other in self.waiting if other.method == call.method].index(call)

    def reply_to(self, call, manner):
        """The answer of a given manner, as the service takes it."""
        if manner in ERRORS:
            return Reply(None, *ERRORS[manner])
        if manner == 'usual':
            return self.answers.usual(call.method, call.arguments)
        # Only where the type is checked is a wrong one an error.
        if call.method in ('GetPackage', 'CreateTransaction'):
            return Reply(None, 'org.freedesktop.DBus.Error.InvalidSignature',
                         'Unexpected reply signature: got "a{sv}", expected "o"')
        return Reply()

    def leave(self, peer):
        """A peer goes. The bus answers the calls that wait for it, the newest first."""
        self.present.discard(peer)
        self.given_up = [call for call in self.given_up if METHODS[call.method].peer != peer]
        for call in [call for call in reversed(self.waiting) if METHODS[call.method].peer == peer]:
            self.answer(call, DISCONNECTED)

    def _send(self, method, arguments, answered=None, transaction=None):
        peer = METHODS[method].peer
        self._trace.call(PEERS[peer].bus, method, arguments)
        call = Call(method, arguments, self._clock.now + METHODS[method].timeout, answered, transaction)
        if peer not in self.present:
            return call, Reply(None, 'org.freedesktop.DBus.Error.ServiceUnknown',
                               f'The name {PEERS[peer].name} was not provided by any .service files')
        call.held = method in self._held
        self._held.discard(method)
        return call, self.answers.usual(method, arguments) if call.blocks and not call.held else None
