# SPDX-FileCopyrightText: velmora-installationhandler contributors
# SPDX-License-Identifier: BSD-3-Clause
"""A model of the service as its peers and callers see it, and random histories that compare it with the program.

- `steps` has the steps of a history, `device` the files and names that they are about, `answers` the peers and their
  usual answers; `seen` is all that can be seen of a step;
- `reference` has the model: `reference.world.World` does the steps, and says what should be seen;
- `program` has the installed program: `program.program.Program` does the same steps, and sees;
- `history` compares the two, step by step; `randomhistories` and `explore` make random histories, and keep the number.
"""
