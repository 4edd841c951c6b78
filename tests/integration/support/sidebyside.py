# SPDX-FileCopyrightText: velmora-installationhandler contributors
# SPDX-License-Identifier: BSD-3-Clause
"""Tests of a file that run at the same time, each in a process and with files of its own.

A file asks for it with `pytestmark = pytest.mark.side_by_side`, or with the number of tests that may run at the same time:
`pytest.mark.side_by_side(4)`.
"""

import ctypes
import itertools
import json
import os
import selectors
import subprocess
import sys
import traceback

import pytest
from _pytest.runner import runtestprotocol
from harness.forkedprocess import start_server

# All that tests change on the device; each one gets a copy. mount writes nothing below /run (-n), which another test may
# be copying.
FOLDERS = ('/etc', '/home', '/run', '/usr/share/applications', '/usr/share/translations',
           '/usr/share/velmora-installationhandler', '/var/lib/rpm')
COPY = 'for folder; do mount -n -t tmpfs -o mode=755 tmpfs /mnt; cp -a "$folder/." /mnt; mount -n --move /mnt "$folder"; done'
CLONE_NEWNS = 0x00020000


def pytest_configure(config):
    config.addinivalue_line('markers', 'side_by_side(number=None): the tests of the file run at the same time')


@pytest.hookimpl(tryfirst=True)
def pytest_runtestloop(session):
    """Runs all tests side by side when each of them may."""
    marks = [item.get_closest_marker('side_by_side') for item in session.items]
    if not all(marks) or session.config.option.collectonly or session.testsfailed:
        return None
    number = min([len(marks), *(mark.args[0] for mark in marks if mark.args)])
    waiting = iter(session.items)
    reports = {}
    with selectors.DefaultSelector() as selector:
        for item in itertools.islice(waiting, number):
            start(selector, item)
        while selector.get_map():
            for key, _ in selector.select():
                selector.unregister(key.fd)
                process, item = key.data
                reports[item] = read_reports(key.fd, process)
                for item in itertools.islice(waiting, 1):
                    start(selector, item)
    for item in session.items:
        for report in reports[item]:
            item.ihook.pytest_runtest_logreport(
                report=item.config.hook.pytest_report_from_serializable(config=item.config, data=report))
    return True


def start(selector, item):
    """Runs one test in a process of its own, which writes the reports into a pipe when they are complete."""
    reader, writer = os.pipe()
    process = os.fork()
    if process:
        os.close(writer)
        selector.register(reader, selectors.EVENT_READ, (process, item))
        return
    try:
        reports = json.dumps(run(item))
        with open(writer, 'w', encoding='utf-8') as pipe:
            pipe.write(reports)
        os._exit(0)
    finally:
        traceback.print_exc(file=sys.__stderr__)
        os._exit(1)


def read_reports(reader, process):
    """Reads the reports of a test, whose process ends then."""
    with open(reader, encoding='utf-8') as pipe:
        reports = pipe.read()
    _, status = os.waitpid(process, 0)
    if status:
        raise RuntimeError(f'the process of a test ended with {os.waitstatus_to_exitcode(status)}')
    return json.loads(reports)


def run(item):
    """Runs one test in this process, whose files and output become its own first."""
    capture = item.config.pluginmanager.getplugin('capturemanager')
    capture.stop_global_capturing()
    capture.start_global_capturing()
    if ctypes.CDLL(None, use_errno=True).unshare(CLONE_NEWNS):
        raise OSError(ctypes.get_errno(), 'unshare')
    copy = subprocess.run(['sh', '-ec', COPY, 'sh', *FOLDERS], capture_output=True, text=True)
    if copy.returncode:
        raise OSError(f'folders could not be copied: {copy.stderr}')
    # Its processes have to be in the new mount namespace too.
    start_server()
    return [item.config.hook.pytest_report_to_serializable(config=item.config, report=report)
            for report in runtestprotocol(item, log=False, nextitem=None)]
