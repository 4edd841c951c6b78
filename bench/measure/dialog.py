# SPDX-FileCopyrightText: velmora-installationhandler contributors
# SPDX-License-Identifier: BSD-3-Clause
"""From the request to the first frame of the dialog."""

import os
import shutil
import time
from pathlib import Path

from harness.client import Client
from harness.signalrecorder import SignalRecorder

from .figure import Ratio
from .packages import package
from .programs import (CLIENT, FLOOR, PEERS, PROCESSES, PRODUCT, SESSION, SYSTEM, in_turn, running,
                       wait_for_event_loop)

FIRST_ROUNDS = 5
COLD_ROUNDS = 41
WARM_ROUNDS = 51
COLD_LIMIT = 1.5
WARM_LIMIT = 1.4

# Where the engine keeps compiled QML, in folders of the programs' names.
CACHES = Path('/home/velmora/.cache')

# The scene graph logs each frame.
ENVIRONMENT = {'QT_QUICK_BACKEND': 'software', 'QT_LOGGING_RULES': 'qt.scenegraph.time.renderloop.debug=true'}
FRAME = 'Frame rendered'

# A program that moves between processors has to fill their caches again, as often as chance has it.
ONE_PROCESSOR = ('taskset', '--cpu-list', str(max(os.sched_getaffinity(0))))


def figures():
    with running(PEERS):
        dialogs = Dialogs()
        yield Ratio('first frame: first request ever', 'ms', *in_turn(FIRST_ROUNDS, dialogs.first_ever, PRODUCT, FLOOR), None)
        # The QML that is compiled here stays in the user's cache.
        in_turn(1, dialogs.cold, PRODUCT, FLOOR)
        yield Ratio('first frame: first request, cold service', 'ms',
                    *in_turn(COLD_ROUNDS, dialogs.cold, PRODUCT, FLOOR), COLD_LIMIT)
        with logging(PRODUCT, ONE_PROCESSOR) as product, logging(FLOOR, ONE_PROCESSOR) as floor:
            services = (PRODUCT, product), (FLOOR, floor)
            in_turn(1, dialogs.first_frame, *services)
            yield Ratio('first frame: later request, warm service', 'ms',
                        *in_turn(WARM_ROUNDS, dialogs.first_frame, *services), WARM_LIMIT)


def logging(program, prefix=()):
    return running(program, ENVIRONMENT, prefix)


class Dialogs:
    """Requests for installations that the user has to confirm."""

    def __init__(self):
        self._signals = SignalRecorder(SESSION.connection, PROCESSES)

    def first_ever(self, program):
        """The time to the first frame of the first request, where the QML has to be compiled."""
        for cache in list(CACHES.rglob('qmlcache')):
            shutil.rmtree(cache)
        return self.cold(program)

    def cold(self, program):
        """The time to the first frame of the first request."""
        with logging(program) as process:
            return self.first_frame((program, process))

    def first_frame(self, service):
        """Milliseconds from the request to the first frame of the dialog, which is gone when this returns."""
        program, process = service
        wait_for_event_loop(program)
        PROCESSES.run_pending()
        finished = self._signals.names().count('installFinished')
        frames = process.text.count(FRAME)
        begun = time.perf_counter()
        CLIENT.start('installFiles', '(asbb)', [str(package('10K'))], False, False, name=program.name)
        PROCESSES.wait_until(lambda: process.text.count(FRAME) > frames, f'{FRAME}, by {program.name}')
        taken = (time.perf_counter() - begun) * 1000
        turn_display('off')
        self._signals.wait('installFinished', finished + 1)
        turn_display('on')
        return taken


def turn_display(state):
    """Turns the display on or off; turning it off makes the service close its dialog."""
    Client(SYSTEM.connection, PROCESSES).call('TurnDisplay', '(s)', state, name='com.nokia.mce',
                                              path='/com/nokia/mce/request', interface='com.nokia.mce.request')
