// SPDX-FileCopyrightText: velmora-installationhandler contributors
// SPDX-License-Identifier: BSD-3-Clause

#include "packagemanagercall.h"

#include <QDBusConnection>
#include <QDBusError>
#include <QDBusInterface>

// QtDBus makes no call at all on a bus that was never there, and whoever watches
// it would never hear of an end: it is replaced by a call that has failed.
QDBusPendingCall callPackageManager(QDBusInterface *packageManager, const QString &method, const QString &argument,
                                    const QVariantMap &options)
{
    if (!packageManager->connection().isConnected()) {
        return QDBusPendingCall::fromError(
                QDBusError(QDBusError::Disconnected, QStringLiteral("Not connected to the system bus")));
    }
    return packageManager->asyncCall(method, argument, options);
}
