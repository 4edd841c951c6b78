# SPDX-FileCopyrightText: velmora-installationhandler contributors
# SPDX-License-Identifier: BSD-3-Clause
"""The installed dialog under a Wayland compositor: in front of everything, with the focus, and gone without a trace. It
takes no click that was meant for something else."""

import re
import signal

import pytest
from harness.weston import Panel, WestonScreen

CANCELLED = (False, 'The user cancelled the installation')
INSTALLED = (True, '')

# The panel, and the size that a window has there when it fills the screen.
PANELS = {
    'phone': (Panel(360, 640), (360, 640)),
    'dense phone': (Panel(360, 640, scale=2), (360, 640)),
    'turned phone': (Panel(360, 640, scale=2, transform='rotate-90'), (640, 360)),
    'tablet upside down': (Panel(1280, 800, transform='rotate-180'), (1280, 800)),
}


@pytest.fixture(params=PANELS)
def panel(request):
    return PANELS[request.param]


@pytest.fixture
def screen(processes, session_bus, panel):
    """A Wayland compositor."""
    return WestonScreen.in_memory(processes, panel[0])


@pytest.fixture
def application(processes, screen):
    """Another application on the screen, which has the focus."""
    process = processes.start_in_session(
        'application', ['stdbuf', '-oL', 'weston-eventdemo', '--width=200', '--height=200', '--log-focus'],
        screen.environment())
    processes.wait_line(process, lambda line: line.startswith('focus x'), 'focus of the application')
    return process


@pytest.fixture
def service(standins, screen, program):
    """The service on the screen, with a package manager that installs nothing. Its log has all Wayland requests."""
    standins.start('package-manager', 'mce')
    standins.package_manager.configure('installs', 'nothing')
    return program.start(environment={**screen.environment(), 'WAYLAND_DEBUG': '1'})


def focus_changes(processes, application):
    """How often the application has got (True) and lost (False) the focus, in order."""
    processes.run_pending()
    return [line != 'focus lost' for line in application.lines() if line.startswith('focus')]


def is_active(service):
    """Whether the newest dialog has learned that it is active, which the log of Wayland's library tells. Keys that come
    before are lost."""
    messages = '\n'.join(service.log()).rpartition('.get_toplevel(')[2]
    # The states "full screen" and "activated" have four bytes each.
    active = re.findall(r'xdg_toplevel[@#]\d+\.configure\(\d+, \d+, array\[8\]\).*?xdg_surface[@#]\d+\.configure\((\d+)\)',
                        messages, re.DOTALL)
    return any(f'.ack_configure({serial})' in messages for serial in active)


def test_each_dialog_is_in_front(screen, panel, application, processes, service, client, signals):
    before = screen.picture()
    answers = [('Escape', CANCELLED), ('Return', CANCELLED), ('Tab', 'space', INSTALLED)]

    for number, (*keys, outcome) in enumerate(answers, 1):
        client.install(['/absent.rpm'])
        signals.wait('needConfirm', number)
        screen.wait_for_window(service.process.pid)
        processes.wait_until(lambda: focus_changes(processes, application) == [True, False] * number,
                             'the application to lose the focus')
        processes.wait_until(lambda: is_active(service), 'the dialog to get the focus')
        screen.type(*keys)

        assert signals.wait('installFinished', number) == outcome
        screen.wait_for_picture(before)
        processes.wait_until(lambda: focus_changes(processes, application) == [True, False] * number + [True],
                             'the application to get the focus back')
    sizes = {(int(width), int(height)) for width, height in
             re.findall(r'xdg_toplevel[@#]\d+\.configure\((\d+), (\d+)', '\n'.join(service.log()))}
    assert sizes == {panel[1]}


@pytest.mark.parametrize('panel', ['phone', 'dense phone'], indirect=True)
def test_pointer(screen, panel, processes, service, client, signals, standins, in_time):
    """Known behaviour 70."""
    client.install(['/absent.rpm'])
    install, cancel = screen.places_on_buttons()
    screen.click(*cancel[0])
    assert signals.wait('installFinished') == CANCELLED

    def dialog_comes_up():
        """Taps from before the dialog is there."""
        client.install(['/absent.rpm'])
        screen.tap(install, 2)

    def dialog_is_covered():
        """Taps while another window covers the dialog, and when it has gone."""
        client.install(['/absent.rpm'])
        screen.wait_for_install_area()
        cover = processes.start_in_session('cover', ['weston-terminal', '--fullscreen'], screen.environment())
        screen.wait_for_install_to_rest()
        last = screen.tap(install, 0.3)
        cover.send_signal(signal.SIGTERM)
        screen.tap(install, 1.2, since=last)

    for attempt in (dialog_comes_up, dialog_is_covered):
        assert in_time(attempt) == (0, 0)
        outcomes, installed = (len(signals.arguments('installFinished')),
                               len(standins.package_manager.calls('Install')))
        screen.click(*screen.wait_for_install_button())
        assert signals.wait('installFinished', outcomes + 1) == INSTALLED
        assert len(standins.package_manager.calls('Install')) == installed + 1
