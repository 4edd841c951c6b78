# SPDX-FileCopyrightText: velmora-installationhandler contributors
# SPDX-License-Identifier: BSD-3-Clause
"""The parameters of a stand-in: each has a name and a few values to choose from."""


class ParameterError(Exception):
    """An unknown parameter, or a value that the parameter does not have."""


class Parameters:
    """The current values. The first choice of each parameter is its default."""

    def __init__(self, choices):
        self._choices = choices
        self.values = {name: values[0] for name, values in choices.items()}

    def set(self, name, value):
        """Sets a value, given as itself or as text, and returns it; returns None if nothing changes."""
        if name not in self._choices:
            raise ParameterError(f'no parameter "{name}", only {", ".join(self._choices) or "none at all"}')
        choice = self._find(name, value)
        if choice == self.values[name]:
            return None
        self.values[name] = choice
        return choice

    def _find(self, name, value):
        for choice in self._choices[name]:
            if written(choice) == written(value):
                return choice
        raise ParameterError(f'{name} is one of {", ".join(map(written, self._choices[name]))}, not "{value}"')


def written(value):
    """A value in the form that the command line takes."""
    if isinstance(value, str):
        return str(value)
    return 'true' if value else 'false'
