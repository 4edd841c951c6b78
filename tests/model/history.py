# SPDX-FileCopyrightText: velmora-installationhandler contributors
# SPDX-License-Identifier: BSD-3-Clause
"""The comparison of the program with the model, step by step."""

from harness.processes import WaitFailed

from .program.program import Program
from .reference.world import World
from .steps import PREPARATIONS, Pause, Wait


class Disagreement(AssertionError):
    """The program does something else than the model."""


def without_useless(steps):
    """The steps of a history that make sense when their turn comes, and that have a certain outcome. The service may end of
    idleness at the last one only, since nothing can follow."""
    useful = []
    model = World()
    for place, step in enumerate(steps, 1):
        if model.can(step) and (place == len(steps) or not model.would_end(step)):
            model.do(step)
            if model.is_certain:
                useful.append(step)
            else:
                model = after(useful)
    return useful


def after(steps):
    """The model after these steps."""
    model = World()
    for step in steps:
        model.do(step)
    return model


def count(steps):
    """The number of steps at which something happens; preparations for others do not count."""
    return sum(not isinstance(step, PREPARATIONS) for step in steps)


def compare(surroundings, steps):
    """Lets the program and the model do a history, each of whose steps makes sense. Raises Disagreement."""
    model = World()
    program = Program(surroundings)
    try:
        for number, step in enumerate(steps, 1):
            if isinstance(step, Wait) and model.can(Pause()):
                # A time-out that comes too early would look like the one that the model has.
                compare_step(model, program, Pause(), [*steps[:number - 1], Pause()])
            compare_step(model, program, step, steps[:number])
    finally:
        program.end()


def compare_step(model, program, step, done):
    """Lets both do a step. `done` is the history up to it."""
    target = model.target(step)
    expected = model.do(step)
    try:
        seen = program.do(step, target)
    except (LookupError, WaitFailed) as error:
        raise Disagreement(f'{written(done)}\n\nThe program does not get so far: {error!r}') from error
    if seen != expected:
        raise Disagreement('\n'.join([written(done), '', *differences(expected, seen)]))


def differences(expected, seen):
    """The lines that show where the model and the program disagree."""
    for name, of_model, of_program in zip(expected._fields, expected, seen):
        if of_model != of_program:
            yield f'{name}, as the model says:'
            yield from listed(of_model)
            yield f'{name}, as the program does it:'
            yield from listed(of_program)


def listed(values):
    return [f'    {value}' for value in (values if isinstance(values, list) else [values])]


def written(steps):
    """A history as the files in histories/ have it."""
    return '\n'.join(['STEPS = [', *(f'    {brief(step)},' for step in steps), ']'])


def brief(step):
    """A step without the arguments at its end that have their default values."""
    arguments = dict(step._asdict())
    while arguments:
        name, value = arguments.popitem()
        if name not in step._field_defaults or value != step._field_defaults[name]:
            arguments[name] = value
            break
    return f'{type(step).__name__}({", ".join(map(repr, arguments.values()))})'
