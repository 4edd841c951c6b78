// SPDX-FileCopyrightText: velmora-installationhandler contributors
// SPDX-License-Identifier: BSD-3-Clause

#include "packageremoval.h"

#include "desktopfiles.h"
#include "installationhandler.h"
#include "packagemanagercall.h"
#include "uninstalltransactionpkgkit.h"

#include <QDBusInterface>
#include <QDBusPendingCallWatcher>
#include <QDBusPendingReply>
#include <QDebug>
#include <QStandardPaths>
#include <QVariantMap>

PackageRemoval::PackageRemoval(InstallationHandler *handler, QDBusInterface *packageManager,
                               QDBusInterface *launcherModel)
    : m_handler(handler)
    , m_packageManager(packageManager)
    , m_launcherModel(launcherModel)
{
}

void PackageRemoval::removePackages(const QStringList &packageNames, bool keepUserdata)
{
    for (const QString &name : packageNames) {
        if (isZarnPackage(m_packageManager, name)) {
            removeViaZarn(name, keepUserdata);
        } else {
            removeViaRpm(name);
        }
    }
}

void PackageRemoval::removeViaZarn(const QString &name, bool keepUserdata)
{
    qDebug() << "Uninstall" << name << "via ZARN";
    const QString desktopFile =
            QStandardPaths::locate(QStandardPaths::ApplicationsLocation, name + QStringLiteral(".desktop"));
    if (!desktopFile.isEmpty()) {
        announceUpdate(name, desktopFile);
    }

    QVariantMap options;
    if (keepUserdata) {
        options.insert(QStringLiteral("KeepUserData"), true);
    }
    const QDBusPendingCall call = callPackageManager(m_packageManager, QStringLiteral("Remove"), name, options);
    auto *watcher = new QDBusPendingCallWatcher(call, m_handler);
    m_handler->beginTransaction();
    QObject::connect(watcher, &QDBusPendingCallWatcher::finished, m_handler,
                     [handler = m_handler, name](QDBusPendingCallWatcher *finished) {
                         const QDBusPendingReply<> reply = *finished;
                         handler->handleRemovalFinished(name, reply.isError() ? reply.error().message() : QString());
                         finished->deleteLater();
                     });
}

void PackageRemoval::removeViaRpm(const QString &name)
{
    qDebug() << "Uninstall" << name << "via RPM";
    const QStringList desktopFiles = findDesktopFiles(name);
    for (const QString &desktopFile : desktopFiles) {
        announceUpdate(name, desktopFile);
    }

    auto *transaction = new Package::UninstallTransactionPkgKit({name}, false);
    QObject::connect(transaction, &Package::Transaction::success, m_handler,
                     [handler = m_handler, name] { handler->handleRemovalFinished(name, QString()); });
    QObject::connect(
            transaction, &Package::Transaction::failure, m_handler,
            [handler = m_handler, name](const QString &details) { handler->handleRemovalFinished(name, details); });
    transaction->start();
    m_handler->beginTransaction();
}

// The home screen marks the launcher; whether it can is no concern of the removal.
void PackageRemoval::announceUpdate(const QString &name, const QString &desktopFile)
{
    m_launcherModel->call(QDBus::Block, QStringLiteral("updatingStarted"), name, QString(), QString(), desktopFile);
}
