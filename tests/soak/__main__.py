# SPDX-FileCopyrightText: velmora-installationhandler contributors
# SPDX-License-Identifier: BSD-3-Clause
"""The soak on a device: see the script "run"."""

import argparse
import math
import sys
import time

from harness.forkedprocess import start_server

from .device import SoakDevice
from .measurement import Measurement
from .plan import CLIENTS, Plan, every_kind
from .soak import Soak, SoakFailed

# Requests after which memory is looked at for the first time, and what each further one may cost, in KiB. That counts
# in a soak of so many requests or more: the heap takes some thousand to reach its size.
WARM_UP = 500
MEMORY_LIMIT = 0.1
LONG_SOAK = 10000


def main():
    parser = argparse.ArgumentParser()
    parser.add_argument('--requests', type=int, required=True)
    parser.add_argument('--seed', type=int, required=True)
    parser.add_argument('--sanitized', action='store_true', help='memory is not looked at')
    options = parser.parse_args()
    start_server()
    device = SoakDevice()
    try:
        failures = run(device, options)
    except SoakFailed as failure:
        failures = [failure]
    finally:
        device.close()
    for failure in failures:
        print(f'FAILED: {failure}')
    return 1 if failures else 0


def memory_limit(options):
    """What each request may cost, in KiB; None if memory is not looked at."""
    if options.sanitized:
        return None
    return MEMORY_LIMIT if options.requests >= LONG_SOAK else math.inf


def run(device, options):
    """Plays the plan of the seed and prints what has come of it; returns the failures."""
    soak = Soak(device)
    measurement = Measurement(device, WARM_UP, memory_limit(options))
    begin = time.monotonic()
    for planned in every_kind():
        soak.play(planned)
    measurement.begin()
    done = rounds = faults = 0
    for planned in Plan(options.seed, options.requests).rounds():
        soak.play(planned)
        rounds, faults, done = rounds + 1, faults + planned.faults, done + planned.requests
        measurement.look(done)
    print(f'{done} requests of {CLIENTS} clients in {rounds} rounds with {faults} faults, '
          f'{time.monotonic() - begin:.0f} seconds')
    for outcome, count in sorted(soak.outcomes.items()):
        print(f'{outcome}: {count}')
    print(*measurement.end(done), sep='\n')
    print(measurement.wait_exit())
    return measurement.failures + device.unexpected()


sys.exit(main())
