// SPDX-FileCopyrightText: velmora-installationhandler contributors
// SPDX-License-Identifier: BSD-3-Clause

#include "transactionscene.h"

#include <QTest>

void TransactionScene::setUpTransactions()
{
    setUp();
    m_texts.emplace(QHash<QString, QString>{
            {QStringLiteral("installationhandler-user-aborted"), QStringLiteral("Not wanted")},
            {QStringLiteral("installationhandler-application_installation_disallowed"),
             QStringLiteral("%1 forbids it")},
            {QStringLiteral("zarn_installation_error_desc_NoSpace"), QStringLiteral("No space left")},
            {QStringLiteral("zarn_installation_error_desc_Conflict"), QStringLiteral("In the way")},
            {QStringLiteral("zarn_installation_error_desc_Placeholder"), QStringLiteral("See %1")},
    });
    m_developerMode =
            std::make_unique<QDBusInterface>(QStringLiteral("ru.quon.developermode"), QStringLiteral("/"),
                                             QStringLiteral("ru.quon.developermode"), QDBusConnection::systemBus());
    m_packageManager = std::make_unique<QDBusInterface>(QStringLiteral("ru.quon.ZARN"), QStringLiteral("/ru/quon/ZARN"),
                                                        QStringLiteral("ru.quon.ZARN"), QDBusConnection::systemBus());
    m_view = std::make_unique<TransactionView>(nullptr);
    m_view->setEngine(engine());
    connect(m_view.get(), &TransactionView::needConfirm, this, [this] { note(QStringLiteral("needConfirm")); });
    settle();
    m_journal.clear();
}

void TransactionScene::tearDownTransactions()
{
    m_view.reset();
    // Before the packages that they show.
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

InstallPackageTransaction *TransactionScene::make(const QStringList &files, bool sdkMode)
{
    auto transaction = new InstallPackageTransaction(files, sdkMode);
    transaction->setDeveloperModeInterface(m_developerMode.get());
    transaction->setPackageManagerInterface(m_packageManager.get());
    connect(transaction, &InstallPackageTransaction::needShowConfirm, this,
            [this] { note(QStringLiteral("needShowConfirm")); });
    connect(transaction, &InstallTransaction::transactionFinished, this,
            [this, transaction](bool success, const QString &errorString, InstallPackageTransaction *who) {
                if (m_whenFinished) {
                    m_whenFinished();
                }
                note(who == transaction ? finished(success, errorString) : QStringLiteral("finished somebody else"));
                transaction->disconnect();
                transaction->deleteLater();
            });
    m_transactions.append(transaction);
    return transaction;
}

void TransactionScene::start(const QStringList &files, bool sdkMode)
{
    InstallPackageTransaction *transaction = make(files, sdkMode);
    transaction->setTransactionView(m_view.get());
    transaction->start();
}

bool TransactionScene::confirm()
{
    if (!QTest::qWaitFor([] { return TestDialog::window(); })) {
        return false;
    }
    TestDialog::confirm(TestDialog::window());
    TestDialog::deleteScheduled();
    return true;
}

bool TransactionScene::dismiss()
{
    if (!QTest::qWaitFor([] { return TestDialog::window(); })) {
        return false;
    }
    TestDialog::dismiss(TestDialog::window());
    TestDialog::deleteScheduled();
    return true;
}

QString TransactionScene::finished(bool success, const QString &errorString)
{
    return QStringLiteral("finished %1 \"%2\"")
            .arg(success ? QStringLiteral("well") : QStringLiteral("badly"), errorString);
}
