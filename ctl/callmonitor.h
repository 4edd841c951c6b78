// SPDX-FileCopyrightText: velmora-installationhandler contributors
// SPDX-License-Identifier: BSD-3-Clause

#pragma once

#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusVirtualObject>
#include <QString>

/**
 * Sees the calls of all programs to the installation handler, by a connection of its own that is a monitor of the bus.
 * The session bus lets its own user do this, unless it is configured otherwise.
 */
class CallMonitor : public QDBusVirtualObject
{
    Q_OBJECT

public:
    explicit CallMonitor(QObject *parent = nullptr);
    ~CallMonitor() override;

    /** Begins to see calls, if the bus allows it. Blocks until the bus has answered. */
    void start();

    QString introspect(const QString &path) const override;
    bool handleMessage(const QDBusMessage &message, const QDBusConnection &connection) override;

Q_SIGNALS:
    /** A program other than this one calls a method. */
    void called(const QDBusMessage &message);
};
