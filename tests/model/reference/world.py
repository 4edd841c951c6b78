# SPDX-FileCopyrightText: velmora-installationhandler contributors
# SPDX-License-Identifier: BSD-3-Clause
"""The service between its peers, as a model that does the steps of a history."""

import platform

from model.answers import ANSWERED
from model.steps import ENDS, FOUND, REPORTED_ERRORS, Wait

from .device import Device
from .loop import Loop
from .peers import Peers
from .service import Service
from .trace import Trace

# Time-outs that lie nearer to each other than this, in seconds, have no certain order.
CLEARLY_LATER = 4
# A time-out comes at most so many seconds early or late.
TOLERANCE = 1


class Clock:
    """Stands still, but for steps that let time pass."""

    now = 0


class World:
    """Does the steps of a history, and says what can be seen of each."""

    def __init__(self):
        self._clock = Clock()
        self._trace = Trace()
        self._loop = Loop()
        self._device = Device(platform.freedesktop_os_release()['NAME'])
        self._peers = Peers(self._loop, self._trace, self._clock)
        self._service = Service(self._loop, self._trace, self._clock, self._device, self._peers)
        self._requests = 0

    def can(self, step):
        """Whether a step makes sense now."""
        condition = getattr(self, f'_can_{type(step).__name__}', None)
        return self._trace.exit_status is None and (condition is None or condition(step))

    @property
    def is_certain(self):
        """Whether the service can only do what the model says: no order of events is up to the scheduler."""
        return self._loop.is_certain

    def would_end(self, step):
        """Whether a step is nothing but the end of a service that has nothing to do."""
        return isinstance(step, Wait) and not self._loop.blocked and self._deadlines()[0][1] is None

    def target(self, step):
        """The thing that a step means by a number: the dialog, the call as its method and its number among the calls of
        that method, the late call as its number, or the transaction. For Wait, the time shortly after the time-out, and the call that gets no answer. For
        Pause, the time shortly before."""
        find = getattr(self, f'_target_{type(step).__name__}', None)
        return find(step) if find else None

    def do(self, step):
        """Does a step, and returns what can be seen of it."""
        getattr(self, f'_do_{type(step).__name__}')(step)
        self._settle()
        return self._trace.take()

    def _settle(self):
        """The loop runs until it waits. Then the idle time may be over."""
        self._loop.run()
        while self._peers.answer_next():
            self._loop.run()
        deadline = self._service.count.deadline
        if not self._loop.blocked and deadline is not None and deadline <= self._clock.now:
            self._trace.exit_status = 0
            self._trace.screen.clear()

    def _request(self, handle, step):
        self._requests += 1
        number = self._requests

        def handler():
            yield from handle(step)
            self._trace.reply(number)
        self._loop.post(handler)

    def _do_Install(self, step):
        self._request(self._service.install, step)

    def _do_Remove(self, step):
        self._request(self._service.remove, step)

    def _do_RemoveLauncher(self, step):
        self._request(self._service.remove_launcher, step)

    def _can_Choose(self, _step):
        """A service that waits for a peer does not hear the user."""
        return self._trace.screen and not self._loop.blocked

    def _target_Choose(self, step):
        numbers = sorted(self._trace.screen, reverse=True)
        return numbers[step.dialog % len(numbers)]

    def _do_Choose(self, step):
        self._loop.post(self._service.dialog.confirmed if step.confirm else self._service.dialog.refused)

    def _can_Display(self, step):
        return 'MCE' in self._peers.present and step.state != self._peers.answers.display

    def _do_Display(self, step):
        self._peers.answers.display = step.state
        self._loop.post(lambda: self._service.display.told(step.state))

    def _can_Answer(self, _step):
        return self._peers.waiting

    def _call_of(self, step):
        return self._peers.waiting[step.call % len(self._peers.waiting)]

    def _target_Answer(self, step):
        return self._peers.place_of(self._call_of(step))

    def _do_Answer(self, step):
        call = self._call_of(step)
        reply = self._peers.reply_to(call, step.manner)
        self._peers.answer(call, reply)
        if call.transaction and not reply.is_error:
            self._peers.running.append(call.transaction)

    def _can_AnswerLate(self, _step):
        return self._peers.given_up

    def _target_AnswerLate(self, step):
        return step.call % len(self._peers.given_up)

    def _do_AnswerLate(self, step):
        # The service takes no notice, but PackageKit gives a transaction its number.
        self._peers.reply_to(self._peers.given_up.pop(self._target_AnswerLate(step)), step.manner)

    def _can_Report(self, _step):
        return self._peers.running

    def _target_Report(self, step):
        return self._peers.running[step.transaction % len(self._peers.running)]

    def _do_Report(self, step):
        number = self._target_Report(step)
        for transaction in self._service.packagekit.transactions:
            if transaction.number == number:
                self._report(transaction, step.event)
        if step.event in ENDS:
            self._peers.running.remove(number)

    def _report(self, transaction, event):
        if event in FOUND:
            self._loop.post(lambda: transaction.found(FOUND[event]))
        elif event in REPORTED_ERRORS:
            self._loop.post(lambda: transaction.error('ErrorPackageNotFound', REPORTED_ERRORS[event]))
        else:
            self._loop.post(lambda: transaction.finished('ExitSuccess' if event == 'succeeds' else 'ExitFailed'))

    def _can_Die(self, step):
        return step.peer in self._peers.present

    def _do_Die(self, step):
        if step.peer == 'MCE':
            self._loop.post(self._service.display.mce_has_left)
        elif step.peer == 'notifications':
            self._loop.post(self._service.notification.server_has_left)
        elif step.peer == 'PackageKit':
            self._peers.running.clear()
            self._loop.post(self._service.packagekit.daemon_has_left)
        self._peers.leave(step.peer)

    def _can_Return(self, step):
        return step.peer not in self._peers.present

    def _do_Return(self, step):
        self._peers.present.add(step.peer)
        if step.peer == 'MCE':
            self._loop.post(self._service.display.mce_has_come)

    def _deadlines(self):
        """The next time-outs, each with its call; that of the idle time has None."""
        deadlines = [(call.deadline, call) for call in self._peers.waiting]
        idle = self._service.count.deadline
        if idle is not None and idle > self._clock.now:
            deadlines.append((idle, None))
        return sorted(deadlines, key=lambda deadline: deadline[0])

    def _can_Wait(self, _step):
        """The service may handle one of two time-outs while the other is on its way, or at the same time."""
        deadlines = [deadline for deadline, _ in self._deadlines()]
        return deadlines and (len(deadlines) == 1 or deadlines[1] - deadlines[0] >= CLEARLY_LATER)

    def _target_Wait(self, _step):
        deadline, call = self._deadlines()[0]
        return deadline + TOLERANCE, call and self._peers.place_of(call)

    def _do_Wait(self, _step):
        deadline, call = self._deadlines()[0]
        self._clock.now = deadline + TOLERANCE
        if call:
            self._peers.give_up(call)

    def _can_Pause(self, step):
        return self._deadlines() and self._target_Pause(step) > self._clock.now

    def _target_Pause(self, _step):
        return self._deadlines()[0][0] - TOLERANCE

    def _do_Pause(self, step):
        self._clock.now = self._target_Pause(step)

    def _can_Hold(self, step):
        return step.method in ANSWERED and not self._peers.is_held(step.method)

    def _do_Hold(self, step):
        self._peers.hold(step.method)

    def _do_Set(self, step):
        if step.what == 'silent installation':
            self._peers.answers.silent_installation = step.value
        elif step.what == 'Android removal':
            self._peers.answers.android_removal = step.value
        elif step.what == 'emulator':
            self._device.is_emulator = step.value
        else:
            self._device.policy_allows = step.value
