# SPDX-FileCopyrightText: velmora-installationhandler contributors
# SPDX-License-Identifier: BSD-3-Clause
"""The fixtures: a fresh pair of buses, HOME and device state for each test, and programs started on demand."""

import os
import shutil
import tempfile
from functools import partial
from pathlib import Path

import pytest
from harness.accessibility import ACTIVE, AccessibilityBus
from harness.bus import PrivateBus
from harness.busmonitor import BusMonitor
from harness.client import WHOLE_STACKS, Client
from harness.forkedprocess import start_server
from harness.pauses import Paused
from harness.processes import Processes
from harness.screen import Screen
from harness.service import PROGRAM, Service
from harness.signalrecorder import SignalRecorder
from harness.standins import StandIns
from harness.windowmanager import take_focus
from packages import build_package

from .catalogues import Catalogues
from .devicestate import DeviceState, is_device, make_own_folder
from .dialog import Dialog
from .packagekit import PackageKit, WaitingScriptlet, install
from .scriptedbus import ScriptedBus

PROCESSES = pytest.StashKey[Processes]()

# A machine that pauses in every second attempt does not do so in all of these.
ATTEMPTS = 30

# The variables of all programs of the session, besides those that every session has.
ENVIRONMENT = {
    'QT_QPA_PLATFORM': 'offscreen', 'QT_QUICK_BACKEND': 'software', 'QT_FORCE_STDERR_LOGGING': '1',
    'QT_MESSAGE_PATTERN': '%{type} %{category}: %{message}',
    # The library of PackageKit complains about properties that the daemon may announce while it starts.
    'QT_LOGGING_RULES': 'packagekitqt.offline=false',
}


def pytest_sessionstart():
    """Keeps the tests from changing the machine they run on, and prepares their processes."""
    if not is_device():
        pytest.exit('These tests run on a device in a sandbox only: '
                    'sandbox/device --stage STAGE --no-buses -- /usr/bin/python3 -m pytest FILE', returncode=4)
    start_server()


@pytest.hookimpl(hookwrapper=True)
def pytest_runtest_makereport(item):
    """Shows what every process said when a test fails."""
    outcome = yield
    report = outcome.get_result()
    if report.failed and PROCESSES in item.stash:
        for process in item.stash[PROCESSES].all:
            state = 'runs' if process.alive else f'ended with {process.returncode}'
            report.sections.append((f'{process.name} ({process.pid}, {state})', process.text))


@pytest.fixture
def processes(request):
    """All processes of the test. None may end unasked, and no sanitizer may complain."""
    all_processes = Processes()
    request.node.stash[PROCESSES] = all_processes
    yield all_processes
    try:
        all_processes.run_pending()
        all_processes.check_alive()
    finally:
        all_processes.stop()
    assert not all_processes.sanitizer_reports()


@pytest.fixture
def tmp_path():
    """A folder of the session's user, who may not enter pytest's own ones."""
    with tempfile.TemporaryDirectory() as folder:
        os.chmod(folder, 0o755)
        shutil.chown(folder, 'velmora')
        yield Path(folder)


@pytest.fixture
def device():
    """The device's own state, as new."""
    return DeviceState()


@pytest.fixture
def environment(device):
    """The variables of all programs of the session."""
    return dict(ENVIRONMENT)


@pytest.fixture
def system_bus(processes):
    """A fresh system bus."""
    return PrivateBus.system(processes)


@pytest.fixture
def session_bus(processes, environment):
    """A fresh session bus."""
    return PrivateBus.session(processes, environment)


@pytest.fixture
def standins(processes, system_bus, session_bus):
    """The stand-ins, none of which runs yet. Calls that no stand-in offers fail the test."""
    all_standins = StandIns(processes, system_bus, session_bus)
    yield all_standins
    processes.run_pending()
    assert not all_standins.unexpected()


@pytest.fixture
def platform(standins):
    """All stand-ins but that of PackageKit, running."""
    return standins.start_all()


@pytest.fixture
def program(processes, system_bus, session_bus, environment):
    """The service, not started yet."""
    return Service(processes, session_bus, system_bus, environment)


@pytest.fixture
def service(program):
    """The service, running. It has to be alive at the end of the test unless its exit was waited for."""
    return program.start()


@pytest.fixture
def second_program(processes, system_bus, session_bus, environment):
    """Another process of the service, not started yet."""
    return Service(processes, session_bus, system_bus, environment)


@pytest.fixture
def run_client(processes, environment):
    """Runs the program, or a copy, in client mode: `run_client('install', file)`, its exit status and its lines."""
    def run(*arguments, program=PROGRAM, **variables):
        process = processes.start_in_session('client', [program, *arguments],
                                             {**environment, **WHOLE_STACKS, **variables})
        return processes.wait_end(process), process.lines()
    return run


@pytest.fixture
def scripted_bus(processes):
    """A session bus that hands names out when told; start the service with its `address`."""
    bus = ScriptedBus(processes)
    yield bus
    bus.stop()


@pytest.fixture
def client(session_bus, processes):
    """A client on the session bus."""
    return Client(session_bus.connection, processes)


@pytest.fixture
def signals(session_bus, processes):
    """Everything that the service announces from now on."""
    return SignalRecorder(session_bus.connection, processes)


@pytest.fixture
def announced(program, signals):
    """The names of the signals that the service has sent up to now."""
    def names():
        program.barrier()
        return signals.names()
    return names


def request_and_wait(request, signals, name):
    """A function that makes a request and returns the next outcome that is announced."""
    def wait(*arguments, **options):
        number = len(signals.arguments(name)) + 1
        request(*arguments, **options)
        return signals.wait(name, number)
    return wait


@pytest.fixture
def install_and_wait(client, signals):
    return request_and_wait(client.install, signals, 'installFinished')


@pytest.fixture
def remove_and_wait(client, signals):
    return request_and_wait(client.remove, signals, 'removalFinished')


@pytest.fixture
def remove_launcher_and_wait(client, signals):
    return request_and_wait(client.remove_launcher, signals, 'removalFinished')


@pytest.fixture
def system_monitor(system_bus, processes):
    """Everything that goes over the system bus from now on."""
    return BusMonitor(system_bus, processes)


@pytest.fixture
def session_monitor(session_bus, processes):
    """Everything that goes over the session bus from now on."""
    return BusMonitor(session_bus, processes)


@pytest.fixture
def system_calls(system_bus, system_monitor, program):
    """The calls of other programs on the system bus that the service has made up to now."""
    def made():
        program.barrier()
        return system_monitor.calls(system_bus.name_of_process(program.process.pid))
    return made


@pytest.fixture
def session_calls(session_bus, session_monitor, program):
    """The calls of other programs on the session bus that the service has made up to now."""
    def made():
        program.barrier()
        return session_monitor.calls(session_bus.name_of_process(program.process.pid))
    return made


@pytest.fixture
def session_messages(session_bus, session_monitor, program):
    """The messages that the service has sent on the session bus up to now."""
    def sent(kind=None):
        program.barrier()
        return session_monitor.messages(session_bus.name_of_process(program.process.pid), kind)
    return sent


@pytest.fixture
def manager(standins):
    """A package manager that installs and removes nothing."""
    return standins.start('package-manager', installs='nothing')


@pytest.fixture
def launcher_model(standins):
    return standins.start('launcher-model')


@pytest.fixture
def applications(device):
    """The user's own folder of launchers."""
    return make_own_folder(device.home / '.local/share/applications')


@pytest.fixture
def dialog(program, tmp_path):
    """The choice of another dialog, and answers to it."""
    chosen = Dialog(program, tmp_path / 'installed-dialog')
    yield chosen
    chosen.restore()


@pytest.fixture
def catalogues(tmp_path):
    """The translation catalogues of the device."""
    changed = Catalogues(tmp_path, tmp_path / 'installed-catalogues')
    yield changed
    changed.restore()


@pytest.fixture
def screen(processes):
    """A display with keyboard and pointer; start the service with `program.start(environment=screen.environment())`."""
    return Screen.in_memory(processes)


@pytest.fixture
def in_time(program, signals, standins):
    """Makes an attempt until the machine has not paused meanwhile; the numbers of outcomes and of installations that it has
    brought. An attempt makes one request, and raises Paused."""
    def repeat(attempt):
        def seen():
            program.barrier()
            return len(signals.arguments('installFinished')), len(standins.package_manager.calls('Install'))
        for _ in range(ATTEMPTS):
            before = seen()
            try:
                attempt()
                return tuple(now - then for now, then in zip(seen(), before))
            except Paused:
                while seen()[0] == before[0]:
                    standins.mce.configure('display', 'off')
                    standins.mce.configure('display', 'on')
        return pytest.fail(f'this machine is too busy: it has paused in each of {ATTEMPTS} attempts')
    return repeat


@pytest.fixture
def accessibility(processes, session_bus, screen):
    """The accessibility bus of the display's session; no screen reader runs yet."""
    return AccessibilityBus(processes, session_bus, screen.environment())


@pytest.fixture
def objects(accessibility, program, screen):
    """The service on the display while a screen reader runs: the root of the objects that the reader finds."""
    accessibility.announce_screen_reader()
    program.start(environment=screen.environment())
    return accessibility.wait_program(program.process.pid)


@pytest.fixture
def lose_focus(accessibility, objects, screen):
    """Takes the keyboard focus from the dialog, and waits until it has learned that."""
    def lose():
        window = objects.find(lambda child: child.has_state(ACTIVE))
        take_focus(screen.display)
        accessibility.wait_for(lambda: not window.has_state(ACTIVE), 'window that is not active')
    return lose


@pytest.fixture
def package(tmp_path):
    """Builds a package file of a name: packages.build_package with the folder given."""
    return partial(build_package, tmp_path / 'packages')


@pytest.fixture
def packagekit(device, system_bus, package):
    """The real PackageKit, on a device that has it. It reports the removal of the very last package as a failure,
    so there is one that nobody removes."""
    assert not device.packages()
    install(package('keeper', files={}))
    real = PackageKit(system_bus)
    yield real
    real.repair()


@pytest.fixture
def scriptlet(processes):
    """A scriptlet that waits until it is released by the test, or by its end."""
    waiting = WaitingScriptlet(processes)
    yield waiting
    waiting.finish()
