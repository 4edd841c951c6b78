// SPDX-FileCopyrightText: velmora-installationhandler contributors
// SPDX-License-Identifier: BSD-3-Clause

#include "uninstalltransactionpkgkit.h"

#include "packagekitsignals.h"
#include "systembus.h"

#include <PackageKit/Daemon>

#include <QDebug>
#include <QTimer>

using namespace Package;

UninstallTransactionPkgKit::UninstallTransactionPkgKit(const QStringList &packageNames, bool autoremove)
    : m_packageNames(packageNames)
    , m_autoremove(autoremove)
{
}

UninstallTransactionPkgKit::~UninstallTransactionPkgKit()
{
    qDebug() << "deleting UninstallTransactionPkgKit";
}

void UninstallTransactionPkgKit::start()
{
    qDebug() << "UninstallTransactionPkgKit::start:" << m_packageNames;
    if (!SystemBus::isConnected()) {
        // Not at once: the caller counts the removal only after start() has returned.
        QTimer::singleShot(0, this, &UninstallTransactionPkgKit::handleUnreachable);
        return;
    }
    subscribeToPackageKitSignals();
    auto *resolve = PackageKit::Daemon::resolve(m_packageNames, PackageKit::Transaction::FilterInstalled);
    connect(resolve, &PackageKit::Transaction::finished, this, &UninstallTransactionPkgKit::slotResolveFinished);
    connect(resolve, &PackageKit::Transaction::errorCode, this, &UninstallTransactionPkgKit::slotResolveError);
    connect(resolve, &PackageKit::Transaction::package, this, &UninstallTransactionPkgKit::slotResolved);
}

// A removal without a system bus ends like one whose names could not be resolved.
void UninstallTransactionPkgKit::handleUnreachable()
{
    slotResolveError(PackageKit::Transaction::ErrorInternalError, SystemBus::NotConnected);
}

void UninstallTransactionPkgKit::slotResolved(PackageKit::Transaction::Info info, const QString &pkgId,
                                              const QString &summary)
{
    qDebug() << "Resolved:" << info << pkgId << summary;
    m_packageIds.append(pkgId);
}

void UninstallTransactionPkgKit::slotResolveError(PackageKit::Transaction::Error error, const QString &details)
{
    qDebug() << "Resolve Error:" << m_packageNames << error << details;
    giveUp(details);
}

// Also runs after an error, if it comes before the deferred deletion.
void UninstallTransactionPkgKit::slotResolveFinished(PackageKit::Transaction::Exit status, uint runtime)
{
    Q_UNUSED(status)
    Q_UNUSED(runtime)

    if (m_packageIds.isEmpty()) {
        end();
        emit success();
        emit finished();
    } else {
        uninstall(m_packageIds);
    }
}

void UninstallTransactionPkgKit::uninstall(const QStringList &ids)
{
    // removePackages() connects to D-Bus signals, and QtDBus ends the process if
    // this happens on a bus that has been lost.
    if (!SystemBus::isConnected()) {
        slotUninstallError(PackageKit::Transaction::ErrorInternalError, SystemBus::NotConnected);
        return;
    }
    m_transaction = PackageKit::Daemon::removePackages(ids, false, m_autoremove,
                                                       PackageKit::Transaction::TransactionFlagOnlyTrusted);
    connect(m_transaction, &PackageKit::Transaction::finished, this,
            &UninstallTransactionPkgKit::slotUninstallFinished);
    connect(m_transaction, &PackageKit::Transaction::errorCode, this, &UninstallTransactionPkgKit::slotUninstallError);
    connect(m_transaction, &PackageKit::Transaction::itemProgress, this,
            &UninstallTransactionPkgKit::slotUninstallProgress);
}

void UninstallTransactionPkgKit::slotUninstallProgress(const QString &itemID, PackageKit::Transaction::Status status,
                                                       uint percentage)
{
    Q_UNUSED(itemID)
    Q_UNUSED(status)

    emit progress(static_cast<int>(percentage));
}

void UninstallTransactionPkgKit::slotUninstallError(PackageKit::Transaction::Error error, const QString &details)
{
    qDebug() << "Uninstall Error:" << m_packageNames << error << details;
    giveUp(details);
}

// An unsuccessful end reports nothing: the error before it has done so.
void UninstallTransactionPkgKit::slotUninstallFinished(PackageKit::Transaction::Exit status, uint runtime)
{
    qDebug() << "slotUninstallFinished:" << m_packageNames << status << runtime;
    end();
    if (status == PackageKit::Transaction::ExitSuccess) {
        emit success();
        emit finished();
    }
}

void UninstallTransactionPkgKit::giveUp(const QString &details)
{
    qDebug() << "void Package::UninstallTransactionPkgKit::giveUp(const QString&)" << details;
    end();
    emit failure(details);
    emit finished();
}

void UninstallTransactionPkgKit::end()
{
    m_transaction = nullptr;
    deleteLater();
}
