// SPDX-FileCopyrightText: velmora-installationhandler contributors
// SPDX-License-Identifier: BSD-3-Clause

#include "notification.h"

#include "shownnotification.h"

#include <aboutsettings.h>

#include <QCoreApplication>
#include <QVariantMap>

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
    const QVariantMap hints{
            // The notification service takes no other type than a byte.
            {QStringLiteral("urgency"), QVariant::fromValue(uchar(m_urgency))},
            {QStringLiteral("transient"), m_isTransient},
            // A standard name, while the application's icon may be in the platform's own theme only.
            {QStringLiteral("image-path"), QStringLiteral("dialog-warning")},
    };

    // Notifications are shown for longer than their objects live.
    static auto *const shown = new ShownNotification(QCoreApplication::instance());
    shown->show(m_appIcon, AboutSettings().baseOperatingSystemName(), m_body, hints);
}
