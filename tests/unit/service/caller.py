#!/usr/bin/python3
# SPDX-FileCopyrightText: velmora-installationhandler contributors
# SPDX-License-Identifier: BSD-3-Clause
"""Calls a guarded service as somebody else: caller.py BUS SERVICE USER GROUP SUPPLEMENTARY-GROUP HOW

HOW is `stay` (wait for the reply and print the process and the reply), `leave` (end at once) or `orphan` (as `stay`, in
a child of the process that the bus takes for the caller, after that has ended). User and groups are numbers.
"""

import os
import sys

import dbus.bus
import dbus.exceptions
import dbus.lowlevel

CALL = ('/', 'test.Guarded', 'enter')
DEADLINE = 20


def main(address, service, user, group, supplementary, how):
    os.setgroups([int(supplementary)])
    os.setgid(int(group))
    os.setuid(int(user))
    {'stay': stay, 'leave': leave, 'orphan': orphan}[how](address, service)


def stay(address, service):
    ask(dbus.bus.BusConnection(address), service, os.getpid())


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
            ask(bus, service, parent)
        os._exit(0)
    os.close(tell_done)
    os.waitpid(parent, 0)
    os.write(tell_ended, b'.')
    os.read(done, 1)


def ask(bus, service, process):
    try:
        reply = bus.call_blocking(service, *CALL, '', (), timeout=DEADLINE)
    except dbus.exceptions.DBusException as error:
        reply = f'{error.get_dbus_name()}: {error.get_dbus_message()}'
    print(process, reply, sep='\n', flush=True)


if __name__ == '__main__':
    main(*sys.argv[1:])
