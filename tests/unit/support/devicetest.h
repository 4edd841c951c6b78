// SPDX-FileCopyrightText: velmora-installationhandler contributors
// SPDX-License-Identifier: BSD-3-Clause

#pragma once

#include "testbus.h"

#include <QDBusConnection>
#include <QGuiApplication>
#include <QTest>

/** Runs the tests of a class, unattended, with a system bus and a session bus of their own. Only on a device. */
template<typename Test>
int runOnDevice(int argc, char **argv)
{
    requireDevice();
    const TestBus systemBus("DBUS_SYSTEM_BUS_ADDRESS");
    const TestBus sessionBus("DBUS_SESSION_BUS_ADDRESS");
    qputenv("QT_QPA_PLATFORM", "offscreen");
    qputenv("QT_QUICK_BACKEND", "software");
    qputenv("QML_DISABLE_DISK_CACHE", "1");

    QGuiApplication application(argc, argv);
    // The bus library holds a connection's signals back until the event loop has run.
    QDBusConnection::systemBus();
    QDBusConnection::sessionBus();
    QCoreApplication::processEvents();

    Test test;
    return QTest::qExec(&test, argc, argv);
}
