// SPDX-FileCopyrightText: velmora-installationhandler contributors
// SPDX-License-Identifier: BSD-3-Clause

#include "testbus.h"

#include <QFile>

TestBus::TestBus(const char *variable)
{
    m_daemon.setProcessChannelMode(QProcess::ForwardedErrorChannel);
    m_daemon.start(QStringLiteral("dbus-daemon"),
                   {QStringLiteral("--config-file=" SYSTEM_BUS_CONFIG), QStringLiteral("--nofork"),
                    QStringLiteral("--nopidfile"), QStringLiteral("--address=unix:tmpdir=/tmp"),
                    QStringLiteral("--print-address")});
    while (!m_daemon.canReadLine()) {
        if (!m_daemon.waitForReadyRead(20000)) {
            qFatal("No bus: %s", qPrintable(m_daemon.errorString()));
        }
    }
    qputenv(variable, m_daemon.readLine().trimmed());
}

TestBus::~TestBus()
{
    m_daemon.terminate();
    m_daemon.waitForFinished(5000);
}

void requireDevice()
{
    QFile machine(QStringLiteral("/etc/machine-id"));
    if (!machine.open(QIODevice::ReadOnly) || machine.readAll().trimmed() != "0123456789abcdef0123456789abcdef") {
        qFatal("This test overwrites files of the system; run it on a device: sandbox/device --no-buses -- PROGRAM");
    }
}
