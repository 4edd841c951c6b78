# SPDX-FileCopyrightText: velmora-installationhandler contributors
# SPDX-License-Identifier: BSD-3-Clause
"""The machine that measures."""

import os
import platform
import re
from pathlib import Path


def description():
    """Processor, cores, memory in GiB, Debian release and kernel."""
    return {
        'processor': processor(Path('/proc/cpuinfo').read_text(encoding='utf-8')),
        'cores': len(os.sched_getaffinity(0)),
        'memory': round(os.sysconf('SC_PAGE_SIZE') * os.sysconf('SC_PHYS_PAGES') / 2**30),
        'debian': Path('/etc/debian_version').read_text(encoding='utf-8').strip(),
        'kernel': re.match(r'[\d.]*\d', platform.release())[0],
    }


def processor(information):
    """The name of the processor, or its kind where the kernel does not know a name."""
    name = re.search(r'^model name\s*: (.+)$', information, re.MULTILINE)
    return ' '.join(name[1].split()) if name else platform.machine()


def sentence(machine):
    return (f'{machine["processor"]}, {machine["cores"]} cores, {machine["memory"]} GiB, Debian {machine["debian"]}, '
            f'Linux {machine["kernel"]}')
