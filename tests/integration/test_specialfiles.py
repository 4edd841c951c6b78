# SPDX-FileCopyrightText: velmora-installationhandler contributors
# SPDX-License-Identifier: BSD-3-Clause
"""Names of what is no package file: none of it holds the service up, and the package manager judges all of it."""

import os
import re
import stat

import pytest
from packages import damage, handmade
from support.records import besides_removals
from support.sockets import make_socket

# A driver for local use: nobody has it.
NO_DRIVER = os.makedev(240, 0)

# It can be opened by everybody who may read the file. Other devices of this kind wait when they are read.
NETWORK = os.makedev(10, 200)


def write_sparse(path):
    with path.open('wb') as file:
        file.truncate(1 << 40)


def write_huge_claim(path):
    path.write_bytes(damage.claiming(handmade.write(path).read_bytes(), 0xffffffff, 0xffffffff))


# How to make each file, and the result of librpm; None where librpm is not called.
MADE = {
    'pipe': (os.mkfifo, None),
    'socket': (make_socket, None),
    'link to a pipe': (lambda path: (os.mkfifo(f'{path}.pipe'), path.symlink_to(f'{path}.pipe')), None),
    'link to nothing': (lambda path: path.symlink_to('absent'), None),
    'link to itself': (lambda path: path.symlink_to(path), None),
    'device of the network': (lambda path: os.mknod(path, stat.S_IFCHR | 0o666, NETWORK), None),
    'device without a driver': (lambda path: os.mknod(path, stat.S_IFBLK | 0o600, NO_DRIVER), None),
    'folder': (os.mkdir, 2),
    'empty file': (lambda path: path.touch(), 1),
    'zeros without end': (write_sparse, 1),
    'text': (lambda path: path.write_text('no package\n' * 1000, encoding='ascii'), 1),
    'lead alone': (lambda path: path.write_bytes(handmade.LEAD), 2),
    'half a header': (lambda path: path.write_bytes(handmade.write(path).read_bytes()[:-100]), 2),
    'huge header': (write_huge_claim, 2),
}
THERE = {
    '/dev/null': 1, '/dev/zero': 1, '/dev/full': 1, '/dev/urandom': 1, '/dev/tty': None, '/dev/ptmx': None,
    '/proc/self/status': 1, '/proc/self/mem': 2, '/proc/self/exe/child': None,
    '/proc/kmsg': None,
}


@pytest.fixture(autouse=True)
def package_manager(standins):
    """Nobody is asked, and nothing is installed."""
    standins.start('developer-mode', silent_installation=True)
    standins.start('package-kit')
    return standins.start('package-manager', installs='nothing')


def check_install(path, result, service, client, signals, package_manager):
    """Installs the file, and checks the log. Known behaviour 47, 48."""
    client.install([path], sdk_mode=True)

    assert signals.wait('installFinished') == (True, '')
    service.barrier()
    assert [call.arguments for call in package_manager.calls('Install')] == [(str(path), {})]
    assert service.warnings() == []
    said = besides_removals(service.log())
    if result is None:
        assert said == []
    else:
        said = [line for line in said if line.startswith('debug ')]
        # Read for the removal of the installed version, and for the installation. The text is the system's last error, of
        # whatever call it was.
        assert len(said) == 2
        assert all(re.fullmatch(rf'debug default: could not read rpm: {result} ".*"', line) for line in said)


@pytest.mark.parametrize('kind', MADE)
def test_made(service, client, signals, package_manager, tmp_path, kind):
    make, result = MADE[kind]
    path = tmp_path / 'made.rpm'
    make(path)

    check_install(path, result, service, client, signals, package_manager)


@pytest.mark.parametrize('path', THERE)
def test_there(service, client, signals, package_manager, path):
    check_install(path, THERE[path], service, client, signals, package_manager)


def test_terminal(service, client, signals, package_manager):
    controller, terminal = os.openpty()
    try:
        check_install(os.ttyname(terminal), None, service, client, signals, package_manager)
    finally:
        os.close(controller)
        os.close(terminal)


def test_file_that_may_not_be_read(service, client, signals, package_manager, package):
    path = package('secret')
    path.chmod(0)

    check_install(path, None, service, client, signals, package_manager)
