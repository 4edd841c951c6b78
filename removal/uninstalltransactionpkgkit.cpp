// SPDX-FileCopyrightText: velmora-installationhandler contributors
// SPDX-License-Identifier: BSD-3-Clause

#include "uninstalltransactionpkgkit.h"

#include "packagekitaccess.h"
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
    if (!PackageKitAccess::prepare()) {
        // Whoever starts a removal counts it only after this, and its end must not come before.
        QTimer::singleShot(0, this, &UninstallTransactionPkgKit::handleUnreachable);
        return;
    }
    auto *resolve = PackageKit::Daemon::resolve(m_packageNames, PackageKit::Transaction::FilterInstalled);
    connect(resolve, &PackageKit::Transaction::finished, this, &UninstallTransactionPkgKit::slotResolveFinished);
    connect(resolve, &PackageKit::Transaction::errorCode, this, &UninstallTransactionPkgKit::slotResolveError);
    connect(resolve, &PackageKit::Transaction::package, this, &UninstallTransactionPkgKit::slotResolved);
}

// A removal that could not begin ends like one whose names could not be resolved.
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

// Runs after an error too, as long as this object still exists.
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
    if (!PackageKitAccess::prepare()) {
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

// An unsuccessful end is reported by the error before it, if there was one.
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
