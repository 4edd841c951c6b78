// SPDX-FileCopyrightText: velmora-installationhandler contributors
// SPDX-License-Identifier: BSD-3-Clause

#pragma once

#include <QByteArray>
#include <QDBusConnection>
#include <QProcess>

/**
 * Reads along everything that a bus carries, in another process: also what reaches no
 * peer, such as calls of absent services and subscriptions to signals.
 */
class BusMonitor
{
public:
    /** Begins to read along on the bus at address, to which bus is a connection; nothing that follows is missed. */
    BusMonitor(const QDBusConnection &bus, const QByteArray &address);
    ~BusMonitor();

    /**
     * All messages so far in the order in which the bus carried them, as dbus-monitor
     * prints them: a line for the message and an indented line for each argument.
     */
    QByteArray traffic();

private:
    Q_DISABLE_COPY_MOVE(BusMonitor)

    void readUntil(const QByteArray &mark);

    QDBusConnection m_bus;
    QProcess m_process;
    QByteArray m_traffic;
    int m_marks = 0;
};
