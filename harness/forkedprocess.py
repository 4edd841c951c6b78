# SPDX-FileCopyrightText: velmora-installationhandler contributors
# SPDX-License-Identifier: BSD-3-Clause
"""A child process that is a function of Python, and starts faster than an interpreter does."""

import gc
import os
import pickle
import select
import selectors
import signal
import socket
import subprocess
import sys
import traceback

# The connection to the server, once there is one.
SERVERS = []


def start_server():
    """Starts the server that forks all processes from now on, as a copy of this process with the modules that it has loaded.
    GLib must not have started threads yet, which the copy would lack.
    """
    client, server = socket.socketpair(socket.AF_UNIX, socket.SOCK_SEQPACKET)
    if os.fork() == 0:
        client.close()
        become_child(lambda: serve(server))
    server.close()
    SERVERS[:] = [client]


class ForkedProcess:
    """A process that runs a function, with as much of the interface of subprocess.Popen as Process needs.

    The server forks it, and tells its end. Standard output and error go to `stdout`.
    """

    def __init__(self, function, *arguments):
        self.returncode = None
        output, writer = os.pipe()
        self._status, status = os.pipe()
        (server,) = SERVERS
        socket.send_fds(server, [pickle.dumps((function, arguments))], [writer, status])
        os.close(writer)
        os.close(status)
        self.stdout = open(output, 'rb', buffering=0)
        self.pid = pickle.loads(server.recv(64))

    def wait(self, timeout=None):
        """Waits for the end and returns the exit status; subprocess.TimeoutExpired after the timeout."""
        if self.returncode is None:
            if not select.select([self._status], [], [], timeout)[0]:
                raise subprocess.TimeoutExpired(str(self.pid), timeout)
            self.returncode = pickle.loads(os.read(self._status, 64))
            os.close(self._status)
        return self.returncode

    def send_signal(self, number):
        """Sends a signal if it still runs."""
        try:
            self.wait(timeout=0)
        except subprocess.TimeoutExpired:
            os.kill(self.pid, number)

    def kill(self):
        self.send_signal(signal.SIGKILL)


def serve(requests):
    """Forks processes until nobody can ask for one any more."""
    signal.signal(signal.SIGINT, signal.SIG_IGN)
    # Collections would write to the memory that the processes share.
    gc.freeze()
    with selectors.DefaultSelector() as selector:
        selector.register(requests, selectors.EVENT_READ)
        while True:
            for key, _ in selector.select():
                if key.fileobj is not requests:
                    selector.unregister(key.fd)
                    tell_end(key.fd, *key.data)
                    continue
                request, descriptors, _, _ = socket.recv_fds(requests, 1 << 16, 2)
                if not request:
                    return
                process, status = fork(*pickle.loads(request), *descriptors)
                requests.send(pickle.dumps(process))
                selector.register(os.pidfd_open(process), selectors.EVENT_READ, (process, status))


def fork(function, arguments, output, status):
    """Starts a process that runs the function. Returns its id, and the descriptor that gets its exit status."""
    process = os.fork()
    if process == 0:
        os.close(status)
        for descriptor in (1, 2):
            os.dup2(output, descriptor)
        os.close(output)
        become_child(lambda: function(*arguments))
    os.close(output)
    return process, status


def tell_end(end, process, status):
    """Takes the exit status of an ended process and passes it on."""
    os.close(end)
    os.write(status, pickle.dumps(os.waitstatus_to_exitcode(os.waitpid(process, 0)[1])))
    os.close(status)


def become_child(run):
    """Runs a function in the new process and ends that, without what the original would do at its end."""
    # pytest has put others in their place.
    sys.stdout, sys.stderr = sys.__stdout__, sys.__stderr__
    exit_status = 1
    try:
        run()
        exit_status = 0
    except SystemExit as end:
        exit_status = end.code or 0
    except BaseException:
        traceback.print_exc()
    finally:
        sys.stdout.flush()
        sys.stderr.flush()
        os._exit(exit_status)
