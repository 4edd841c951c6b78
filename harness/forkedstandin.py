# SPDX-FileCopyrightText: velmora-installationhandler contributors
# SPDX-License-Identifier: BSD-3-Clause
"""The process of a stand-in: of the session's user on the session bus, of root on the system bus."""

import os
import pwd
import subprocess
from functools import cache

from standin.names import BUSES, SESSION
from standin.process import StandIn

from .forkedprocess import ForkedProcess


def start_standin(name, settings):
    """Starts the process of a stand-in with these parameters. It runs until its bus ends."""
    return ForkedProcess(serve, name, settings, session_environment() if BUSES[name] == 'session' else None)


def serve(name, settings, session):
    """Runs a stand-in. `session` has the variables of the session if it is a program of the session."""
    if session:
        enter_session(session)
    StandIn(name).run(settings)


@cache
def session_environment():
    """The environment variables of a program of the session."""
    lines = subprocess.run([SESSION, 'env'], stdout=subprocess.PIPE, text=True, check=True).stdout.splitlines()
    return dict(line.split('=', 1) for line in lines)


def enter_session(environment):
    """Becomes a process of the session's user, as a program that sandbox/session starts is one."""
    os.environ.update(environment)
    user = pwd.getpwnam(os.environ['USER'])
    os.initgroups(user.pw_name, user.pw_gid)
    os.setgid(user.pw_gid)
    os.setuid(user.pw_uid)
