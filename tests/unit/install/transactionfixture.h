// SPDX-FileCopyrightText: velmora-installationhandler contributors
// SPDX-License-Identifier: BSD-3-Clause

#pragma once

#include "installationfixture.h"

#include "installpackagetransaction.h"
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
    void init()
    {
        setUp();
        m_texts.emplace(QHash<QString, QString>{
                {"installationhandler-user-aborted"_s, Aborted},
                {"installationhandler-application_installation_disallowed"_s, "%1 forbids it"_s},
                {"zarn_installation_error_desc_NoSpace"_s, "No space left"_s},
                {"zarn_installation_error_desc_Conflict"_s, "In the way"_s},
                {"zarn_installation_error_desc_Placeholder"_s, "See %1"_s},
        });
        const QDBusConnection bus = QDBusConnection::systemBus();
        m_developerMode =
                std::make_unique<QDBusInterface>("ru.quon.developermode"_s, "/"_s, "ru.quon.developermode"_s, bus);
        m_packageManager = std::make_unique<QDBusInterface>("ru.quon.ZARN"_s, "/ru/quon/ZARN"_s, "ru.quon.ZARN"_s, bus);
        m_view = std::make_unique<TransactionView>(nullptr);
        m_view->setEngine(engine());
        connect(m_view.get(), &TransactionView::needConfirm, this, [this] { note("needConfirm"_s); });
        settle();
        m_journal.clear();
    }

    void cleanup()
    {
        m_view.reset();
        // The dialogs go before the packages that they show.
        TestDialog::deleteScheduled();
        TestDialog::deleteAll();
        for (const auto &transaction : qAsConst(m_transactions)) {
            delete transaction;
        }
        m_transactions.clear();
        m_whenFinished = {};
        m_packageManager.reset();
        m_developerMode.reset();
        m_texts.reset();
        tearDown();
    }

protected:
    /** A transaction with both proxies, but without a view; it lives until it has finished. */
    InstallPackageTransaction *make(const QStringList &files, bool sdkMode)
    {
        auto transaction = new InstallPackageTransaction(files, sdkMode);
        transaction->setDeveloperModeInterface(m_developerMode.get());
        transaction->setPackageManagerInterface(m_packageManager.get());
        connect(transaction, &InstallPackageTransaction::needShowConfirm, this, [this] { note("needShowConfirm"_s); });
        connect(transaction, &InstallTransaction::transactionFinished, this,
                [this, transaction](bool success, const QString &errorString, InstallPackageTransaction *who) {
                    if (m_whenFinished) {
                        m_whenFinished();
                    }
                    note(who == transaction ? finished(success, errorString) : "another transaction finished"_s);
                    transaction->disconnect();
                    transaction->deleteLater();
                });
        m_transactions.append(transaction);
        return transaction;
    }

    /** A transaction with both proxies and the view, started. */
    void start(const QStringList &files, bool sdkMode = false)
    {
        InstallPackageTransaction *transaction = make(files, sdkMode);
        transaction->setTransactionView(m_view.get());
        transaction->start();
    }

    /** Waits for a dialog and answers it as the user does. False when none comes. */
    bool confirm() { return answer(TestDialog::confirm); }
    bool dismiss() { return answer(TestDialog::dismiss); }

    /** Answers the call of "Install" that has been held for longest; false when there is none. */
    bool answerInstall() { return m_peer->answerHeld(PeerAnswer::values()) && settle(); }

    /** Journal entries. */
    static QString installCall(const QString &path = Path) { return InstallationFixture::installCall(path); }
    static QStringList plainRead() { return {readLine(Plain), silenceQuery()}; }

    static QString finished(bool success, const QString &errorString = {})
    {
        return "finished %1 \"%2\""_s.arg(success ? "well"_s : "badly"_s, errorString);
    }

    /** The packages "plain" and "translated". */
    static inline const QString Plain = "plain"_s;
    static inline const QString Translated = "translated"_s;
    static inline const QString Path = packageFile(Plain);
    static inline const QString TranslatedPath = packageFile(Translated);

    static inline const QString Aborted = "Not wanted"_s;
    static inline const QString Destroyed = "dialog destroyed"_s;
    static inline const QString NotSdkMode = "The installation is not running in sdk mode. "_s;
    static inline const QString NotAllowed = "Silent software instalation is not allowed"_s;

    std::unique_ptr<QDBusInterface> m_developerMode;
    std::unique_ptr<QDBusInterface> m_packageManager;
    std::unique_ptr<TransactionView> m_view;
    std::optional<Texts> m_texts;

    /** Called when a transaction has finished, before that is noted. */
    std::function<void()> m_whenFinished;

private:
    static bool answer(void (*how)(QQuickWindow *))
    {
        const bool hasDialog = waitFor([] { return TestDialog::window(); }, "a dialog");
        if (hasDialog) {
            how(TestDialog::window());
            TestDialog::deleteScheduled();
        }
        return hasDialog;
    }

    QList<QPointer<InstallPackageTransaction>> m_transactions;
};
