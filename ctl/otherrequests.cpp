// SPDX-FileCopyrightText: velmora-installationhandler contributors
// SPDX-License-Identifier: BSD-3-Clause

#include "otherrequests.h"

#include "service.h"

OtherRequests::OtherRequests(const Service *service, QObject *parent)
    : QObject(parent)
{
    connect(service, &Service::ownerChanged, this, [this](const QString &oldOwner) {
        // A service that is started receives the calls that were made before.
        if (!oldOwner.isEmpty()) {
            forget();
        }
    });
}

void OtherRequests::take(const QDBusMessage &call)
{
    if (call.member() == QLatin1String("installFiles")) {
        const bool sdkMode = call.arguments().value(1).toBool();
        m_hasInstallation = true;
        m_hasSilentInstallation |= sdkMode;
        // Sdk mode begins with removals.
        m_hasRemoval |= sdkMode;
    } else {
        m_hasRemoval = true;
    }
}

void OtherRequests::assumeAll()
{
    m_hasInstallation = true;
    m_hasSilentInstallation = true;
    m_hasRemoval = true;
}

void OtherRequests::forget()
{
    m_hasInstallation = false;
    m_hasSilentInstallation = false;
    m_hasRemoval = false;
}
