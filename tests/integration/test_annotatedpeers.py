# SPDX-FileCopyrightText: velmora-installationhandler contributors
# SPDX-License-Identifier: BSD-3-Clause
"""Peers whose descriptions say that their methods do not answer, though they do: their answers are awaited."""

from pathlib import Path

import pytest
from gi.repository import GLib
from support.otherservice import DESCRIPTION, OtherService
from support.removalrequests import KNOWN

LAUNCHER = Path('/usr/share/applications/foo.desktop')
ANNOTATION = '<annotation name="org.freedesktop.DBus.Method.NoReply" value="true"/>'
METHODS = {
    'developer-mode': ('ru.quon.developermode', ['IsSilentInstallationEnabled']),
    'package-manager': ('ru.quon.ZARN', ['GetPackage']),
    'runtime-manager': ('ru.quon.ZARN.Hooks', ['OnRemove']),
    'android-support': ('com.zelka.zindro', ['removeFile']),
    'launcher-model': ('org.orrinmobile.rozzle.LauncherModel', ['updatingStarted', 'updatingFinished']),
    'mce': ('com.nokia.mce.request', ['notification_begin_req', 'notification_end_req']),
}


def description(interface, methods):
    inside = ''.join(f'<method name="{method}">{ANNOTATION}</method>' for method in methods)
    return f'<node><interface name="{interface}">{inside}</interface></node>'


@pytest.fixture
def annotated(standins):
    """Starts a stand-in that describes itself so."""
    def start(name, **settings):
        standin = standins.start(name, **settings)
        standin.answer('Introspect', GLib.Variant('(s)', (description(*METHODS[name]),)))
        return standin
    return start


def answered(monitor, bus, program, interface):
    """The service's calls of an interface that were answered, as those that want no answer are not."""
    name = bus.name_of_process(program.process.pid)
    answers = [message.reply_serial for message in monitor.messages(kind='method-return')
               if message.destination == name]
    return [call.member for call in monitor.calls(name) if call.interface == interface and call.serial in answers]


def test_developer_mode(annotated, standins, program, signals, install_and_wait):
    annotated('developer-mode', silent_installation=True)
    standins.start('package-manager', installs='nothing')
    standins.start('package-kit')
    program.start()

    assert install_and_wait(['/absent.rpm'], sdk_mode=True) == (True, '')
    assert 'needConfirm' not in signals.names()


def test_package_manager(annotated, standins, program, remove_and_wait):
    annotated('package-manager', installs='nothing').answer('GetPackage', KNOWN)
    standins.package_manager.answer('Remove', GLib.Variant('()', ()))
    program.start()

    assert remove_and_wait(['foo']) == (True, '')
    assert program.debugs()[0] == 'Uninstall "foo" via ZARN'


def test_hook(annotated, program, client, applications):
    annotated('runtime-manager').refuse('OnRemove', 'a.b.Failed', 'out of order')
    program.start()
    launcher = applications / 'foo.desktop'
    launcher.touch()

    client.remove_launcher(launcher)

    program.barrier()
    assert program.warnings() == ["Failed to call ZARN hook 'OnRemove' for Runtime Manager service:  \"out of order\""]


def test_android_support(annotated, standins, program, client):
    android = annotated('android-support')
    standins.start('package-kit')
    program.start()
    LAUNCHER.write_text('[Desktop Entry]\nX-zindro-apkfile=/foo.apk\n', encoding='utf-8')

    client.remove_launcher(LAUNCHER)

    android.wait_call('removeFile')
    program.barrier()
    assert not LAUNCHER.exists()
    assert program.warnings() == []


def test_launcher_model(annotated, standins, program, session_bus, session_monitor, remove_and_wait):
    annotated('launcher-model')
    standins.start('package-manager', installs='nothing').answer('GetPackage', KNOWN)
    LAUNCHER.touch()
    program.start()

    assert remove_and_wait(['foo']) == (True, '')
    LAUNCHER.unlink()
    interface, methods = METHODS['launcher-model']
    assert answered(session_monitor, session_bus, program, interface) == methods


def test_mce(annotated, standins, program, system_bus, system_monitor, install_and_wait, dialog):
    annotated('mce')
    dialog.use('Dismissing')
    program.start()

    install_and_wait(['/absent.rpm'])
    program.barrier()
    assert answered(system_monitor, system_bus, program, METHODS['mce'][0])[-2:] == METHODS['mce'][1]


def test_other_service(session_bus, run_client):
    """The client hears that it was refused."""
    description_of_it = DESCRIPTION.replace('</method>', f'{ANNOTATION}</method>')
    OtherService(session_bus.connection, lambda invocation: invocation.return_dbus_error('a.b.Refused', ''),
                 description_of_it)

    assert run_client('install', '/tmp/a.rpm')[0] == 1
