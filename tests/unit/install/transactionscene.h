// SPDX-FileCopyrightText: velmora-installationhandler contributors
// SPDX-License-Identifier: BSD-3-Clause

#pragma once

#include "installationscene.h"

#include "installpackagetransaction.h"
#include "texts.h"
#include "transactionview.h"

#include <QDBusInterface>
#include <QPointer>

#include <functional>

/**
 * Transactions with everything that their owner gives them, and all signals in
 * the journal. They are released when they have finished, as their owner does.
 */
class TransactionScene : public InstallationScene
{
    Q_OBJECT

protected:
    void setUpTransactions();
    void tearDownTransactions();

    /** A transaction with both proxies, but without a view; it lives until it has finished. */
    InstallPackageTransaction *make(const QStringList &files, bool sdkMode);

    /** A transaction with both proxies and the view, started. */
    void start(const QStringList &files, bool sdkMode = false);

    /** The user answers the only dialog that there is then, within 5 seconds. False when there is none. */
    bool confirm();
    bool dismiss();

    /** A journal entry. */
    static QString finished(bool success, const QString &errorString = {});

    std::unique_ptr<QDBusInterface> m_developerMode;
    std::unique_ptr<QDBusInterface> m_packageManager;
    std::unique_ptr<TransactionView> m_view;
    std::optional<Texts> m_texts;

    /** What the owner does first when it hears that a transaction has finished. */
    std::function<void()> m_whenFinished;

private:
    QList<QPointer<InstallPackageTransaction>> m_transactions;
};
