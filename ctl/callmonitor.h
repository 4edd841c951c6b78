// SPDX-FileCopyrightText: velmora-installationhandler contributors
// SPDX-License-Identifier: BSD-3-Clause

#pragma once

#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusVirtualObject>
#include <QString>

/**
 * Sees the calls of all programs to the installation handler. The session bus lets its own user do this, unless it is
 * configured otherwise.
 */
class CallMonitor : public QDBusVirtualObject
{
    Q_OBJECT

public:
    /** bus: a connection that serves no other purpose. */
    explicit CallMonitor(const QDBusConnection &bus, QObject *parent = nullptr);

    /** Begins to see calls. */
    void start();

    QString introspect(const QString &path) const override;
    bool handleMessage(const QDBusMessage &message, const QDBusConnection &connection) override;

Q_SIGNALS:
    /** The bus has allowed or refused it. */
    void started();
    /** A program other than this one calls a method. */
    void called(const QDBusMessage &message);

private:
    QDBusConnection m_bus;
};
