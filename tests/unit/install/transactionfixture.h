// SPDX-FileCopyrightText: velmora-installationhandler contributors
// SPDX-License-Identifier: BSD-3-Clause

#pragma once

#include "installationfixture.h"

#include "installpackagetransaction.h"
#include "literals.h"
#include "texts.h"
#include "transactionview.h"

#include <QDBusInterface>
#include <QPointer>
#include <QQuickWindow>

#include <functional>

/**
 * Transactions with all that the service gives them, and all signals in the journal. A transaction is released when it
 * has finished, as in the service.
 */
class TransactionFixture : public InstallationFixture
{
    Q_OBJECT

protected Q_SLOTS:
    void init();
    void cleanup();

protected:
    /** A transaction with both proxies, but without a view; it lives until it has finished. */
    InstallPackageTransaction *make(const QStringList &files, bool sdkMode);

    /** A transaction with both proxies and the view, started. */
    void start(const QStringList &files, bool sdkMode = false);

    /** Waits for a dialog and answers it as the user does. False when none comes. */
    bool confirm() { return answer(TestDialog::confirm); }
    bool dismiss() { return answer(TestDialog::dismiss); }

    /** Answers the call of "Install" that has been held for longest; false when there is none. */
    bool answerInstall();

    /** Journal entries. */
    static QString installCall(const QString &path = Path) { return InstallationFixture::installCall(path); }
    static QStringList plainRead() { return {readLine(Plain), silenceQuery()}; }
    static QString finished(bool success, const QString &errorString = {});

    /** The packages "plain" and "translated". */
    static const QString Plain;
    static const QString Translated;
    static const QString Path;
    static const QString TranslatedPath;

    static const QString Aborted;
    static const QString Destroyed;
    static const QString NotSdkMode;
    static const QString NotAllowed;

    std::unique_ptr<QDBusInterface> m_developerMode;
    std::unique_ptr<QDBusInterface> m_packageManager;
    std::unique_ptr<TransactionView> m_view;
    std::optional<Texts> m_texts;

    /** Called when a transaction has finished, before that is noted. */
    std::function<void()> m_whenFinished;

private:
    static bool answer(void (*how)(QQuickWindow *));

    QList<QPointer<InstallPackageTransaction>> m_transactions;
};
