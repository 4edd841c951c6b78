// SPDX-FileCopyrightText: velmora-installationhandler contributors
// SPDX-License-Identifier: BSD-3-Clause

#include "notification.h"

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
    qInfo("platform: publish %s", qUtf8Printable(m_body));
}
