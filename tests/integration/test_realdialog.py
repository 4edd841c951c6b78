# SPDX-FileCopyrightText: velmora-installationhandler contributors
# SPDX-License-Identifier: BSD-3-Clause
"""The installed dialog on a display, with keyboard and pointer, up to the package manager."""

import os
import signal
import time
from contextlib import contextmanager, nullcontext

import pytest
from packages import handmade

TEXTS = {
    'long': 'x' * 10_000, 'words': 'word ' * 2_000, 'lines': 'line\n' * 2_000,
    'markup': '<h1><a href="http://example.org">a</a><img src="file:///etc/passwd"></h1>' * 140,
    'directions': '\u202e\u2066\u0627\u05d0' * 2_500, 'marks': 'Z\u0324\u0351\u036b\u0343' * 2_000,
    'pictures': '\U0001f468\u200d\U0001f469\u200d\U0001f467' * 2_000,
    'controls': '\x01\x1b[31m\x7f\u200b\ufeff' * 1_100,
}
CANCELLED = (False, 'The user cancelled the installation')
INSTALLED = (True, '')


@pytest.fixture(autouse=True)
def service(standins, screen, program):
    """The service on the display, with a package manager that installs nothing."""
    standins.start('package-manager', 'mce')
    standins.package_manager.configure('installs', 'nothing')
    return program.start(environment=screen.environment())


@pytest.fixture
def ask(client, signals, screen, service):
    """Asks for an installation; the dialog's window."""
    def request(*files):
        client.install(files)
        signals.wait('needConfirm')
        return screen.wait_for_window(service.process.pid)
    return request


def installations(standins):
    return len(standins.package_manager.calls('Install'))


def press(*keys):
    return lambda screen, window: screen.press_keys(window, *keys)


ANSWERS = {
    'Tab space': (press('Tab', 'space'), INSTALLED), 'Right KP_Enter': (press('Right', 'KP_Enter'), INSTALLED),
    'Return': (press('Return'), CANCELLED), 'Tab shift+Tab space': (press('Tab', 'shift+Tab', 'space'), CANCELLED),
    'Escape': (press('Escape'), CANCELLED), 'XF86Back': (press('XF86Back'), CANCELLED),
    'click on install': (lambda screen, _window: screen.click(*screen.wait_for_install_button()), INSTALLED),
    'click on cancel': (lambda screen, _window: screen.click(*screen.wait_for_cancel_button()), CANCELLED),
    'closed by the window manager': (lambda screen, window: screen.ask_to_close(window), CANCELLED),
}


@pytest.mark.parametrize('answer', ANSWERS)
def test_answer(ask, screen, signals, standins, service, answer):
    act, outcome = ANSWERS[answer]

    act(screen, ask('/absent.rpm'))

    assert signals.wait('installFinished') == outcome
    service.barrier()
    installed = outcome == INSTALLED
    assert installations(standins) == installed
    assert [call.arguments for call in standins.mce.calls('notification_end_req')] == [
        ('', 3000000 if installed else 1000000)]


# Between two taps, in seconds, less than it takes until "Install" takes a pointer.
SOON = 0.7


def places_on(left, top, right, bottom):
    """Points all over a button, in an order that leaves none out for long."""
    return [(x, y) for y in range(top, bottom, 10) for x in range(left, right, 50)]


@pytest.fixture
def buttons(ask, screen, signals):
    """Points all over "Install" and all over "Cancel", as they were in a dialog that has gone."""
    window = ask('/absent.rpm')
    left, top, right, bottom = screen.wait_for_install_area()
    screen.press_keys(window, 'Escape')
    signals.wait('installFinished')
    width = screen.width
    return places_on(left, top, right, bottom), places_on(width - right, top, width - left, bottom)


@pytest.mark.parametrize('with_cancel', [False, True])
def test_tapping_while_dialogs_come_up_installs_nothing(
        buttons, client, screen, signals, standins, service, with_cancel):
    """A tap that was meant for something else never installs, also when it dismisses a dialog and another one comes up."""
    install, cancel = buttons
    client.install(['/one.rpm', '/two.rpm'])
    longest = screen.tap(install, 4)
    if with_cancel:
        longest = max(longest, screen.tap(install[::2] + cancel, 4))
    else:
        screen.press_keys(screen.wait_for_window(service.process.pid), 'Escape')
        longest = max(longest, screen.tap(install, 4))

    service.barrier()
    # A machine that is too busy to tap that often gives the user's time.
    assert longest > SOON or (installations(standins), len(signals.arguments('needConfirm'))) == (0, 3)


def test_install_can_be_chosen_after_the_tapping(buttons, ask, screen, signals, standins):
    install, _cancel = buttons
    ask('/one.rpm')
    screen.tap(install, 1)

    screen.click(*screen.wait_for_install_button())

    assert signals.wait('installFinished', 2) == INSTALLED
    assert installations(standins) == 1


def test_dialog_that_comes_back_gives_the_time_again(ask, screen, signals, standins, service):
    window = ask('/absent.rpm')
    button = screen.wait_for_install_button()
    screen.take_focus()
    begun = time.monotonic()

    screen.give_focus(window)
    screen.click(*button)

    taken = time.monotonic() - begun
    service.barrier()
    assert taken > SOON or installations(standins) == 0
    if taken <= SOON:
        screen.click(*screen.wait_for_install_button())
    assert signals.wait('installFinished') == INSTALLED


@pytest.fixture
def busy(service):
    """A context in which the service takes nothing in, so that everything arrives at once when it ends."""
    @contextmanager
    def pause():
        os.kill(service.process.pid, signal.SIGSTOP)
        try:
            yield
        finally:
            os.kill(service.process.pid, signal.SIGCONT)
    return pause


@pytest.fixture
def check_installed_once(standins, service, signals):
    """Waits for the outcome, and looks whether there was one answer only."""
    def check():
        assert signals.wait('installFinished') == INSTALLED
        service.barrier()
        assert installations(standins) == 1
        assert [call.arguments for call in standins.mce.calls('notification_end_req')] == [('', 3000000)]
        assert signals.names() == ['needConfirm', 'installFinished']
    return check


@pytest.mark.parametrize('at_once', [False, True])
@pytest.mark.parametrize('times', [2, 5])
def test_many_clicks_install_once(ask, screen, busy, check_installed_once, times, at_once):
    ask('/absent.rpm')
    x, y = screen.wait_for_install_button()

    with busy() if at_once else nullcontext():
        screen.click(x, y, times)

    check_installed_once()


@pytest.mark.parametrize('at_once', [False, True])
@pytest.mark.parametrize('keys', [
    ['Return', 'Return', 'Return'],
    ['space', 'Escape'],
    ['Return', 'Tab', 'Return', 'Escape', 'Escape'],
], ids=str)
def test_keys_after_the_answer_mean_nothing(ask, screen, busy, check_installed_once, keys, at_once):
    window = ask('/absent.rpm')
    screen.press_keys(window, 'Tab')

    with busy() if at_once else nullcontext():
        screen.press_keys(window, *keys)

    check_installed_once()


def test_each_file_has_a_dialog_of_its_own(ask, screen, signals, standins, service):
    first = ask('/one.rpm', '/two.rpm')
    screen.press_keys(first, 'Escape')
    signals.wait('needConfirm', 2)

    screen.press_keys(screen.wait_for_window(service.process.pid, after=first), 'Tab', 'Return')

    assert signals.wait('installFinished') == CANCELLED
    assert [call.arguments[0] for call in standins.package_manager.calls('Install')] == ['/two.rpm']


@pytest.mark.parametrize('kind', TEXTS)
def test_texts_of_strangers_leave_the_buttons_in_reach(ask, screen, signals, standins, service, tmp_path, kind):
    text = TEXTS[kind]
    file = handmade.write(tmp_path / 'hostile.rpm', {
        handmade.NAME: (handmade.Type.STRING, text),
        handmade.VERSION: (handmade.Type.STRING, text),
        handmade.SUMMARY: (handmade.Type.I18NSTRING, [text]),
    })

    ask(file)
    screen.click(*screen.wait_for_install_button())

    assert signals.wait('installFinished') == INSTALLED
    service.barrier()
    assert [call.arguments[0] for call in standins.mce.calls('notification_begin_req')] == [text]
    assert not [line for line in service.log() if line.startswith('warning qml') or 'SideloadDialog.qml' in line]


def test_path_of_a_megabyte_leaves_the_buttons_in_reach(ask, screen, signals):
    ask('/' + 'path/' * 200_000)

    screen.click(*screen.wait_for_install_button())

    assert signals.wait('installFinished') == INSTALLED
