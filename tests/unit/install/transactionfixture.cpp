// SPDX-FileCopyrightText: velmora-installationhandler contributors
// SPDX-License-Identifier: BSD-3-Clause

#include "transactionfixture.h"

#include "waitfor.h"

const QString TransactionFixture::Plain = "plain"_s;
const QString TransactionFixture::Translated = "translated"_s;
const QString TransactionFixture::Path = packageFile(Plain);
const QString TransactionFixture::TranslatedPath = packageFile(Translated);
const QString TransactionFixture::Aborted = "Not wanted"_s;
const QString TransactionFixture::Destroyed = "dialog destroyed"_s;
const QString TransactionFixture::NotSdkMode = "The installation is not running in sdk mode. "_s;
const QString TransactionFixture::NotAllowed = "Silent software instalation is not allowed"_s;

void TransactionFixture::init()
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

void TransactionFixture::cleanup()
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

InstallPackageTransaction *TransactionFixture::make(const QStringList &files, bool sdkMode)
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

void TransactionFixture::start(const QStringList &files, bool sdkMode)
{
    InstallPackageTransaction *transaction = make(files, sdkMode);
    transaction->setTransactionView(m_view.get());
    transaction->start();
}

bool TransactionFixture::answer(void (*how)(QQuickWindow *))
{
    const bool hasDialog = waitFor([] { return TestDialog::window(); }, "a dialog");
    if (hasDialog) {
        how(TestDialog::window());
        TestDialog::deleteScheduled();
    }
    return hasDialog;
}

bool TransactionFixture::answerInstall()
{
    return m_peer->answerHeld(PeerAnswer::values()) && settle();
}

QString TransactionFixture::finished(bool success, const QString &errorString)
{
    return "finished %1 \"%2\""_s.arg(success ? "well"_s : "badly"_s, errorString);
}
