# SPDX-FileCopyrightText: velmora-installationhandler contributors
# SPDX-License-Identifier: BSD-3-Clause
"""The examples for authors of clients, as docs/clients.md shows them, with the real service."""

import re

import documents
import pytest
from builds import run

KINDS = ['qtclient', 'glibclient', 'client.py']
WARNINGS = '-Wall -Wextra -Werror'

# A file in the page, and the lines at the beginning of the file that the page leaves out.
SHOWN = re.compile(r'^\[`[\w.]+`\]\(examples/([\w.]+)\):\n\n```\w+\n(.*?)^```$', re.MULTILINE | re.DOTALL)
HEAD = re.compile(r'\A((//|#|<!--|-->|SPDX-).*\n)+\n?')


@pytest.fixture(scope='module')
def commands(source, builds):
    """The command of each example."""
    build = builds / 'examples'
    building = documents.examples('docs/clients.md', 'Building the examples')[0]
    run(building.replace('build/clients', str(build)), source, CFLAGS=WARNINGS, CXXFLAGS=WARNINGS)
    return {'client.py': ['/usr/bin/python3', '-B', source / 'docs/examples/client.py'],
            **{name: [build / name] for name in ('qtclient', 'glibclient', 'qmlclient')}}


@pytest.fixture
def start(commands, processes):
    """Starts an example."""
    def start(kind, *arguments, environment=None):
        return processes.start_in_session(kind, [*commands[kind], *arguments], environment)
    return start


@pytest.fixture
def ask(start, processes):
    """Runs an example to its end: its exit status and its lines."""
    def run_to_end(*arguments):
        process = start(*arguments)
        return processes.wait_end(process), process.lines()
    return run_to_end


@pytest.fixture
def activated(session_bus, dialog):
    """The service, which the first call starts, with a dialog that accepts."""
    session_bus.allow_activation()
    dialog.use('Confirming')


def test_page_shows_the_examples(source):
    page = (source / 'docs/clients.md').read_text(encoding='utf-8')
    assert dict(SHOWN.findall(page)) == {path.name: HEAD.sub('', path.read_text(encoding='utf-8'))
                                         for path in (source / 'docs/examples').iterdir()}


@pytest.mark.parametrize('kind', KINDS)
def test_installs_and_removes(standins, activated, device, package, ask, kind):
    standins.start('package-manager')
    files = [package('one'), package('two')]

    assert ask(kind, 'install', *files) == (0, ['Done.'])
    assert sorted(device.packages()) == ['one', 'two']

    assert ask(kind, 'remove', 'one', 'two') == (0, ['Done.'])
    assert device.packages() == []


@pytest.mark.parametrize('kind', KINDS)
def test_says_what_failed(manager, service, dialog, ask, kind):
    dialog.use('Dismissing')
    assert ask(kind, 'install', '/refused.rpm') == (1, ['The user cancelled the installation'])

    manager.refuse('GetPackage', 'org.example.Error', 'not today')
    status, lines = ask(kind, 'remove', 'unknown')
    assert (status, len(lines)) == (1, 1)


@pytest.mark.parametrize('kind', KINDS)
def test_notices_that_there_is_no_service(session_bus, ask, kind):
    status, (text,) = ask(kind, 'install', '/one.rpm')
    assert (status, 'org.velmoraos.installationhandler' in text) == (1, True)


@pytest.mark.parametrize('kind', KINDS)
@pytest.mark.parametrize('command, method, text', [
    ('remove', 'GetPackage', 'Message recipient disconnected from message bus without replying'),
    ('install', 'Install', 'The service has ended.'),
], ids=['before the reply', 'after the reply'])
def test_notices_the_end_of_the_service(manager, service, dialog, processes, start, kind, command, method, text):
    dialog.use('Confirming')
    manager.hang(method)
    client = start(kind, command, '/one.rpm')
    manager.wait_call(method)
    client.end_awaited = True

    service.kill()

    assert processes.wait_end(client) == 1
    (line,) = client.lines()
    assert line.endswith(text)


def test_installs_and_removes_from_qml(standins, activated, device, package, processes, screen, start):
    standins.start('package-manager')
    client = start('qmlclient', package('tool'), 'tool',
                   environment={**screen.environment(), 'QT_QUICK_BACKEND': 'software'})
    screen.wait_for_window(client.pid)

    def choose(y, number):
        screen.click(640, y)
        processes.wait_until(lambda: client.lines().count('qml: Done.') == number, f'end of request {number}')

    choose(180, 1)
    assert device.packages() == ['tool']
    choose(540, 2)
    assert device.packages() == []
