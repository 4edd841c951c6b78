# SPDX-FileCopyrightText: velmora-installationhandler contributors
# SPDX-License-Identifier: BSD-3-Clause
"""The installed program, which does the steps of a history."""

from model.answers import METHODS, PEERS
from support.dialog import COMMANDS

from .peers import Peers
from .runningservice import Ended, RunningService

# The list of commands may miss a file that comes while it is made. Another file, after so many seconds, makes it anew.
PATIENCE = 1


class Program:
    """The program from its start, for one history."""

    def __init__(self, surroundings):
        self._processes = surroundings.processes
        self._device = surroundings.device
        self._clock = surroundings.clock
        self._client = surroundings.client
        self._commands = 0
        self._device.reset()
        self._clock.set(0)
        self._peers = Peers(surroundings.buses)
        self._service = RunningService(surroundings, self._peers)
        self._peers.let_calls_wait()

    def end(self):
        """Ends the program and its peers."""
        self._service.end()
        self._peers.close()

    def do(self, step, target):
        """Does a step and returns what can be seen of it. `target` says which dialog, call or transaction the step is
        about, or when it waits."""
        try:
            getattr(self, f'_do_{type(step).__name__}')(step, target)
            self._service.settle()
            while call := self._peers.next_to_answer():
                self._answer(call, 'usual')
                self._service.settle()
        except Ended:
            pass
        return self._service.take()

    def _do_Install(self, step, _target):
        flags = [flag for flag in (step.sdk_mode, step.keep_userdata) if flag is not None]
        self._client.start('installFiles', f'(as{"b" * len(flags)})', list(step.files), *flags)

    def _do_Remove(self, step, _target):
        flags = [] if step.keep_userdata is None else [step.keep_userdata]
        self._client.start('removePackages', f'(as{"b" * len(flags)})', list(step.names), *flags)

    def _do_RemoveLauncher(self, step, _target):
        self._client.start('removePackageByDesktopFile', '(s)', step.launcher)

    def _do_Choose(self, step, dialog):
        process, answer = self._service.process, f'dialog {dialog} answers\n'
        before = process.text.count(answer)
        self._command(f'{dialog}-{{}}-{"requestInstall" if step.confirm else "dismissed"}')
        while not self._processes.happens(lambda: process.text.count(answer) > before or not process.alive, PATIENCE):
            self._command('0-{}')

    def _do_Display(self, step, _target):
        self._peers.show(step.state)
        self._wait_for_messages_of('MCE')

    def _do_Answer(self, step, target):
        self._answer(self._peers.find(*target), step.manner)

    def _do_AnswerLate(self, step, number):
        call = self._peers.answer_late(number, step.manner)
        self._wait_for_messages_of(METHODS[call.method].peer)

    def _do_Report(self, step, transaction):
        self._peers.report(transaction, step.event)
        self._wait_for_messages_of('PackageKit')

    def _do_Die(self, step, _target):
        self._peers.die(step.peer)

    def _do_Return(self, step, _target):
        self._peers.come(step.peer)

    def _do_Wait(self, _step, target):
        after, unanswered = target
        if unanswered:
            call = self._peers.find(*unanswered)
            self._peers.give_up(call)
            self._service.forget(call, PEERS[METHODS[call.method].peer].bus)
        self._clock.set(after)

    def _do_Pause(self, _step, before):
        self._clock.set(before)

    def _do_Hold(self, step, _target):
        self._peers.hold(step.method)

    def _do_Set(self, step, _target):
        if step.what == 'silent installation':
            self._peers.answers.silent_installation = step.value
        elif step.what == 'Android removal':
            self._peers.answers.android_removal = step.value
        elif step.what == 'policy allows':
            self._device.allow_installing(step.value)
        else:
            self._device.mark_as_emulator(step.value)

    def _answer(self, call, manner):
        self._peers.answer(call, manner)
        self._wait_for_messages_of(METHODS[call.method].peer)

    def _command(self, name):
        """Puts a file in the folder that the dialogs look at."""
        self._commands += 1
        (COMMANDS / name.format(self._commands)).touch()

    def _wait_for_messages_of(self, peer):
        """The program's thread for the buses has taken in what the peer has sent."""
        self._peers.ping(peer, self._service.names[PEERS[peer].bus])
