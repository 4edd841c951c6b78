// SPDX-FileCopyrightText: velmora-installationhandler contributors
// SPDX-License-Identifier: BSD-3-Clause

#include "packagemanagercall.h"

#include "systembus.h"

#include <QDBusConnection>
#include <QDBusError>
#include <QDBusInterface>

// QtDBus makes no call at all on a bus that was never there, and a watcher of
// that call would never finish. A call that has failed takes its place.
QDBusPendingCall callPackageManager(QDBusInterface *packageManager, const QString &method, const QString &argument,
                                    const QVariantMap &options)
{
    if (!packageManager->connection().isConnected()) {
        return QDBusPendingCall::fromError(QDBusError(QDBusError::Disconnected, SystemBus::NotConnected));
    }
    return packageManager->asyncCall(method, argument, options);
}
