# SPDX-FileCopyrightText: velmora-installationhandler contributors
# SPDX-License-Identifier: BSD-3-Clause
"""The installed dialog on a display, with keyboard and pointer, up to the package manager."""

import os
import signal
import time
from contextlib import contextmanager, nullcontext

import pytest
from harness.pauses import check_no_pause
from harness.windowmanager import flicker
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
def buttons(ask, screen, signals):
    """Points all over "Install" and all over "Cancel", as they were in a dialog that has gone."""
    window = ask('/absent.rpm')
    places = screen.places_on_buttons()
    screen.press_keys(window, 'Escape')
    signals.wait('installFinished')
    return places


def test_tapping_while_dialogs_come_up_installs_nothing(buttons, client, screen, in_time):
    """A tap that was meant for something else never installs, also when it dismisses a dialog and another one comes up.
    Known behaviour 70."""
    install, cancel = buttons

    def tap_all_over_the_buttons():
        client.install(['/one.rpm', '/two.rpm'])
        last = screen.tap(install, 3)
        screen.tap([cancel[0], *install, *cancel], 5, since=last)

    assert in_time(tap_all_over_the_buttons) == (1, 0)


def test_install_can_be_chosen_after_the_tapping(buttons, ask, screen, signals, standins, in_time):
    def tap_on_install():
        ask('/one.rpm')
        screen.tap(buttons[0], 1)

    assert in_time(tap_on_install) == (0, 0)
    outcomes = len(signals.arguments('installFinished'))
    screen.click(*screen.wait_for_install_button())

    assert signals.wait('installFinished', outcomes + 1) == INSTALLED
    assert installations(standins) == 1


def test_many_clicks_install_one_of_several_files(ask, screen, standins, service, signals, in_time):
    """They are over before the next file's dialog is ready."""
    def click_many_times():
        ask('/one.rpm', '/two.rpm')
        screen.tap([screen.wait_for_install_button()], 0.6)

    assert in_time(click_many_times) == (0, 1)
    screen.wait_for_install_button()
    assert [call.arguments[0] for call in standins.package_manager.calls('Install')][-1] == '/one.rpm'


def test_dialog_that_comes_back_gives_the_time_again(ask, screen, signals, in_time):
    def come_back_and_click():
        window = ask('/absent.rpm')
        button = screen.wait_for_install_button()
        screen.take_focus()
        begun = time.monotonic()
        screen.give_focus(window)
        screen.click(*button)
        check_no_pause(begun)

    assert in_time(come_back_and_click) == (0, 0)
    outcomes = len(signals.arguments('installFinished'))
    screen.click(*screen.wait_for_install_button())
    assert signals.wait('installFinished', outcomes + 1) == INSTALLED


def test_clicks_that_arrive_late_came_early(ask, screen, busy, in_time):
    """The time is over when the service takes them in, but they came while the dialog was not ready."""
    def click_while_busy():
        window = ask('/absent.rpm')
        button = screen.wait_for_install_button()
        screen.take_focus()
        begun = time.monotonic()
        screen.give_focus(window)
        time.sleep(0.2)
        with busy():
            check_no_pause(begun)
            screen.click(*button, 10)
            time.sleep(1)

    assert in_time(click_while_busy) == (0, 0)


def test_cover_without_the_focus_is_not_noticed(ask, screen, signals, service, standins):
    """Known behaviour 70."""
    ask('/absent.rpm')
    button = screen.wait_for_install_button()

    with screen.covered():
        screen.click(*button)
        service.barrier()
        assert installations(standins) == 0
    screen.click(*button)

    assert signals.wait('installFinished') == INSTALLED


@pytest.mark.parametrize('hides', [False, True])
def test_short_loss_of_the_focus_is_not_noticed(ask, screen, signals, hides):
    """The button stays ready. Known behaviour 70."""
    window = ask('/absent.rpm')
    button = screen.wait_for_install_button()

    flicker(screen.display, int(window), hides)
    screen.click(*button)

    assert signals.wait('installFinished') == INSTALLED


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
