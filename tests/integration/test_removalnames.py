# SPDX-FileCopyrightText: velmora-installationhandler contributors
# SPDX-License-Identifier: BSD-3-Clause
"""Names of packages that are none, and very many of them."""

import re
from pathlib import Path

import pytest
from packages.launchers import write_launchers
from support.packagekit import install, install_handmade
from support.removalrequests import KNOWN
from support.transactionsignals import error_code, finished, package_found

APPLICATIONS = Path('/usr/share/applications')

ENDED = re.compile('debug default: (?:Uninstalled|Failed to uninstall) "(?P<name>[^"]*)"(?: "(?P<text>.*)")?')
OUT_OF_SYNC = 'Transaction count out of sync!'

# The number of replies that the bus lets a connection wait for.
PENDING = 128
TOO_MANY = 'The maximum number of pending replies per connection has been reached'

NAMES = [
    '', ' ', ' a', 'a ', 'a;b', ';', ';;;', 'a;1-1;noarch;installed', 'a\nb', '\n', '\t', '*', 'a*', '?', '[a-z]',
    '{a,b}', '$(touch /tmp/harm)', '`touch /tmp/harm`', 'a; touch /tmp/harm', 'a | b & c > /tmp/harm', "'", '"', '\\',
    '\\0', '%s%n', '%1', '-', '--help', '--all', '-e', '.', '..', '../a', '/', '/etc/passwd', 'a/b', '~', 'file:///a',
    'a=1', 'a >= 1', 'a-1.0-1', 'größer', '文字', '\U0001f600', '\u202egpj', '\ufffd', '\x7f\x01\x1b[31m', 'x' * 255,
    'x' * 5000, 'ambrel-apk-', 'ambrel-apk-*', 'ambrel-apk-../../../etc/*', 'ambrel-apk-größer', 'ambrel-apk-a;b\nc',
]
MANY = [f'name{number}' for number in range(400)]


def short(name):
    """A name for a test."""
    return ascii(name)[:30]


@pytest.fixture(params=['C.UTF-8', 'C'])
def local_service(request, program):
    """The service, under a locale of all characters and under one of few."""
    return program.start(environment={'LC_ALL': request.param})


@pytest.fixture
def both(standins):
    """Both back ends, which know no package."""
    return standins.start('package-manager', 'package-kit')


def check_alive(service, client, signals):
    """The next request is served as if nothing had been."""
    count = len(signals.arguments('installFinished'))
    client.install([])
    assert signals.wait('installFinished', count + 1) == (True, '')
    assert service.warnings() == []
    assert not Path('/tmp/harm').exists()


@pytest.mark.parametrize('names', [NAMES, MANY], ids=['odd', 'many'])
def test_any_name_gets_to_the_package_manager(manager, local_service, client, signals, names):
    """All names arrive unchanged, from one request."""
    manager.answer('GetPackage', KNOWN)

    client.remove(names, keep_userdata=True)

    signals.wait('removalFinished', len(names))
    local_service.barrier()
    assert signals.arguments('removalFinished') == [(True, '')] * len(names)
    assert [call.arguments for call in manager.calls('GetPackage')] == [(name,) for name in names]
    assert [call.arguments for call in manager.calls('Remove')] == [(name, {'KeepUserData': True}) for name in names]
    check_alive(local_service, client, signals)


def test_any_name_gets_to_packagekit(both, standins, local_service, client, signals):
    """All names arrive unchanged, in any order. Known behaviour 18."""
    # Few at a time: each removal waits for several replies at once, and the bus limits their number.
    for begin in range(0, len(NAMES), 20):
        end = min(begin + 20, len(NAMES))
        client.remove(NAMES[begin:end])
        signals.wait('removalFinished', end)

    local_service.barrier()
    assert signals.arguments('removalFinished') == [(True, '')] * len(NAMES)
    assert [call.arguments for call in standins.package_manager.calls('GetPackage')] == [(name,) for name in NAMES]
    assert sorted(call.arguments for call in standins.package_kit.calls(
        'Resolve')) == sorted((4, [name]) for name in NAMES)
    assert not standins.package_kit.calls('RemovePackages')
    check_alive(local_service, client, signals)


@pytest.mark.parametrize('known', [False, True], ids=['PackageKit', 'package manager'])
def test_name_of_a_megabyte(both, standins, service, client, signals, remove_and_wait, known):
    name = 'x' * (1024 * 1024)
    if known:
        standins.package_manager.configure('installs', 'nothing')
        standins.package_manager.answer('GetPackage', KNOWN)

    assert remove_and_wait([name]) == (True, '')
    asked = standins.package_manager.calls('Remove') if known else standins.package_kit.calls('Resolve')
    assert [call.arguments for call in asked] == [(name, {}) if known else (4, [name])]
    assert service.debugs()[0] == f'Uninstall "{name}" via {"ZARN" if known else "RPM"}'
    check_alive(service, client, signals)


def ends(service):
    """The ends of the removal of each name, by the log: None for a success, or the text of a failure."""
    ended = {}
    for match in filter(None, map(ENDED.fullmatch, service.log())):
        ended.setdefault(match['name'], []).append(match['text'])
    return ended


def wait_ends(processes, service, names):
    """Waits until each removal has succeeded at last, and returns all ends."""
    def all_ended():
        ended = ends(service)
        return all(None in ended.get(name, []) for name in names)

    processes.wait_until(all_ended, 'the end of every removal', 60)
    service.barrier()
    return ends(service)


def check_overrun(service, client, signals, ended):
    """All ends are on the bus, the count is too low for those that came twice, and the service goes on."""
    outcomes = [(text is None, text or '') for texts in ended.values() for text in texts]
    assert sorted(signals.arguments('removalFinished')) == sorted(outcomes)
    assert set(service.warnings()) <= {OUT_OF_SYNC}
    client.remove(['next'])
    assert signals.wait('removalFinished', len(outcomes) + 1) == (True, '')
    assert service.alive


def test_many_names_for_packagekit(both, processes, standins, service, client, signals):
    """The bus refuses some of the calls. Their removals fail and then end a second time, as every request does that
    never got to PackageKit. Known behaviour 25, 30."""
    client.remove(MANY)

    ended = wait_ends(processes, service, MANY)
    resolved = {call.arguments[1][0] for call in standins.package_kit.calls('Resolve')}
    assert ended == {name: [None] if name in resolved else [TOO_MANY, None] for name in MANY}
    check_overrun(service, client, signals, ended)


def test_removals_that_the_bus_refuses(both, processes, standins, service, client, signals):
    """The bus lets a connection wait for a number of replies. Beyond it neither the package manager nor PackageKit can
    be asked. Known behaviour 30."""
    manager = standins.package_manager
    manager.configure('installs', 'nothing')
    manager.answer('GetPackage', KNOWN, times=PENDING)
    manager.hang('Remove', PENDING)
    taken, refused = MANY[:PENDING], MANY[PENDING:PENDING + 100]

    client.remove(taken + refused)

    ended = wait_ends(processes, service, refused)
    assert ended == dict.fromkeys(refused, [TOO_MANY, None])
    assert [call.arguments for call in manager.calls('Remove')] == [(name, {}) for name in taken]
    assert not standins.package_kit.calls()
    manager.release('Remove')
    ended = wait_ends(processes, service, taken + refused)
    assert ended == {**dict.fromkeys(taken, [None]), **dict.fromkeys(refused, [TOO_MANY, None])}
    check_overrun(service, client, signals, ended)


def test_as_many_removals_side_by_side_as_the_bus_takes(both, standins, service, client, signals):
    """The bus limits the match rules of a connection. The same name given twice is removed twice. Known behaviour
    24."""
    standins.package_kit.script('Resolve', [package_found('a;1;noarch;installed'), finished()])
    standins.package_kit.script('RemovePackages', [error_code('Gone.'), finished(2)])

    client.remove(['a'] * 28)

    signals.wait('removalFinished', 28)
    assert set(signals.arguments('removalFinished')) == {(False, 'Gone.')}
    assert len(standins.package_kit.calls('RemovePackages')) == 28


@pytest.mark.parametrize('name', ['*', 'nat*', 'native-1.0', 'native-1.0-1', 'native-1.0-1.noarch', 'NATIVE', 'native ',
                                  'native\n', 'native;', '/usr/share/applications/native.desktop', ''], ids=short)
def test_launchers_are_looked_up_by_the_very_name(both, launcher_model, service, remove_and_wait, package, name):
    """Patterns, versions and files do not count as names."""
    install(package('native'))

    assert remove_and_wait([name]) == (True, '')
    assert not launcher_model.calls('updatingStarted')
    assert remove_and_wait(['native']) == (True, '')
    assert [call.arguments for call in launcher_model.calls('updatingStarted')] == \
        [('native', '', '', '/usr/share/applications/native.desktop')]


@pytest.mark.parametrize('locale', ['C.UTF-8', 'C'])
def test_launchers_are_looked_up_in_the_local_encoding(
        both, launcher_model, standins, program, client, signals, device, tmp_path, locale):
    """The toolkit uses UTF-8 under every locale; names of other bytes cannot be asked for."""
    for encoding in ('utf-8', 'latin-1'):
        install_handmade(write_launchers(tmp_path / 'foreign.rpm', 'größer'.encode(encoding), [f'{encoding}.desktop']))
    program.start(environment={'LC_ALL': locale})
    names = ['größer', 'gr\ufffd\ufffder', 'grÃ¶ÃŸer', 'gr??er', 'grer']

    client.remove(names)

    signals.wait('removalFinished', len(names))
    assert [(call.arguments[0], call.arguments[3]) for call in launcher_model.calls('updatingStarted')] == \
        [('größer', f'{APPLICATIONS}/utf-8.desktop')]
    assert sorted(call.arguments[1][0] for call in standins.package_kit.calls('Resolve')) == sorted(names)


def test_pattern_in_the_name_of_an_android_package_counts(both, launcher_model, service, client, signals):
    """It becomes part of the pattern of file names in the folder of launchers. Known behaviour 35."""
    launchers = [APPLICATIONS / f'zindro_launcher_{name}.desktop' for name in ('a', 'b', 'c')]
    outside = APPLICATIONS.parent / 'zindro_launcher_a.desktop'
    for path in (*launchers, outside):
        path.touch()
    try:
        client.remove(['ambrel-apk-[ab]', 'ambrel-apk-../zindro_launcher_a', 'ambrel-apk-'])
        signals.wait('removalFinished', 3)
    finally:
        for path in (*launchers, outside):
            path.unlink()
    assert [(call.arguments[0], call.arguments[3]) for call in launcher_model.calls('updatingStarted')] == [
        ('ambrel-apk-[ab]', str(launchers[0])), ('ambrel-apk-[ab]', str(launchers[1])),
        *(('ambrel-apk-', str(path)) for path in launchers)]


def test_damaged_database_has_no_launchers(both, launcher_model, service, client, signals, remove_and_wait, package,
                                           device):
    """The removal goes on."""
    install(package('native'))
    database = Path('/var/lib/rpm/rpmdb.sqlite')
    kept = database.read_bytes()
    try:
        database.write_bytes(b'no database' * 1000)
        client.remove(['native'])
        assert signals.wait('removalFinished') == (True, '')
    finally:
        database.write_bytes(kept)
    assert not launcher_model.calls('updatingStarted')
    assert remove_and_wait(['native']) == (True, '')
    assert len(launcher_model.calls('updatingStarted')) == 1
