# SPDX-FileCopyrightText: velmora-installationhandler contributors
# SPDX-License-Identifier: BSD-3-Clause
"""A call as the control interface reports it."""

from typing import NamedTuple


class SeenCall(NamedTuple):
    """A call that reached a stand-in. `stamp` is CLOCK_MONOTONIC in nanoseconds."""

    stamp: int
    sender: str
    path: str
    interface: str
    method: str
    signature: str
    arguments: tuple

    @classmethod
    def from_variant(cls, struct):
        """Converts the struct of the control interface, (xsosssav)."""
        fields = [struct.get_child_value(index) for index in range(struct.n_children())]
        arguments = tuple(fields[6].get_child_value(index).get_variant().unpack()
                          for index in range(fields[6].n_children()))
        return cls(*(field.unpack() for field in fields[:6]), arguments)

    def __str__(self):
        return (f'{self.stamp / 1e9:.6f} {self.path} {self.interface}.{self.method}({self.signature}) '
                f'{list(self.arguments)} from {self.sender}')
