// SPDX-FileCopyrightText: velmora-installationhandler contributors
// SPDX-License-Identifier: BSD-3-Clause

#include "callercheck.h"

#include <QDBusConnection>
#include <QDBusConnectionInterface>
#include <QDBusContext>
#include <QDBusError>
#include <QDBusMessage>
#include <QFileInfo>

bool CallerCheck::isPrivileged(const QDBusContext &context)
{
    const uint pid = context.connection().interface()->servicePid(context.message().service());
    const QFileInfo process(QStringLiteral("/proc/%1").arg(pid));
    if (process.group() == QLatin1String("privileged") || process.owner() == QLatin1String("root")) {
        return true;
    }
    // The text names the group only, although the user was looked at too (Known behaviour 12).
    context.sendErrorReply(QDBusError::AccessDenied, QStringLiteral("PID %1 is not in privileged group").arg(pid));
    return false;
}
