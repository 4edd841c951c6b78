// SPDX-FileCopyrightText: velmora-installationhandler contributors
// SPDX-License-Identifier: BSD-3-Clause

// The floor of a removal through PackageKit: a bare service that asks its
// library for the same two transactions and listens to the same signals.

#include "packagekitremoval.h"

#include "floornames.h"

#include <PackageKit/Daemon>

#include <QCoreApplication>
#include <QDBusConnection>

using PackageKit::Daemon;
using PackageKit::Transaction;

void BarePackageKitRemoval::removePackages(const QStringList &packageNames, bool keepUserdata)
{
    Q_UNUSED(keepUserdata)

    m_ids.clear();
    const Transaction *resolve = Daemon::resolve(packageNames, Transaction::FilterInstalled);
    connect(resolve, &Transaction::finished, this, &BarePackageKitRemoval::removeResolved);
    connect(resolve, &Transaction::errorCode, this, &BarePackageKitRemoval::reportError);
    connect(resolve, &Transaction::package, this, &BarePackageKitRemoval::takeResolved);
}

void BarePackageKitRemoval::takeResolved(Transaction::Info info, const QString &id, const QString &summary)
{
    Q_UNUSED(info)
    Q_UNUSED(summary)

    m_ids.append(id);
}

void BarePackageKitRemoval::removeResolved()
{
    const Transaction *removal = Daemon::removePackages(m_ids, false, false, Transaction::TransactionFlagOnlyTrusted);
    connect(removal, &Transaction::finished, this, &BarePackageKitRemoval::reportEnd);
    connect(removal, &Transaction::errorCode, this, &BarePackageKitRemoval::reportError);
    connect(removal, &Transaction::itemProgress, this, &BarePackageKitRemoval::ignoreProgress);
}

void BarePackageKitRemoval::reportError(Transaction::Error error, const QString &details)
{
    Q_UNUSED(error)

    emit removalFinished(false, details);
}

void BarePackageKitRemoval::reportEnd(Transaction::Exit status, uint runtime)
{
    Q_UNUSED(runtime)

    emit removalFinished(status == Transaction::ExitSuccess, QString());
}

void BarePackageKitRemoval::ignoreProgress(const QString &id, Transaction::Status status, uint percentage)
{
    Q_UNUSED(id)
    Q_UNUSED(status)
    Q_UNUSED(percentage)
}

int main(int argc, char **argv)
{
    QCoreApplication application(argc, argv);
    BarePackageKitRemoval removal;
    QDBusConnection bus = QDBusConnection::sessionBus();
    bus.registerObject(FloorNames::Path, &removal, QDBusConnection::ExportAllContents);
    return bus.registerService(FloorNames::Service) ? QCoreApplication::exec() : 1;
}
