# SPDX-FileCopyrightText: velmora-installationhandler contributors
# SPDX-License-Identifier: BSD-3-Clause
"""A short soak; `tests/soak/run` makes a long one."""

import pytest
from gi.repository import Gio, GLib
from harness.processes import DEADLINE
from soak.device import SoakDevice
from soak.installations import CANCELLED, Installations
from soak.measurement import Measurement
from soak.plan import DisplayOff, Fault, Install, Plan, Round, every_kind
from soak.roundlog import RoundLog
from soak.soak import Soak
from support.installationrequests import FORBIDDEN

SEED = 11
REQUESTS = 120

ACCEPTED = Install(0, (1,), sdk_mode=False, declined=False)
DECLINED = Install(0, (1,), sdk_mode=False, declined=True)
SUCCESS, REFUSED = (True, ''), (False, CANCELLED)
FAILURE = (False, 'zarn_installation_error_desc_NoReply (code: NoReply)')
PACKAGEKIT = 'org.freedesktop.PackageKit'
FAULT = Fault('package-manager', 'Install', 'hangs')


@pytest.fixture(scope='module')
def device():
    """The device of a soak: a machine can be made to one once."""
    soaked = SoakDevice()
    yield soaked
    soaked.close()


def test_every_outcome_is_allowed_and_nothing_is_left(device):
    soak, measurement = Soak(device), Measurement(device, REQUESTS, memory_limit=None)
    for planned in every_kind():
        soak.play(planned)
    measurement.begin()

    for planned in Plan(SEED, REQUESTS).rounds():
        soak.play(planned)

    measurement.end(REQUESTS)
    assert not measurement.failures
    assert not device.unexpected()


def test_transaction_of_a_packagekit_that_has_died(device):
    for process in (1, device.peer('package-kit').process.pid):
        with pytest.raises(GLib.Error):
            device.system_bus.connection.call_sync(PACKAGEKIT, f'/5_{process}', f'{PACKAGEKIT}.Transaction', 'SetHints',
                                                   None, None, Gio.DBusCallFlags.NONE, DEADLINE * 1000, None)
    (call,) = device.unexpected()
    assert f'/5_{process} ' in call


def test_seed_repeats_a_plan():
    assert list(Plan(SEED, REQUESTS).rounds()) == list(Plan(SEED, REQUESTS).rounds())
    assert list(Plan(SEED, REQUESTS).rounds()) != list(Plan(SEED + 1, REQUESTS).rounds())


def problems(kind, steps, outcomes, handed_over, more=0):
    planned = Round(kind, managed=True, owned=True, steps=steps)
    return Installations(planned).problems(outcomes, more, handed_over,
                                           lambda number, declined: f'{"declined" if declined else "accepted"}{number}')


@pytest.mark.parametrize('kind, steps, outcome, handed_over', [
    ('asking', [ACCEPTED], SUCCESS, ['accepted1']),
    ('asking', [DECLINED], REFUSED, []),
    ('asking', [ACCEPTED, DisplayOff()], REFUSED, []),
    ('silent', [DECLINED], SUCCESS, ['declined1']),
    ('silent', [ACCEPTED, FAULT], FAILURE, []),
    ('alone', [DECLINED._replace(sdk_mode=True)], SUCCESS, ['declined1']),
    ('forbidden', [ACCEPTED], (False, FORBIDDEN), []),
])
def test_allowed(kind, steps, outcome, handed_over):
    assert not problems(kind, steps, [outcome], handed_over)


def test_request_without_files_succeeds():
    assert not problems('asking', [DECLINED], [REFUSED, SUCCESS], [], more=1)


@pytest.mark.parametrize('kind, steps, outcomes, handed_over', [
    ('asking', [DECLINED], [SUCCESS], []),
    ('asking', [DECLINED], [REFUSED], ['declined1']),
    ('asking', [ACCEPTED], [REFUSED], []),
    ('asking', [ACCEPTED], [FAILURE], []),
    ('asking', [ACCEPTED], [SUCCESS, SUCCESS], ['accepted1']),
    ('asking', [ACCEPTED], [SUCCESS], ['accepted2']),
    ('silent', [ACCEPTED], [SUCCESS], []),
    ('silent', [ACCEPTED], [SUCCESS], ['accepted1', 'accepted1']),
    ('silent', [ACCEPTED], [], ['accepted1']),
    ('silent', [ACCEPTED], [REFUSED], ['accepted1']),
    ('forbidden', [ACCEPTED], [SUCCESS], []),
    ('forbidden', [ACCEPTED], [(False, FORBIDDEN)], ['accepted1']),
])
def test_not_allowed(kind, steps, outcomes, handed_over):
    assert problems(kind, steps, outcomes, handed_over)


START = 'debug default: Uninstall "a" via RPM\n'
FAILED_END = 'debug default: Failed to uninstall "a" "gone"\n'
GOOD_END = 'debug default: Uninstalled "a"\n'
NO_OPERATION = 'warning default: Transaction count out of sync!\n'


class Said:
    """A process that has said something."""

    def __init__(self, text):
        self.text = text


@pytest.mark.parametrize('text, packagekit_fails, right', [
    (START + GOOD_END, False, True),
    (START + GOOD_END + NO_OPERATION, False, False),
    (START + FAILED_END + GOOD_END, True, False),
    (START + FAILED_END + GOOD_END + NO_OPERATION, True, True),
    (START + GOOD_END + NO_OPERATION, True, True),
])
def test_count_of_operations(text, packagekit_fails, right):
    log = RoundLog(Said(text))
    log.read()
    assert not log.unusual
    assert (not log.problems(packagekit_fails)) == right
