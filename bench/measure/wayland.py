# SPDX-FileCopyrightText: velmora-installationhandler contributors
# SPDX-License-Identifier: BSD-3-Clause
"""From the request to the first buffer of the dialog at a Wayland compositor."""

import os
import re
import signal
import time
from contextlib import contextmanager
from pathlib import Path

from harness.signalrecorder import SignalRecorder

from .dialog import turn_display
from .figure import Value
from .packages import package
from .programs import CLIENT, PEERS, PROCESSES, PRODUCT, SESSION, running

COLD_ROUNDS = 41
WARM_ROUNDS = 51
COLD_LIMIT = 100
WARM_LIMIT = 16

COMPOSITOR = ('weston', '--no-config', '--backend=headless-backend.so', '--use-pixman', '--idle-time=0',
              '--width=540', '--height=960')
SOCKET = Path('/run/user/100000/wayland-bench')

# The bus starts the service, whose output is in this file. Wayland's library logs each message with its time there.
LOG = Path('/var/log/session-bus.log')
ENVIRONMENT = {'WAYLAND_DISPLAY': SOCKET.name, 'QT_QPA_PLATFORM': 'wayland', 'QT_QUICK_BACKEND': 'software',
               'WAYLAND_DEBUG': '1'}
BUFFER = re.compile(r'\[ *(\d+)\.(\d+)\] .* -> wl_surface[@#]\d+\.attach\(wl_buffer[@#]')
WRAP = 1 << 32  # microseconds


def figures():
    with running(PEERS), compositor():
        SESSION.ask('UpdateActivationEnvironment', '(a{ss})', ENVIRONMENT)
        requests = Requests()
        # The first one ever compiles the QML, and keeps it in the user's cache.
        requests.cold()
        yield Value('Wayland: first buffer, first request, with process start', 'ms',
                    [requests.cold() for _ in range(COLD_ROUNDS)], [], COLD_LIMIT)
        yield Value('Wayland: first buffer, later request', 'ms',
                    [requests.first_buffer() for _ in range(WARM_ROUNDS)], [], WARM_LIMIT)
        requests.end_service()


@contextmanager
def compositor():
    """A Wayland compositor without a display."""
    process = PROCESSES.start_in_session('Weston', [*COMPOSITOR, f'--socket={SOCKET.name}'])
    while not SOCKET.exists():
        PROCESSES.check_alive('the socket of Weston')
        time.sleep(0.01)
    yield
    process.stop()


class Requests:
    """Requests for installations that the user has to confirm, to the service that the bus starts."""

    def __init__(self):
        self._signals = SignalRecorder(SESSION.connection, PROCESSES)

    def cold(self):
        """The milliseconds of a request that starts the service."""
        self.end_service()
        return self.first_buffer()

    def end_service(self):
        """Ends the service if it runs."""
        process = SESSION.process_of(PRODUCT.name)
        if process:
            os.kill(process, signal.SIGKILL)
            SESSION.wait_owner(PRODUCT.name, owned=False)

    def first_buffer(self):
        """Milliseconds from the request to the first buffer of the dialog, which is gone when this returns."""
        PROCESSES.run_pending()
        finished = self._signals.names().count('installFinished')
        shown = self._signals.names().count('needConfirm')
        with LOG.open(encoding='utf-8', errors='replace') as log:
            log.seek(0, os.SEEK_END)
            begun = time.clock_gettime_ns(time.CLOCK_REALTIME) // 1000
            CLIENT.start('installFiles', '(asbb)', [str(package('10K'))], False, False)
            self._signals.wait('needConfirm', shown + 1)
            taken = (first_buffer_of_window(log) - begun) % WRAP / 1000
        turn_display('off')
        self._signals.wait('installFinished', finished + 1)
        turn_display('on')
        return taken


def first_buffer_of_window(log):
    """The time of the first buffer of the next window in a log, in microseconds as Wayland's library counts them: 32 bits."""
    lines = growing(log)
    next(line for line in lines if '.get_toplevel(' in line)
    buffer = next(filter(None, map(BUFFER.match, lines)))
    return int(buffer[1]) * 1000 + int(buffer[2])


def growing(log):
    """The lines of a file that a program writes to, without end."""
    line = ''
    while True:
        line += log.readline()
        if line.endswith('\n'):
            yield line
            line = ''
        else:
            PROCESSES.check_alive('a line of the log')
            time.sleep(0.001)
