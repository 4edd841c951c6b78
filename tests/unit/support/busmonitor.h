// SPDX-FileCopyrightText: velmora-installationhandler contributors
// SPDX-License-Identifier: BSD-3-Clause

#pragma once

#include "texts.h"
#include "waitfor.h"

#include <QByteArray>
#include <QDBusConnection>
#include <QDBusMessage>
#include <QDeadlineTimer>
#include <QProcess>

/**
 * Reads all messages of a bus, in another process. Among them are messages that reach no peer, such as calls of absent
 * services and subscriptions to signals.
 */
class BusMonitor
{
public:
    /** Begins to read on the bus at address, to which bus is a connection. No message that follows is missed. */
    BusMonitor(const QDBusConnection &bus, const QByteArray &address)
        : m_bus(bus)
    {
        m_process.setProcessChannelMode(QProcess::ForwardedErrorChannel);
        m_process.start("dbus-monitor"_s, {"--address"_s, QString::fromLocal8Bit(address)});
        // The bus takes the name away from a connection once that is a monitor.
        readUntil("member=NameLost");
    }

    ~BusMonitor()
    {
        m_process.terminate();
        m_process.waitForFinished(WaitLimit);
    }

    /**
     * All messages so far in the order of the bus, as dbus-monitor prints them: a line for the message and an indented
     * line for each argument.
     */
    QByteArray traffic()
    {
        const QString path = "/mark/%1"_s.arg(++m_marks);
        const QDBusMessage mark =
                QDBusMessage::createMethodCall("org.freedesktop.DBus"_s, path, "org.freedesktop.DBus.Peer"_s, "Ping"_s);
        m_bus.call(mark, QDBus::Block, WaitLimit);
        readUntil("path=" + path.toLatin1() + ';');
        return m_traffic;
    }

private:
    Q_DISABLE_COPY_MOVE(BusMonitor)

    void readUntil(const QByteArray &mark)
    {
        const QDeadlineTimer deadline(WaitLimit);
        while (!m_traffic.contains(mark)) {
            if (!m_process.waitForReadyRead(int(deadline.remainingTime()))) {
                qFatal("dbus-monitor showed no \"%s\": %s", mark.constData(), qPrintable(m_process.errorString()));
            }
            m_traffic += m_process.readAll();
        }
    }

    QDBusConnection m_bus;
    QProcess m_process;
    QByteArray m_traffic;
    int m_marks = 0;
};
