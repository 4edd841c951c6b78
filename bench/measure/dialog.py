# SPDX-FileCopyrightText: velmora-installationhandler contributors
# SPDX-License-Identifier: BSD-3-Clause
"""From the request to the first frame of the dialog."""

import shutil
from pathlib import Path

from .environment import FLOOR_NAME, PRODUCT, PRODUCT_NAME, SOURCE, package, peers, stopwatch, tool
from .figure import AtMost, Figure

COLD_ROUNDS = 21
UNCACHED_ROUNDS = 7
WARM_ROUNDS = 101
TIME = AtMost(1.5)

SUBJECTS = [PRODUCT_NAME, PRODUCT, FLOOR_NAME, f"{tool('floor-dialog')} {SOURCE / 'floors/PlainPage.qml'}"]


def figures():
    with peers():
        uncached = [first_frame('cold', 1, before=forget_compiled_qml) for _ in range(UNCACHED_ROUNDS)]
        ours, bare = ([run[index][0] for run in uncached] for index in (0, 1))
        yield Figure('first frame: first request ever', 'ms', ours, bare)
        yield Figure('first frame: first request, cold service', 'ms', *first_frame('cold', COLD_ROUNDS), TIME)
        yield Figure('first frame: later request, warm service', 'ms', *first_frame('warm', WARM_ROUNDS), TIME)


def first_frame(state, rounds, before=lambda: None):
    before()
    run = stopwatch('firstframe', state, rounds, package('10K'), *SUBJECTS, QT_QUICK_BACKEND='software',
                    QT_LOGGING_RULES='qt.scenegraph.time.renderloop.debug=true')
    return [[value / 1000 for value in samples] for samples in run]


def forget_compiled_qml():
    """The engine keeps what it has compiled in the user's cache."""
    for cache in Path.home().glob('.cache/*/qmlcache'):
        shutil.rmtree(cache)
