// SPDX-FileCopyrightText: velmora-installationhandler contributors
// SPDX-License-Identifier: BSD-3-Clause

#include "packagemanagercall.h"

#include "systembus.h"
#include "zarnpackage.h"

#include <QDBusConnection>
#include <QDBusError>
#include <QDBusInterface>
#include <QDBusReply>

// QtDBus makes no call at all on a bus that was never there, and whoever watches
// it would never hear of an end: it is replaced by a call that has failed.
QDBusPendingCall callPackageManager(QDBusInterface *packageManager, const QString &method, const QString &argument,
                                    const QVariantMap &options)
{
    if (!packageManager->connection().isConnected()) {
        return QDBusPendingCall::fromError(QDBusError(QDBusError::Disconnected, SystemBus::NotConnected));
    }
    return packageManager->asyncCall(method, argument, options);
}

// Any error means that it doesn't: an absent or silent package manager removes
// nothing, and whoever else may know the package is asked instead.
bool isZarnPackage(QDBusInterface *packageManager, const QString &package)
{
    const QDBusReply<ZarnPackage> reply = packageManager->call(QDBus::Block, QStringLiteral("GetPackage"), package);
    return reply.isValid();
}
