# SPDX-FileCopyrightText: velmora-installationhandler contributors
# SPDX-License-Identifier: BSD-3-Clause
"""goingcaller.py SOCKET PATH [PROGRAM ARGUMENT...]: asks for the removal of a launcher's application, and then ends at once or
becomes the program. Its connection to the bus stays, with a child process that ends with the bus."""

import os
import socket
import sys

from gi.repository import Gio, GLib


def send(bus, serial, target, member, arguments=None):
    message = Gio.DBusMessage.new_method_call(*target, member)
    if arguments:
        message.set_body(arguments)
    message.set_serial(serial)
    bus.sendall(message.to_blob(Gio.DBusCapabilityFlags.NONE))


def main():
    bus = socket.socket(socket.AF_UNIX)
    bus.connect(sys.argv[1])
    bus.sendall(b'\0AUTH EXTERNAL ' + str(os.getuid()).encode().hex().encode() + b'\r\n')
    assert bus.recv(4096).startswith(b'OK ')
    bus.sendall(b'BEGIN\r\n')
    send(bus, 1, ('org.freedesktop.DBus', '/org/freedesktop/DBus', 'org.freedesktop.DBus'), 'Hello')
    assert bus.recv(4096)
    if os.fork() == 0:
        while bus.recv(4096):
            pass
    else:
        send(bus, 2, ('org.velmoraos.installationhandler', '/org/velmoraos/installationhandler',
                      'org.velmoraos.installationhandler'), 'removePackageByDesktopFile',
             GLib.Variant('(s)', (sys.argv[2],)))
        if sys.argv[3:]:
            os.execv(sys.argv[3], sys.argv[3:])


main()
