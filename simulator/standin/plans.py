# SPDX-FileCopyrightText: velmora-installationhandler contributors
# SPDX-License-Identifier: BSD-3-Clause
"""Plans for the next calls of a method."""

from collections import defaultdict, deque


class Plan:
    """One way to answer calls. `times` is the number of calls that it holds for, 0 for all."""

    def __init__(self, times=0):
        self.times = times

    def carry_out(self, call, gate):
        """Answers the call, or not, through the gate that it came by."""
        raise NotImplementedError


class Handling(Plan):
    """The stand-in's own answer."""

    def carry_out(self, call, gate):
        gate.handle(call)


class Refusal(Plan):
    """A D-Bus error."""

    def __init__(self, error_name, text, times=0):
        super().__init__(times)
        self._error_name = error_name
        self._text = text

    def carry_out(self, call, gate):
        gate.refuse(call, self._error_name, self._text)


class FixedAnswer(Plan):
    """Given values of any type, even if the method declares others."""

    def __init__(self, signature, values, times=0):
        super().__init__(times)
        self._signature = signature
        self._values = values

    def carry_out(self, call, gate):
        gate.answer(call, self._signature, self._values)


class Script(Plan):
    """An answer without values, followed by signals of the object that was called."""

    def __init__(self, signals, times=0):
        """`signals` is a list of (member, signature, values)."""
        super().__init__(times)
        self._signals = signals

    def carry_out(self, call, gate):
        gate.answer(call, '', [])
        for member, signature, values in self._signals:
            gate.announce(call, member, signature, values)


class Hanging(Plan):
    """No answer until the call is released."""

    def carry_out(self, call, gate):
        gate.keep(call)


class Death(Plan):
    """The process ends abruptly, before or after its own answer."""

    def __init__(self, after_answer):
        super().__init__(times=1)
        self._after_answer = after_answer

    def carry_out(self, call, gate):
        if self._after_answer:
            gate.handle(call, then=gate.die)
        else:
            gate.die()


class Plans:
    """The plans and delays for all methods; a method without any is handled normally."""

    def __init__(self):
        self._plans = defaultdict(deque)
        self._delays = {}

    def add(self, method, plan):
        """Appends a plan. Plans for a number of calls are used one after the other; a plan for all calls replaces the
        former one for all."""
        plans = self._plans[method]
        if plans and plans[-1].times == 0:
            plans.pop()
        plans.append(plan)

    def set_delay(self, method, milliseconds):
        """Delays the plan for every call of the method."""
        self._delays[method] = milliseconds

    def delay(self, method):
        """The delay in milliseconds, 0 when there is none."""
        return self._delays.get(method, 0)

    def forget(self, method):
        """Removes the plans and the delay of a method."""
        self._plans.pop(method, None)
        self._delays.pop(method, None)

    def concern(self, method):
        """Whether there is a plan or a delay for the method."""
        return bool(self._plans.get(method)) or method in self._delays

    def take(self, method):
        """The plan for the next call."""
        plans = self._plans.get(method)
        if not plans:
            return Handling()
        plan = plans[0]
        if plan.times:
            plan.times -= 1
            if plan.times == 0:
                plans.popleft()
        return plan
