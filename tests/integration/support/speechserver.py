# SPDX-FileCopyrightText: velmora-installationhandler contributors
# SPDX-License-Identifier: BSD-3-Clause
"""A program in the place of Speech Dispatcher: prints the texts that a screen reader has spoken, one a line.

It listens at Speech Dispatcher's usual socket, and answers each command of its protocol SSIP with success.
"""

import html
import os
import re
import socketserver
from pathlib import Path

READY = 'ready'


class Connection(socketserver.StreamRequestHandler):
    """The connection of a screen reader."""

    def handle(self):
        for command in self.rfile:
            self._succeed()
            if command.startswith(b'SPEAK'):
                print(spoken(b''.join(iter(self.rfile.readline, b'.\r\n')).decode()), flush=True)
                self._succeed()

    def _succeed(self):
        """Clients expect a value only from commands that ask for a number."""
        self.wfile.write(b'200-1\r\n200 OK\r\n')


def spoken(markup):
    """The text without the elements that mark where each word begins."""
    return html.unescape(re.sub('<.*?>', '', markup)).strip()


if __name__ == '__main__':
    socket = Path(os.environ['XDG_RUNTIME_DIR'], 'speech-dispatcher/speechd.sock')
    socket.parent.mkdir(exist_ok=True)
    socket.unlink(missing_ok=True)
    with socketserver.ThreadingUnixStreamServer(str(socket), Connection) as server:
        print(READY, flush=True)
        server.serve_forever()
