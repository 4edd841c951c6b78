# SPDX-FileCopyrightText: velmora-installationhandler contributors
# SPDX-License-Identifier: BSD-3-Clause
"""How installations end: lines, objects and exit statuses."""

import signal
import xml.etree.ElementTree as ET
from pathlib import Path

import pytest
from gi.repository import GLib
from harness.client import INTERFACE, PATH
from support.otherservice import OtherService

NOTHING = GLib.Variant('()', ())
DECLINED, INSTALLED, NO_SPACE = 'dismissed', 'requestInstall', 'org.example.Error.NoSpace'
CONFIRMING = "waiting for your answer on the device's screen, then installing"
ENDS = {
    INSTALLED: 'installed',
    DECLINED: 'declined: The user cancelled the installation',
    NO_SPACE: 'failed: zarn_installation_error_desc_NoSpace (code: NoSpace)',
}
ABORTED, DISALLOWED = 'installationhandler-user-aborted', 'installationhandler-application_installation_disallowed'
SOURCES = Path(__file__).resolve().parents[2] / 'translations'


def text_of(identifier, catalogue='velmora-installationhandler_eng_en'):
    """A text of the service, in a language. The operating system of the device is Debian."""
    messages = ET.parse(SOURCES / f'{catalogue}.ts').iter('message')
    (text,) = [message.find('translation').text for message in messages if message.get('id') == identifier]
    return text.replace('%1', 'Debian GNU/Linux')


FORBIDDEN_TEXT = text_of(DISALLOWED)


@pytest.fixture
def files(tmp_path):
    """The folder of the files a, b and c."""
    for name in 'abc':
        (tmp_path / name).touch()
    return tmp_path


@pytest.fixture
def treat(manager, dialog):
    """Treats the questions and installations of a run as the fates of its files say, in turn."""
    dialog.use('Controlled')
    shown = []

    def treat(*fates):
        for fate in fates:
            shown.append(fate)
            if fate == NO_SPACE:
                manager.refuse('Install', fate, 'for a reason', times=1)
            dialog.wait_shown(len(shown))
            dialog.answer(DECLINED if fate == DECLINED else INSTALLED, number=len(shown))
    return treat


def test_outcomes(service, treat, ctl, files):
    """Each file has its own. Of several, one makes the exit status."""
    cases = [
        ([INSTALLED], 0, 'done'), ([DECLINED], 2, 'declined'), ([NO_SPACE], 1, 'failed'),
        ([DECLINED, INSTALLED], 2, 'declined'), ([NO_SPACE, DECLINED, INSTALLED], 1, 'failed'),
    ]
    for fates, status, word in cases:
        names = 'abc'[:len(fates)]
        ends = [f'{name}: {ENDS[fate]}' for name, fate in zip(names, fates)]
        bad_ends = [end for end, fate in zip(ends, fates) if fate != INSTALLED]
        made = list(objects(files, fates, status, word))

        def run(*options):
            started = ctl.start('install', *options, *names, folder=files)
            treat(*fates)
            assert started.wait()[::2] == (status, bad_ends)
            return started

        # The answer of the service may come before its question.
        lines = [line for line in run().wait().out if not line.endswith('waiting for the service')]
        assert lines == [line for name, end, fate in zip(names, ends, fates)
                         for line in (f'{name}: reading', f'{name}: {CONFIRMING}', *[end] * (fate == INSTALLED))]
        assert run('--quiet').wait().out == []
        assert [one for one in run('--json').objects() if one.get('state') != 'waiting'] == made
        assert run('--json', '--quiet').objects() == [one for one in made if is_bad(one)]


def objects(folder, fates, status, word):
    """The objects that --json prints."""
    words = {INSTALLED: 'done', DECLINED: 'declined', NO_SPACE: 'failed'}
    for position, fate in enumerate(fates, 1):
        subject = {'subject': f'{folder}/{"abc"[position - 1]}', 'position': position, 'count': len(fates)}
        yield {'event': 'state', 'state': 'reading', **subject}
        yield {'event': 'state', 'state': 'confirming', **subject}
        yield {'event': 'result', 'outcome': words[fate], 'text': ENDS[fate].partition(': ')[2], 'reported': True,
               'uncertain': False, **subject}
    yield {'event': 'end', 'outcome': word, 'status': status}


def is_bad(made):
    """Whether an object is printed by --quiet too."""
    return made['event'] != 'state' and made['outcome'] != 'done'


def test_refusals_of_the_policy(service, treat, dialog, ctl, files, device):
    """It holds for all files, so the next ones are not requested."""
    device.forbid_installing()
    forbidden = f'a: forbidden: {FORBIDDEN_TEXT}'
    assert ctl('install', 'a', folder=files) == (3, ['a: reading'], [forbidden])
    assert ctl('install', '--sdk', '--quiet', 'a', folder=files) == (3, [], [forbidden])
    assert ctl('install', 'a', 'b', 'c', folder=files)[::2] == \
        (3, [forbidden, 'velmora-installctl: not requested: 2 of 3'])

    run = ctl.start('install', '--json', 'a', 'b', folder=files)
    assert run.wait().status == 3
    result = {'event': 'result', 'count': 2, 'uncertain': False}
    assert run.objects()[-3:] == [
        {**result, 'subject': f'{files}/a', 'position': 1, 'outcome': 'forbidden', 'text': FORBIDDEN_TEXT, 'reported': True},
        {**result, 'subject': f'{files}/b', 'position': 2, 'outcome': 'unrequested', 'text': '', 'reported': False},
        {'event': 'end', 'outcome': 'forbidden', 'status': 3}]

    # The service takes a request before it asks the policy.
    assert ctl('install', '--no-wait', 'a', folder=files).status == 0

    device.set_policy(None)
    run = ctl.start('install', 'a', 'b', folder=files)
    dialog.wait_shown(1)
    device.forbid_installing()
    treat(DECLINED)
    assert run.wait()[::2] == (3, [f'a: {ENDS[DECLINED]}', f'b: forbidden: {FORBIDDEN_TEXT}'])


@pytest.fixture
def reporting(session_bus):
    """The next reports of a program in the service's place: how often it asks, and the text."""
    connection = session_bus.connect()
    reports = []

    def answer(invocation):
        questions, text = reports.pop(0)
        for _ in range(questions):
            connection.emit_signal(None, PATH, INTERFACE, 'needConfirm', None)
        connection.emit_signal(None, PATH, INTERFACE, 'installFinished', GLib.Variant('(bs)', (False, text)))
        invocation.return_value(None)
    OtherService(connection, answer, f'''<node><interface name="{INTERFACE}"><method name="installFiles">
        <arg type="as" direction="in"/><arg type="b" direction="in"/><arg type="b" direction="in"/>
        </method></interface></node>''')
    return reports


def test_languages_of_the_service(program, dialog, ctl, files, device):
    """Declined and forbidden installations are known by the service's text, whatever its language is."""
    dialog.use('Dismissing')
    for language in ('de', 'zh_CN'):
        catalogue = f'velmora-installationhandler-{language}'
        device.set_policy(None)
        program.start(environment={'LANG': f'{language}.UTF-8'})
        assert ctl('install', '--quiet', 'a', folder=files) == (2, [], ['a: declined: ' + text_of(ABORTED, catalogue)])
        device.forbid_installing()
        assert ctl('install', '--quiet', 'a', folder=files) == (3, [],
                                                                ['a: forbidden: ' + text_of(DISALLOWED, catalogue)])
        program.kill()


def test_all_languages(reporting, ctl, tmp_path):
    catalogues = sorted(path.stem for path in SOURCES.glob('velmora-installationhandler*.ts'))
    assert len(catalogues) >= 8
    for catalogue in catalogues:
        (tmp_path / catalogue).touch()

    reporting += [(1, text_of(ABORTED, catalogue)) for catalogue in catalogues]
    assert ctl('install', '--quiet', *catalogues, folder=tmp_path) == \
        (2, [], [f'{catalogue}: declined: {text_of(ABORTED, catalogue)}' for catalogue in catalogues])

    for catalogue in catalogues:
        reporting.append((0, text_of(DISALLOWED, catalogue)))
        assert ctl('install', '--quiet', catalogue, folder=tmp_path) == \
            (3, [], [f'{catalogue}: forbidden: {text_of(DISALLOWED, catalogue)}'])


def test_language_without_catalogues(catalogues, program, dialog, ctl, files, device):
    """Identifiers stand for the texts then."""
    dialog.use('Dismissing')
    catalogues.remove_all()
    program.start()

    assert ctl('install', '--quiet', 'a', folder=files) == (2, [], [f'a: installctl-declined: {ABORTED}'])
    device.forbid_installing()
    assert ctl('install', '--quiet', 'a', folder=files) == (3, [], [f'a: installctl-forbidden: {DISALLOWED}'])


def test_texts_alone_do_not_count(catalogues, reporting, ctl, files):
    """A declined installation has been asked about, and a forbidden one has not. The rest counts as failed."""
    declined, forbidden = text_of(ABORTED), FORBIDDEN_TEXT
    catalogues.install('velmora-installationhandler-tlh', {ABORTED: 'Qo', DISALLOWED: '%1 lo'})
    for sdk_mode, questions, text, status in [
            (True, 1, declined, 2), (True, 0, declined, 1), (True, 1, forbidden, 1), (True, 0, forbidden, 3),
            (False, 1, forbidden, 1), (False, 0, forbidden.replace('Debian', 'any'), 3), (True, 0, forbidden + ' ', 1),
            (False, 1, 'qo', 1), (False, 1, 'Qo', 2), (False, 1, ABORTED, 2), (False, 0, 'a lo', 3), (True, 0, 'lo', 1),
            (False, 0, DISALLOWED, 3), (False, 1, f'{declined}\n', 1), (False, 1, '', 1)]:
        reporting.append((questions, text))
        run = ctl('install', '--quiet', *['--sdk'] * sdk_mode, 'a', folder=files)
        assert (run.status, len(run.err)) == (status, 1), (sdk_mode, questions, text, run)
        assert run.err[0].startswith({1: 'a: failed', 2: 'a: declined', 3: 'a: forbidden'}[status])


def test_interruptions(service, treat, dialog, ctl, files, signals):
    """The service goes on."""
    interruptions = [(signal.SIGINT, 130), (signal.SIGTERM, 143), (signal.SIGHUP, 129)]
    for count, (number, status) in enumerate(interruptions, 1):
        run = ctl.start('install', 'a', 'b', folder=files)
        dialog.wait_shown(count)
        run.wait_line(CONFIRMING)
        run.send_signal(number)

        assert run.wait()[::2] == (status, ['a: interrupted: the service goes on',
                                            'velmora-installctl: not requested: 1 of 2'])
        treat(INSTALLED)
        assert signals.wait('installFinished', count) == (True, '')

    # A program that nohup has started does not end with its terminal.
    run = ctl.start('install', 'a', folder=files, starter=['nohup'])
    dialog.wait_shown(4)
    run.send_signal(signal.SIGHUP)
    treat(INSTALLED)
    assert run.wait()[::2] == (0, [])


def test_outputs_that_cannot_be_written(service, signals, treat, ctl, files):
    """The outcome counts more."""
    with open('/dev/full', 'wb') as full:
        unwritten = (74, [], ['velmora-installctl: the output could not be written'])
        assert ctl('--help', output=full) == unwritten
        assert ctl('install', '--no-wait', 'a', output=full, folder=files) == unwritten
        treat(INSTALLED)
        signals.wait('installFinished')
        run = ctl.start('install', 'a', output=full, folder=files)
        treat(DECLINED)
        assert run.wait()[::2] == (2, [f'a: {ENDS[DECLINED]}'])
