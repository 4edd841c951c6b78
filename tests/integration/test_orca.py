# SPDX-FileCopyrightText: velmora-installationhandler contributors
# SPDX-License-Identifier: BSD-3-Clause
"""The words of the screen reader Orca when the installed dialog comes up and is used."""

import pytest
from support.orca import Orca

WARNING = ('This app is not from the app store and has not been checked. It could harm your device or data. '
           'Install it only if you trust where you got it.')


pytestmark = pytest.mark.usefixtures('manager')


@pytest.fixture
def orca(device, objects, processes, screen):
    """Orca, before the dialog comes up."""
    reader = Orca(processes, device, screen.environment())
    yield reader
    reader.stop()


@pytest.fixture
def press_keys(program, screen):
    """Presses keys in the dialog."""
    def press(*keys):
        screen.press_keys(screen.wait_for_window(program.process.pid), *keys)
    return press


def dialog(orca, name, *texts):
    """The lines for a dialog that has come up: the window, the dialog, and the button with the focus."""
    if orca.version < 48:
        # Texts of three words and more take the place of the description, which is the warning too.
        window, words = 'Install this app? frame 1 unfocused dialog.', [f'{name} dialog', WARNING, *texts]
    else:
        window, words = 'Install this app?', [f'{name} dialog', WARNING]
    return window, ' '.join(words), button(orca, 'Cancel')


def button(orca, name):
    """The line for a button that has got the focus."""
    return f'{name} push button.' if orca.version < 48 else f'{name} button.'


def test_dialog_and_its_buttons_are_spoken(client, orca, package, press_keys):
    file = package('velmora-hello', summary='Greets you')

    client.install([file])
    orca.wait_lines(*dialog(orca, 'velmora-hello 1.0', "In the app's own words: Greets you"))
    press_keys('Tab')
    orca.wait_lines(button(orca, 'Install'))
    press_keys('Tab')
    orca.wait_lines(button(orca, file), 'Show full path.')
    # Nothing is said of the press itself: Qt announces that the hint has changed, but does not say the new one.
    press_keys('space', 'Tab')
    orca.wait_lines(button(orca, 'Cancel'))


def test_dialog_of_the_next_file_is_spoken(client, orca, package, press_keys):
    client.install([package('velmora-hello', summary='Greets you'), package('velmora-notes', summary='Takes notes')])
    orca.wait_lines(*dialog(orca, 'velmora-hello 1.0', "In the app's own words: Greets you"))
    press_keys('Tab')
    orca.wait_lines(button(orca, 'Install'))

    press_keys('space')

    orca.wait_lines(*dialog(orca, 'velmora-notes 1.0', "In the app's own words: Takes notes"))


def test_dialog_that_is_active_again_is_spoken_again(client, lose_focus, orca, program, screen):
    client.install(['/absent.rpm'])
    orca.wait_lines(*dialog(orca, '/absent.rpm'))

    lose_focus()
    screen.give_focus(screen.wait_for_window(program.process.pid))

    orca.wait_lines(*dialog(orca, '/absent.rpm'))


def test_hint_of_an_opened_file_is_spoken(client, objects, orca, press_keys):
    client.install(['/absent.rpm'])
    orca.wait_lines(*dialog(orca, '/absent.rpm'))

    # Orca 48 remembers a hint for two seconds, so the file is pressed before it has the focus.
    objects.button('/absent.rpm').press()
    press_keys('Tab')
    orca.wait_lines(button(orca, 'Install'))
    press_keys('Tab')

    orca.wait_lines(button(orca, '/absent.rpm'), 'Hide full path.')
