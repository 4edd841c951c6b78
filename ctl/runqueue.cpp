// SPDX-FileCopyrightText: velmora-installationhandler contributors
// SPDX-License-Identifier: BSD-3-Clause

#include "runqueue.h"

#include "bus.h"

#include <QDBusMessage>
#include <QDBusPendingCallWatcher>
#include <QDBusPendingReply>

namespace {

// The reply of RequestName to everybody but the first.
constexpr uint InQueue = 2;

}

RunQueue::RunQueue(const QDBusConnection &bus, QObject *parent)
    : QObject(parent)
    , m_bus(bus)
{
}

void RunQueue::enter()
{
    QDBusMessage request = QDBusMessage::createMethodCall(
            QStringLiteral("org.freedesktop.DBus"), QStringLiteral("/org/freedesktop/DBus"),
            QStringLiteral("org.freedesktop.DBus"), QStringLiteral("RequestName"));
    request << QStringLiteral("org.velmoraos.installctl") << 0U; // no flags
    const auto *watcher = new QDBusPendingCallWatcher(m_bus.asyncCall(request), this);
    connect(watcher, &QDBusPendingCallWatcher::finished, this, [this](QDBusPendingCallWatcher *answered) {
        const QDBusPendingReply<uint> reply = *answered;
        if (Bus::hasAnswered(reply.error())) {
            m_hasEarlier = !reply.isError() && reply.value() == InQueue;
            emit entered();
        }
    });
}
