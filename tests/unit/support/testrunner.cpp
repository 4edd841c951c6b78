// SPDX-FileCopyrightText: velmora-installationhandler contributors
// SPDX-License-Identifier: BSD-3-Clause

#include "testrunner.h"

#include "testbus.h"

#include <QCoreApplication>
#include <QDBusConnection>
#include <QGuiApplication>

#include <cstdio>
#include <cstring>

namespace {

const TestRegistration *firstRegistration = nullptr;

int runInCoreApplication(TestRegistration::Run run, int argc, char **argv)
{
    for (const char *variable : {"DBUS_SYSTEM_BUS_ADDRESS", "DBUS_SESSION_BUS_ADDRESS"}) {
        qputenv(variable, "unix:path=/nonexistent/bus");
    }
    const QCoreApplication application(argc, argv);
    return run(argc, argv);
}

int runInGuiApplication(TestRegistration::Run run, int argc, char **argv)
{
    const TestBus systemBus("DBUS_SYSTEM_BUS_ADDRESS");
    const TestBus sessionBus("DBUS_SESSION_BUS_ADDRESS");
    qputenv("QT_QPA_PLATFORM", "offscreen");
    qputenv("QT_QUICK_BACKEND", "software");
    qputenv("QML_DISABLE_DISK_CACHE", "1");

    const QGuiApplication application(argc, argv);
    // Qt holds a new connection's signals back until the event loop has run.
    QDBusConnection::systemBus();
    QDBusConnection::sessionBus();
    QCoreApplication::processEvents();
    return run(argc, argv);
}

}

TestRegistration::TestRegistration(const char *name, TestApplication application, Run function)
    : m_name(name)
    , m_application(application)
    , m_run(function)
    , m_next(firstRegistration)
{
    firstRegistration = this;
}

const TestRegistration *TestRegistration::first()
{
    return firstRegistration;
}

int TestRegistration::run(int argc, char **argv) const
{
    requireDevice();
    switch (m_application) {
    case TestApplication::None:
        break;
    case TestApplication::Core:
        return runInCoreApplication(m_run, argc, argv);
    case TestApplication::Gui:
        return runInGuiApplication(m_run, argc, argv);
    }
    return m_run(argc, argv);
}

int main(int argc, char **argv)
{
    for (auto test = TestRegistration::first(); argc > 1 && test; test = test->next()) {
        if (std::strcmp(test->name(), argv[1]) == 0) {
            argv[1] = argv[0];
            return test->run(argc - 1, argv + 1);
        }
    }
    std::fprintf(stderr, "Usage: %s CLASS [ARGUMENT OF QT TEST]...\nClasses:\n", argv[0]);
    for (auto test = TestRegistration::first(); test; test = test->next()) {
        std::fprintf(stderr, "  %s\n", test->name());
    }
    return 2;
}
