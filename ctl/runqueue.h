// SPDX-FileCopyrightText: velmora-installationhandler contributors
// SPDX-License-Identifier: BSD-3-Clause

#pragma once

#include <QDBusConnection>
#include <QObject>

/**
 * The runs of this program that wait for an outcome, in the order in which they began. Each has its place in the bus's
 * queue for a name, until it ends.
 */
class RunQueue : public QObject
{
    Q_OBJECT

public:
    explicit RunQueue(const QDBusConnection &bus, QObject *parent = nullptr);

    /** Takes the last place. */
    void enter();

    /** Whether another run was in the queue before. A bus that refuses the name leaves that unknown, and it counts as
     * no. */
    bool hasEarlier() const { return m_hasEarlier; }

Q_SIGNALS:
    /** The bus has answered. */
    void entered();

private:
    QDBusConnection m_bus;
    bool m_hasEarlier = false;
};
