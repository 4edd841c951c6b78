#!/usr/bin/python3
# SPDX-FileCopyrightText: velmora-installationhandler contributors
# SPDX-License-Identifier: BSD-3-Clause
"""Calls a guarded service as somebody else: caller.py BUS SERVICE USER GROUP SUPPLEMENTARY-GROUP HOW

User and groups are numbers. HOW is one of these:

    stay    waits for the reply; prints the process and the reply
    leave   ends at once
    orphan  is a child of the process that the bus takes for the caller, and calls after that has ended; prints that
            process, the one that the bus tells (0 for none), and the reply
"""

import os
import sys

import dbus.bus
import dbus.exceptions
import dbus.lowlevel

CALL = ('/', 'test.Guarded', 'enter')
DAEMON = ('org.freedesktop.DBus', '/org/freedesktop/DBus', 'org.freedesktop.DBus')
DEADLINE = 20


def main(address, service, user, group, supplementary, how):
    os.setgroups([int(supplementary)])
    os.setgid(int(group))
    os.setuid(int(user))
    {'stay': stay, 'leave': leave, 'orphan': orphan}[how](address, service)


def stay(address, service):
    print(os.getpid())
    ask(dbus.bus.BusConnection(address), service)


def leave(address, service):
    bus = dbus.bus.BusConnection(address)
    bus.send_message(dbus.lowlevel.MethodCallMessage(service, *CALL))
    bus.flush()
    print(os.getpid(), flush=True)


def orphan(address, service):
    ended, tell_ended = os.pipe()
    done, tell_done = os.pipe()
    parent = os.fork()
    if not parent:
        bus = dbus.bus.BusConnection(address)
        parent = os.getpid()
        if not os.fork():
            os.read(ended, 1)
            print(parent, told_process(bus), sep='\n')
            ask(bus, service)
        os._exit(0)
    os.close(tell_done)
    os.waitpid(parent, 0)
    os.write(tell_ended, b'.')
    os.read(done, 1)


def told_process(bus):
    """The process that the bus tells of this connection. D-Bus 1.16 tells none that has ended."""
    try:
        return bus.call_blocking(*DAEMON, 'GetConnectionUnixProcessID', 's', [bus.get_unique_name()], timeout=DEADLINE)
    except dbus.exceptions.DBusException:
        return 0


def ask(bus, service):
    try:
        reply = bus.call_blocking(service, *CALL, '', (), timeout=DEADLINE)
    except dbus.exceptions.DBusException as error:
        reply = f'{error.get_dbus_name()}: {error.get_dbus_message()}'
    print(reply, flush=True)


if __name__ == '__main__':
    main(*sys.argv[1:])
