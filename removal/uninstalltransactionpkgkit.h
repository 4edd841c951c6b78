// SPDX-FileCopyrightText: velmora-installationhandler contributors
// SPDX-License-Identifier: BSD-3-Clause

#pragma once

#include "transaction.h"

#include <PackageKit/Transaction>

#include <QStringList>

namespace Package {

/**
 * Removes packages by name through PackageKit. It resolves the names among the
 * installed packages and then removes the packages found, without dependants.
 * A name that is not installed counts as removed.
 *
 * Nothing is reported if the removal ends unsuccessfully without an error, and
 * two ends if PackageKit goes on after an error: Known behaviour 20, 25, 28.
 */
class UninstallTransactionPkgKit : public Transaction
{
    Q_OBJECT

public:
    /** autoremove: also remove packages that only these packages needed. */
    UninstallTransactionPkgKit(const QStringList &packageNames, bool autoremove);
    ~UninstallTransactionPkgKit() override;

    void start() override;

private Q_SLOTS:
    void slotResolveFinished(PackageKit::Transaction::Exit status, uint runtime);
    void slotResolveError(PackageKit::Transaction::Error error, const QString &details);
    void slotResolved(PackageKit::Transaction::Info info, const QString &pkgId, const QString &summary);
    void slotUninstallFinished(PackageKit::Transaction::Exit status, uint runtime);
    void slotUninstallError(PackageKit::Transaction::Error error, const QString &details);
    void slotUninstallProgress(const QString &itemID, PackageKit::Transaction::Status status, uint percentage);

private:
    void handleUnreachable();
    void uninstall(const QStringList &ids);
    void giveUp(const QString &details);
    void end();

    const QStringList m_packageNames;
    QStringList m_packageIds;
    const bool m_autoremove;
    PackageKit::Transaction *m_transaction = nullptr;
};

}
