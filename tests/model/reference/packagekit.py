# SPDX-FileCopyrightText: velmora-installationhandler contributors
# SPDX-License-Identifier: BSD-3-Clause
"""The client library of PackageKit."""

INSTALLED_ONLY = 4
ENUM = 'PackageKit::Transaction::'
CRASHED = 'The PackageKit daemon has crashed'


class Transaction:
    """One transaction, which is begun and then asked for something. Its owner hears of `found`, `error` and `finished`,
    as long as there is one."""

    def __init__(self, library, owner, method, arguments):
        self._library = library
        self._owner = owner
        self.method = method
        self._arguments = arguments
        self.number = None
        library.peers.send('CreateTransaction', answered=self._begun)

    def _begun(self, reply):
        if reply.is_error:
            yield from self._fail(reply.error_text)
            return
        self.number = reply.value
        self._library.peers.send(self.method, *self._arguments, answered=self._accepted, transaction=self.number)

    def _accepted(self, reply):
        if reply.is_error:
            yield from self._fail(reply.error_text)

    def _fail(self, text):
        """An error of the bus, or a refusal: the error and the end come in one go, and then nothing more."""
        self._forget()
        yield from self.error('ErrorInternalError', text)
        yield from self.finished('ExitFailed')

    def crashed(self):
        """PackageKit has left the bus. A transaction hears of it once."""
        self._forget()
        yield from self.error('ErrorProcessKill', CRASHED)
        yield from self.finished('ExitKilled')

    def found(self, package):
        if not self._library.loop.is_deleted(self._owner):
            yield from self._owner.found(self, package)

    def error(self, code, text):
        if not self._library.loop.is_deleted(self._owner):
            yield from self._owner.error(self, code, text)

    def finished(self, end):
        """The library deletes a transaction that has ended. Events on their way are still heard before."""
        if not self._library.loop.is_deleted(self._owner):
            yield from self._owner.finished(self, end)
        self._library.loop.delete_later(self, self._forget)

    def _forget(self):
        if self in self._library.transactions:
            self._library.transactions.remove(self)


class PackageKit:
    """The library: all transactions that have not ended."""

    def __init__(self, loop, peers):
        self.loop = loop
        self.peers = peers
        self.transactions = []

    def start(self, owner, method, *arguments):
        self.transactions.append(Transaction(self, owner, method, arguments))

    def daemon_has_left(self):
        """Only the transactions that the daemon has begun hear of it."""
        for transaction in [begun for begun in self.transactions if begun.number]:
            yield from transaction.crashed()
