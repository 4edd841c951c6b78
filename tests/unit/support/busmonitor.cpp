// SPDX-FileCopyrightText: velmora-installationhandler contributors
// SPDX-License-Identifier: BSD-3-Clause

#include "busmonitor.h"

#include <QDBusMessage>
#include <QDeadlineTimer>

BusMonitor::BusMonitor(const QDBusConnection &bus, const QByteArray &address)
    : m_bus(bus)
{
    m_process.setProcessChannelMode(QProcess::ForwardedErrorChannel);
    m_process.start(QStringLiteral("dbus-monitor"), {QStringLiteral("--address"), QString::fromLocal8Bit(address)});
    // The bus takes the name away from a connection once that is a monitor.
    readUntil("member=NameLost");
}

BusMonitor::~BusMonitor()
{
    m_process.terminate();
    m_process.waitForFinished(5000);
}

QByteArray BusMonitor::traffic()
{
    const QString path = QStringLiteral("/mark/%1").arg(++m_marks);
    const QDBusMessage mark =
            QDBusMessage::createMethodCall(QStringLiteral("org.freedesktop.DBus"), path,
                                           QStringLiteral("org.freedesktop.DBus.Peer"), QStringLiteral("Ping"));
    m_bus.call(mark, QDBus::Block, 5000);
    readUntil("path=" + path.toLatin1() + ';');
    return m_traffic;
}

void BusMonitor::readUntil(const QByteArray &mark)
{
    const QDeadlineTimer deadline(20000);
    while (!m_traffic.contains(mark)) {
        if (!m_process.waitForReadyRead(int(deadline.remainingTime()))) {
            qFatal("dbus-monitor showed no \"%s\": %s", mark.constData(), qPrintable(m_process.errorString()));
        }
        m_traffic += m_process.readAll();
    }
}
