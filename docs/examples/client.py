# SPDX-FileCopyrightText: velmora-installationhandler contributors
# SPDX-License-Identifier: BSD-3-Clause

import sys

from gi.repository import Gio, GLib

NAME = 'org.velmoraos.installationhandler'
PATH = '/org/velmoraos/installationhandler'
FLAGS = Gio.DBusProxyFlags.DO_NOT_LOAD_PROPERTIES | Gio.DBusProxyFlags.DO_NOT_AUTO_START_AT_CONSTRUCTION


def request(method, words, signal, outcomes):
    """Makes a request, waits for its outcomes, and returns the texts of what failed."""
    errors = []
    replied = False
    loop = GLib.MainLoop()

    def abandon(error_string):
        """An error that ends the request. Nothing counts any more after its end."""
        if loop.is_running():
            errors.append(error_string)
            loop.quit()

    def on_signal(_handler, _sender, name, arguments):
        nonlocal outcomes
        if name != signal or not loop.is_running():
            return
        success, error_string = arguments.unpack()
        if not success:
            errors.append(error_string)
        outcomes -= 1
        if outcomes == 0:
            loop.quit()

    def check_owner(*_):
        if replied and handler.get_name_owner() is None:
            abandon('The service has ended.')

    def on_reply(handler, result):
        nonlocal replied
        try:
            handler.call_finish(result)
        except GLib.Error as error:
            abandon(error.message)
        replied = True
        check_owner()

    handler = Gio.DBusProxy.new_for_bus_sync(Gio.BusType.SESSION, FLAGS, None, NAME, PATH, NAME, None)
    handler.connect('g-signal', on_signal)
    handler.connect('notify::g-name-owner', check_owner)
    # Removals may reply late. If the service ends before its reply, the bus answers with an error.
    handler.call(method, GLib.Variant('(as)', (words,)), Gio.DBusCallFlags.NONE, GLib.MAXINT32, None, on_reply)
    loop.run()
    return errors


def main(command='', *words):
    if command == 'install' and words:
        errors = request('installFiles', words, 'installFinished', 1)
    elif command == 'remove' and words:
        errors = request('removePackages', words, 'removalFinished', len(words))
    else:
        sys.exit('usage: client.py install FILE... | remove NAME...')
    print('\n'.join(errors) or 'Done.')
    return bool(errors)


if __name__ == '__main__':
    sys.exit(main(*sys.argv[1:]))
