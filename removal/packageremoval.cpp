// SPDX-FileCopyrightText: velmora-installationhandler contributors
// SPDX-License-Identifier: BSD-3-Clause

#include "packageremoval.h"

#include "desktopfiles.h"
#include "packagemanagercall.h"
#include "uninstalltransactionpkgkit.h"

#include <QDBusInterface>
#include <QDBusPendingCallWatcher>
#include <QDBusPendingReply>
#include <QDebug>
#include <QStandardPaths>
#include <QVariantMap>

PackageRemoval::PackageRemoval(const IsZarnPackage &isZarnPackage, QDBusInterface *packageManager,
                               QDBusInterface *launcherModel, QObject *parent)
    : QObject(parent)
    , m_isZarnPackage(isZarnPackage)
    , m_packageManager(packageManager)
    , m_launcherModel(launcherModel)
{
}

void PackageRemoval::removePackages(const QStringList &packageNames, bool keepUserdata)
{
    for (const QString &name : packageNames) {
        if (m_isZarnPackage(name)) {
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
    auto *watcher = new QDBusPendingCallWatcher(call, parent());
    emit started();
    connect(watcher, &QDBusPendingCallWatcher::finished, this, [this, name](QDBusPendingCallWatcher *answered) {
        const QDBusPendingReply<> reply = *answered;
        emit finished(name, reply.isError() ? reply.error().message() : QString());
        answered->deleteLater();
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
    connect(transaction, &Package::Transaction::success, this, [this, name] { emit finished(name, QString()); });
    connect(transaction, &Package::Transaction::failure, this,
            [this, name](const QString &details) { emit finished(name, details); });
    transaction->start();
    emit started();
}

// The answer is ignored: a removal does not depend on the home screen.
void PackageRemoval::announceUpdate(const QString &name, const QString &desktopFile)
{
    m_launcherModel->call(QDBus::Block, QStringLiteral("updatingStarted"), name, QString(), QString(), desktopFile);
}
