// SPDX-FileCopyrightText: velmora-installationhandler contributors
// SPDX-License-Identifier: BSD-3-Clause

#pragma once

#include "installtransaction.h"
#include "rpminfo.h"

#include <QStringList>

class QDBusInterface;
class QDBusPendingCallWatcher;

/**
 * Installs package files one after the other: reads the header, asks the user
 * unless the installation is silent, hands the file to the package manager, and
 * gathers the failures.
 *
 * It never finishes if it has to ask and has no view or no dialog (Known
 * behaviour 52), or if it has no package manager.
 */
class InstallPackageTransaction : public InstallTransaction
{
    Q_OBJECT

public:
    /** files: local paths. sdkMode: install without asking where developer mode allows it. */
    InstallPackageTransaction(const QStringList &files, bool sdkMode);

    /** The proxies are borrowed and outlive the transaction. */
    void setDeveloperModeInterface(QDBusInterface *iface);
    void setPackageManagerInterface(QDBusInterface *iface);

    void setTransactionView(TransactionView *view) override;
    void start() override;

Q_SIGNALS:
    /** Never emitted. TransactionView::needConfirm() says that the user is asked. */
    void needShowConfirm();

private Q_SLOTS:
    void installCurrentRpm();
    void handleInstallCancelled();

private:
    static QString notifyDisallowed();
    void processNextFile();
    bool isSilentInstallationAllowed();
    void handleInstallReply(QDBusPendingCallWatcher *watcher, const QString &packageName);
    void appendInstallationError(const QString &packageName, const QString &errorName, const QString &errorMessage);

    TransactionView *m_view = nullptr;
    QDBusInterface *m_developerMode = nullptr;
    QDBusInterface *m_packageManager = nullptr;
    QStringList m_files;
    QString m_errorString;
    bool m_success = false;
    RpmInfo m_rpmInfo;
    const bool m_sdkMode;
};
