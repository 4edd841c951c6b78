# SPDX-FileCopyrightText: velmora-installationhandler contributors
# SPDX-License-Identifier: BSD-3-Clause
"""The installed dialog as screen readers find it on the accessibility bus, and their presses of its buttons."""

import pytest
from harness.accessibility import FOCUSABLE
from packages import handmade

WARNING = ('This app is not from the app store and has not been checked. It could harm your device or data. '
           'Install it only if you trust where you got it.')
CANCELLED = (False, 'The user cancelled the installation')
INSTALLED = (True, '')
LONG, PART = 'x' * 10_000, 'x' * 32
# The texts of a package; those that are shown and spoken.
HOSTILE_TEXTS = {
    'markup': (('<b>Store</b>', '<i>1</i>', '<a href="/">a</a> &amp; <img src="file:///etc/passwd">'),
               ('<b>Store</b>', '<i>1</i>', '<a href="/">a</a> &amp; <img src="file:///etc/passwd">')),
    'directions': (('Store\u202egnp', '1\u20662', 'a\u200fb'), ('Store\ufffdgnp', '1\ufffd2', 'a\ufffdb')),
    'lines': (('Cancel\nInstall\r\n', '1\t2', 'one\n\n\u2028two'), ('Cancel Install', '1\ufffd2', 'one two')),
    'controls': (('\x07Store\x1b[31m', '1\x7f', 'a\u200bb\U000e0041'),
                 ('\ufffdStore\ufffd[31m', '1\ufffd', 'a\ufffdb\ufffd')),
    'length': ((LONG, LONG, LONG), (f'{PART * 2}…{PART * 2}', f'{PART}…{PART}', f'{"x" * 500}…{"x" * 500}')),
}


pytestmark = pytest.mark.usefixtures('manager')


def dialog_in(objects):
    """The dialog, after it has got the keyboard focus; None before."""
    dialog = objects.find(lambda child: child.role == 'dialog')
    return dialog if dialog and dialog.focused() else None


@pytest.fixture
def ask(accessibility, client, objects):
    """Asks for an installation; the dialog."""
    def request(*files):
        client.install(files)
        return accessibility.wait_for(lambda: dialog_in(objects), 'dialog with the focus')
    return request


def test_dialog_is_in_reading_order(ask, package):
    file = package('velmora-hello', summary='Greets you')

    assert ask(file).outline() == [
        f'dialog "velmora-hello 1.0" ({WARNING})',
        '  heading "Install this app?"',
        '  label "velmora-hello"',
        '  label "Version 1.0"',
        f'  label "{WARNING}"',
        '  label "In the app\'s own words: Greets you"',
        f'  push button "{file}" (Show full path)',
        '  push button "Cancel" focused',
        '  push button "Install"',
    ]


def test_dialog_of_an_unreadable_file_tells_its_path(ask):
    assert ask('/absent.rpm').outline() == [
        f'dialog "/absent.rpm" ({WARNING})',
        '  heading "Install this app?"',
        f'  label "{WARNING}"',
        '  push button "/absent.rpm" (Show full path)',
        '  push button "Cancel" focused',
        '  push button "Install"',
    ]


def test_window_is_called_after_the_question(ask, objects):
    ask('/absent.rpm')

    window = objects.find(lambda child: child.find(lambda below: below.role == 'dialog'))
    assert (window.role, window.name) == ('frame', 'Install this app?')


def test_reader_that_starts_late_finds_the_dialog(accessibility, client, program, screen, signals):
    program.start(environment=screen.environment())
    client.install(['/absent.rpm'])
    signals.wait('needConfirm')

    accessibility.announce_screen_reader()

    objects = accessibility.wait_program(program.process.pid)
    dialog = accessibility.wait_for(lambda: dialog_in(objects), 'dialog with the focus')
    assert dialog.name == '/absent.rpm'


@pytest.mark.parametrize('button, outcome', [('Install', INSTALLED), ('Cancel', CANCELLED)])
def test_button_answers_when_it_is_pressed(ask, manager, program, signals, button, outcome):
    ask('/absent.rpm').button(button).press()

    assert signals.wait('installFinished') == outcome
    program.barrier()
    assert len(manager.calls('Install')) == (outcome == INSTALLED)


def test_hint_of_the_file_follows_its_state(accessibility, announced, ask):
    dialog = ask('/absent.rpm')
    file = dialog.button('/absent.rpm')

    for hint in ('Hide full path', 'Show full path'):
        file.press()
        accessibility.wait_for(lambda hint=hint: file.description == hint, f'hint "{hint}"')

    assert announced() == ['needConfirm']


def test_tab_goes_from_the_answers_to_the_file(accessibility, ask, program, screen):
    dialog = ask('/absent.rpm')
    window = screen.wait_for_window(program.process.pid)

    for name in ('Install', '/absent.rpm', 'Cancel', 'Install'):
        screen.press_keys(window, 'Tab')
        button = dialog.button(name)
        assert button.has_state(FOCUSABLE)
        accessibility.wait_for(lambda button=button: dialog.focused() == button, f'focus on {name}')


def test_window_is_announced_before_its_button(accessibility, ask, lose_focus, program, screen):
    """Screen readers would go back from the button to the window otherwise."""
    ask('/absent.rpm')
    window = screen.wait_for_window(program.process.pid)
    screen.press_keys(window, 'Tab')
    lose_focus()
    screen.give_focus(window)

    accessibility.wait_for(lambda: len(accessibility.announced()) >= 5, 'window that is active again')
    assert accessibility.announced() == ['Install this app?', 'Cancel', 'Install', 'Install this app?', 'Cancel']


def test_next_file_has_a_dialog_of_its_own(accessibility, ask, objects, signals):
    first = ask('/one.rpm', '/two.rpm')
    first.button('Install').press()
    signals.wait('needConfirm', 2)

    def second():
        dialog = dialog_in(objects)
        return dialog if dialog and dialog != first else None
    dialog = accessibility.wait_for(second, 'second dialog with the focus')

    assert dialog.name == '/two.rpm'
    assert dialog.focused().name == 'Cancel'
    dialog.button('Cancel').press()
    assert signals.wait('installFinished') == CANCELLED


@pytest.mark.parametrize('kind', HOSTILE_TEXTS)
def test_texts_of_strangers_are_spoken_as_text(ask, tmp_path, kind):
    texts, (name, version, summary) = HOSTILE_TEXTS[kind]
    tags = dict(zip((handmade.NAME, handmade.VERSION, handmade.SUMMARY),
                    ((handmade.Type.STRING, texts[0]), (handmade.Type.STRING, texts[1]),
                     (handmade.Type.I18NSTRING, [texts[2]]))))

    lines = ask(handmade.write(tmp_path / 'invoice.pdf\u202empr.rpm', tags)).outline()

    assert lines == [
        f'dialog "{name} {version}" ({WARNING})',
        '  heading "Install this app?"',
        f'  label "{name}"',
        f'  label "Version {version}"',
        f'  label "{WARNING}"',
        f'  label "In the app\'s own words: {summary}"',
        f'  push button "{tmp_path}/invoice.pdf\ufffdmpr.rpm" (Show full path)',
        '  push button "Cancel" focused',
        '  push button "Install"',
    ]
