// SPDX-FileCopyrightText: velmora-installationhandler contributors
// SPDX-License-Identifier: BSD-3-Clause

#include "notification.h"

#include <QDBusConnection>
#include <QDBusMessage>

Notification::Notification(QObject *parent)
    : QObject(parent)
{
}

void Notification::setUrgency(Urgency urgency)
{
    m_urgency = urgency;
}

void Notification::setIsTransient(bool isTransient)
{
    m_isTransient = isTransient;
}

void Notification::setAppIcon(const QString &appIcon)
{
    m_appIcon = appIcon;
}

QString Notification::body() const
{
    return m_body;
}

void Notification::setBody(const QString &body)
{
    m_body = body;
}

void Notification::publish()
{
    const QString service = QStringLiteral("org.freedesktop.Notifications");
    const QVariantMap hints{
            // The notification service takes no other type than a byte.
            {QStringLiteral("urgency"), QVariant::fromValue(uchar(m_urgency))},
            {QStringLiteral("transient"), m_isTransient},
    };

    QDBusMessage notify = QDBusMessage::createMethodCall(service, QStringLiteral("/org/freedesktop/Notifications"),
                                                         service, QStringLiteral("Notify"));
    notify << QString() // application name
           << uint(0) // replaces no earlier notification
           << m_appIcon << QString() // summary
           << m_body << QStringList() // actions
           << hints << -1; // the notification service's own expiry time

    // send() asks for no reply, so there is nothing to wait for.
    QDBusConnection::sessionBus().send(notify);
}
