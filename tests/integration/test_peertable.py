# SPDX-FileCopyrightText: velmora-installationhandler contributors
# SPDX-License-Identifier: BSD-3-Clause
"""The table in docs/integration.md of the services that the service calls, against the code and the calls that it makes."""

import re

import documents
import pytest
from support.packagekit import install
from support.removalrequests import ANDROID
from support.transactionsignals import finished, package_found

BUSES = ('session', 'system')
TRANSACTION = 'org.freedesktop.PackageKit.Transaction'


def table():
    """The rows of the table, each as bus, service, object, interface and method. An empty cell is like the one above."""
    rows, above = set(), [''] * 5
    text = (documents.SOURCE / 'docs/integration.md').read_text(encoding='utf-8')
    for line in re.findall(r'^\| (.*) \|$', text.partition('| bus | service |')[2].partition('\n\n')[0], re.MULTILINE):
        cells = [cell.strip(' `') or before for cell, before in zip(line.split('|'), above)]
        above = cells
        rows.add(tuple(cells))
    return rows


def test_code_names_the_services_of_the_table():
    """But for the service itself, and for those whose names stand elsewhere."""
    names = (documents.SOURCE / 'common/busnames.h').read_text(encoding='utf-8')
    constants = set(re.findall(r'(?:Service|Path|Interface) = QStringLiteral\("(.*)"\)', names))
    told = {cell for row in table() for cell in row[1:4]}
    assert constants - told == {'org.velmoraos.installationhandler', '/org/velmoraos/installationhandler'}
    assert {cell for cell in told - constants if 'freedesktop' not in cell} == {'of the transaction'}


@pytest.fixture
def calls(session_monitor, system_monitor, session_bus, system_bus, program):
    """The calls that the service has made, in the form of the table."""
    def made():
        program.barrier()
        monitors = (session_monitor, session_bus), (system_monitor, system_bus)
        return {(bus_name, call.destination, 'of the transaction' if call.interface == TRANSACTION else call.path,
                 call.interface, f'{call.member}({call.signature})')
                for bus_name, (monitor, bus) in zip(BUSES, monitors)
                for call in monitor.calls(bus.name_of_process(program.process.pid))
                if call.interface != 'org.freedesktop.DBus.Properties'}
    return made


def test_service_calls_what_the_table_has(platform, standins, calls, program, install_and_wait, remove_and_wait, client,
                                          device, dialog, package, applications):
    packagekit = standins.start('package-kit')
    dialog.use('Confirming')
    program.start()

    assert install_and_wait([package('managed')]) == (True, '')
    device.forbid_installing()
    assert install_and_wait([])[0] is False
    assert remove_and_wait(['managed']) == (True, '')

    install(package('native'))
    packagekit.script('Resolve', [package_found('native;1.0-1;noarch;installed'), finished()])
    assert remove_and_wait(['native']) == (True, '')

    own_launcher = applications / 'own.desktop'
    own_launcher.touch()
    client.remove_launcher(own_launcher)
    ANDROID.write_text('[Desktop Entry]\nX-zindro-apkfile=/app.apk\n', encoding='ascii')
    client.remove_launcher(ANDROID)
    platform.android_support.wait_call('removeFile')

    assert calls() == table()
