// SPDX-FileCopyrightText: velmora-installationhandler contributors
// SPDX-License-Identifier: BSD-3-Clause

#include "shownnotification.h"

#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusPendingCallWatcher>
#include <QDBusPendingReply>
#include <QDBusServiceWatcher>
#include <QStringList>

namespace {

// The name of the service is that of its interface too.
QString notifications()
{
    return QStringLiteral("org.freedesktop.Notifications");
}

QString path()
{
    return QStringLiteral("/org/freedesktop/Notifications");
}

}

ShownNotification::ShownNotification(QObject *parent)
    : QObject(parent)
{
    QDBusConnection bus = QDBusConnection::sessionBus();
    bus.connect(notifications(), path(), notifications(), QStringLiteral("NotificationClosed"), this,
                SLOT(handleClosed(uint)));
    const auto *watcher = new QDBusServiceWatcher(notifications(), bus, QDBusServiceWatcher::WatchForOwnerChange, this);
    connect(watcher, &QDBusServiceWatcher::serviceOwnerChanged, this, &ShownNotification::handleOwnerChanged);
}

ShownNotification::~ShownNotification() = default;

void ShownNotification::show(const QString &appIcon, const QString &title, const QString &body,
                             const QVariantMap &hints)
{
    QDBusMessage notify =
            QDBusMessage::createMethodCall(notifications(), path(), notifications(), QStringLiteral("Notify"));
    notify << QString() // application name
           << m_id << appIcon << title << body << QStringList() // actions
           << hints << -1; // the notification service's own expiry time

    // The replies to earlier calls no longer count.
    m_reply = std::make_unique<QDBusPendingCallWatcher>(QDBusConnection::sessionBus().asyncCall(notify));
    connect(m_reply.get(), &QDBusPendingCallWatcher::finished, this, &ShownNotification::handleReply);
}

void ShownNotification::handleReply()
{
    const QDBusPendingReply<uint> reply = *m_reply;
    m_id = reply.isError() ? 0 : reply.value();
}

void ShownNotification::handleClosed(uint id)
{
    if (m_id == id) {
        m_id = 0;
    }
}

void ShownNotification::handleOwnerChanged(const QString &, const QString &oldOwner)
{
    // The bus may just have started the service for a call whose reply is still to come.
    if (!oldOwner.isEmpty()) {
        m_reply.reset();
        m_id = 0;
    }
}
