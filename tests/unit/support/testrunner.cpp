// SPDX-FileCopyrightText: velmora-installationhandler contributors
// SPDX-License-Identifier: BSD-3-Clause

#include "testrunner.h"

#include <QCoreApplication>
#include <QDBusConnection>
#include <QFile>
#include <QGuiApplication>
#include <QProcess>
#include <QTemporaryDir>

#include <cstdio>
#include <cstring>

namespace {

/** A message bus that lives as long as the object. Its address is in the environment variable. */
class TestBus
{
public:
    explicit TestBus(const char *variable)
    {
        m_daemon.setProcessChannelMode(QProcess::ForwardedErrorChannel);
        m_daemon.start("dbus-daemon"_s,
                       {QStringLiteral("--config-file=" SYSTEM_BUS_CONFIG), "--nofork"_s, "--nopidfile"_s,
                        "--address=unix:tmpdir=/tmp"_s, "--print-address"_s});
        while (!m_daemon.canReadLine()) {
            if (!m_daemon.waitForReadyRead(WaitLimit)) {
                qFatal("No bus: %s", qPrintable(m_daemon.errorString()));
            }
        }
        qputenv(variable, m_daemon.readLine().trimmed());
    }

    ~TestBus()
    {
        m_daemon.terminate();
        m_daemon.waitForFinished(WaitLimit);
    }

private:
    QProcess m_daemon;
};

// The tests overwrite files of the system.
void requireDevice()
{
    QFile machine("/etc/machine-id"_s);
    if (!machine.open(QIODevice::ReadOnly) || machine.readAll().trimmed() != "0123456789abcdef0123456789abcdef") {
        qFatal("This test overwrites files of the system; run it on a device: sandbox/device --no-buses -- PROGRAM");
    }
}

// The files and the language of the user who starts the tests make no difference.
void leaveUser(const QString &home)
{
    for (const char *variable : {"HOME", "XDG_RUNTIME_DIR"}) {
        qputenv(variable, QFile::encodeName(home));
    }
    for (const char *variable :
         {"LANGUAGE", "LC_ALL", "LC_MESSAGES", "XDG_CACHE_HOME", "XDG_CONFIG_HOME", "XDG_DATA_HOME"}) {
        qunsetenv(variable);
    }
    qputenv("LANG", "C.UTF-8");
}

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

int TestRegistration::run(int argc, char **argv) const
{
    const QTemporaryDir home;
    switch (m_place) {
    case TestPlace::Device:
        requireDevice();
        break;
    case TestPlace::Anywhere:
        leaveUser(home.path());
        break;
    }
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
