# SPDX-FileCopyrightText: velmora-installationhandler contributors
# SPDX-License-Identifier: BSD-3-Clause
"""Sockets in the file system."""

import os
import socket


def make_socket(path):
    """Leaves the file of a socket where nobody listens. The path may be longer than the address of a socket."""
    with socket.socket(socket.AF_UNIX) as listener:
        folder = os.open(path.parent, os.O_PATH)
        listener.bind(f'/proc/self/fd/{folder}/{path.name}')
        os.close(folder)
