// SPDX-FileCopyrightText: velmora-installationhandler contributors
// SPDX-License-Identifier: BSD-3-Clause

#include "transactionscene.h"

#include "devicetest.h"

namespace {

const QString Plain = QStringLiteral("plain");
const QString Translated = QStringLiteral("translated");
const QString Install = QStringLiteral("Install");
const QString Aborted = QStringLiteral("Not wanted");
const QString Destroyed = QStringLiteral("dialog destroyed");

const QByteArray NoSpace = QByteArrayLiteral("ru.quon.ZARN.Error.NoSpace");
const QByteArray Conflict = QByteArrayLiteral("ru.quon.ZARN.Error.Conflict");

}

/** What is told in the end: one failure after the other, refusals in between, and two transactions with one dialog. */
class InstallationOutcomeTest : public TransactionScene
{
    Q_OBJECT

private Q_SLOTS:
    void init() { setUpTransactions(); }
    void cleanup() { tearDownTransactions(); }

    void addsUpTheFiles_data();
    void addsUpTheFiles();
    void describesTheError_data();
    void describesTheError();
    void describesAnAbsentPackageManager();
    void describesATimeout();
    void endsWithoutBus();
    void isToldOnceAfterASecondAnswer();
    void listensToTheLastViewOnly();
    void listensOnceToTheSameView();
    void installsAgainWithTheNextConfirmation();
    void passesOverAFileAfterAnotherConfirmation();
    void isCancelledWithTheNextRefusal();
};

void InstallationOutcomeTest::addsUpTheFiles_data()
{
    const QString noSpace = QStringLiteral("No space left (code: NoSpace)");
    const QString conflict = QStringLiteral("In the way (code: Conflict)");

    // One letter a file: installed, no space left, in conflict, dismissed.
    QTest::addColumn<QByteArray>("files");
    QTest::addColumn<bool>("success");
    QTest::addColumn<QString>("errorString");
    QTest::newRow("i") << QByteArray("i") << true << QString();
    QTest::newRow("n") << QByteArray("n") << false << noSpace;
    QTest::newRow("d") << QByteArray("d") << false << Aborted;
    QTest::newRow("ii") << QByteArray("ii") << true << QString();
    QTest::newRow("in") << QByteArray("in") << false << noSpace;
    QTest::newRow("id") << QByteArray("id") << false << Aborted;
    QTest::newRow("ni") << QByteArray("ni") << false << noSpace;
    QTest::newRow("nc") << QByteArray("nc") << false << noSpace + QLatin1Char('\n') + conflict;
    QTest::newRow("nd") << QByteArray("nd") << false << Aborted;
    QTest::newRow("di") << QByteArray("di") << false << Aborted;
    QTest::newRow("dn") << QByteArray("dn") << false << Aborted + QLatin1Char('\n') + noSpace;
    QTest::newRow("dd") << QByteArray("dd") << false << Aborted;
    QTest::newRow("ncn") << QByteArray("ncn") << false
                         << noSpace + QLatin1Char('\n') + conflict + QLatin1Char('\n') + noSpace;
    QTest::newRow("ncdc") << QByteArray("ncdc") << false << Aborted + QLatin1Char('\n') + conflict;
}

void InstallationOutcomeTest::addsUpTheFiles()
{
    QFETCH(QByteArray, files);
    QFETCH(bool, success);
    QFETCH(QString, errorString);
    start(QStringList(QVector<QString>(files.size(), packageFile(Plain)).toList()));

    QStringList expected;
    for (const char file : qAsConst(files)) {
        expected += asking(Plain);
        if (file == 'd') {
            QVERIFY(dismiss());
            expected += endRequest(Plain, 1000000);
        } else {
            const QByteArray error = file == 'n' ? NoSpace : Conflict;
            m_peer->answer(Install, file == 'i' ? PeerAnswer::values() : PeerAnswer::error(error, "for developers"));
            QVERIFY(confirm());
            expected += {installCall(packageFile(Plain)), endRequest(Plain, 3000000)};
        }
    }
    expected += finished(success, errorString);

    QStringList happened = settledEntries(expected.size() + files.size());
    QCOMPARE(happened.removeAll(Destroyed), files.size());
    QCOMPARE(happened, expected);
}

void InstallationOutcomeTest::describesTheError_data()
{
    QTest::addColumn<PeerAnswer>("answer");
    QTest::addColumn<QString>("errorString");
    QTest::newRow("known") << PeerAnswer::error("a.b.NoSpace") << QStringLiteral("No space left (code: NoSpace)");
    QTest::newRow("message not used") << PeerAnswer::error("a.b.NoSpace", "a.b.Conflict")
                                      << QStringLiteral("No space left (code: NoSpace)");
    QTest::newRow("unknown") << PeerAnswer::error("a.b.Failed")
                             << QStringLiteral("zarn_installation_error_desc_Failed (code: Failed)");
    QTest::newRow("placeholder") << PeerAnswer::error("a.b.Placeholder")
                                 << QStringLiteral("See Placeholder (code: %3)");
    QTest::newRow("death") << PeerAnswer::death()
                           << QStringLiteral("zarn_installation_error_desc_NoReply (code: NoReply)");
}

void InstallationOutcomeTest::describesTheError()
{
    QFETCH(PeerAnswer, answer);
    QFETCH(QString, errorString);
    m_peer->answer(Install, answer);
    start({packageFile(Plain)}, true);

    const QStringList expected{readLine(Plain), silenceQuery(), installCall(packageFile(Plain)),
                               finished(false, errorString)};
    QCOMPARE(settledEntries(expected.size()), expected);
}

void InstallationOutcomeTest::describesAnAbsentPackageManager()
{
    start({packageFile(Plain)});
    m_peer.reset();
    m_journal.clear();
    QVERIFY(confirm());

    const QString unknown = QStringLiteral("zarn_installation_error_desc_ServiceUnknown (code: ServiceUnknown)");
    const QStringList expected{Destroyed, finished(false, unknown)};
    QCOMPARE(settledEntries(expected.size()), expected);
}

// The proxy's time-out ends the wait; an answer that comes later changes nothing.
void InstallationOutcomeTest::describesATimeout()
{
    m_packageManager->setTimeout(100);
    m_peer->answer(Install, PeerAnswer::held());
    start({packageFile(Plain)}, true);

    const QStringList expected{readLine(Plain), silenceQuery(), installCall(packageFile(Plain)),
                               finished(false, QStringLiteral("zarn_installation_error_desc_NoReply (code: NoReply)"))};
    QCOMPARE(settledEntries(expected.size()), expected);
    QVERIFY(m_peer->answerHeld(PeerAnswer::values()));
    QVERIFY(settle());
    QCOMPARE(entries(), expected);
}

void InstallationOutcomeTest::endsWithoutBus()
{
    const QDBusConnection none(QStringLiteral("none"));
    m_developerMode = std::make_unique<QDBusInterface>(QStringLiteral("ru.quon.developermode"), QStringLiteral("/"),
                                                       QString(), none);
    m_packageManager = std::make_unique<QDBusInterface>(QStringLiteral("ru.quon.ZARN"), QStringLiteral("/ru/quon/ZARN"),
                                                        QString(), none);
    start({packageFile(Plain)}, true);
    const QString warning =
            QStringLiteral(R"(warning: Could not fetch developer mode state:  "Not connected to D-Bus server")");
    QCOMPARE(entries(), QStringList({readLine(Plain), warning}) + asking(Plain).mid(3));

    m_journal.clear();
    QVERIFY(confirm());
    const QStringList expected{
            endRequest(Plain, 3000000), Destroyed,
            finished(false, QStringLiteral("zarn_installation_error_desc_Disconnected (code: Disconnected)"))};
    QCOMPARE(settledEntries(expected.size()), expected);
}

// The second answer ends the transaction; the package manager's own comes to nobody.
void InstallationOutcomeTest::isToldOnceAfterASecondAnswer()
{
    m_peer->answer(Install, PeerAnswer::held());
    start({packageFile(Plain)});
    m_journal.clear();
    QQuickWindow *window = TestDialog::window();
    TestDialog::confirm(window);
    TestDialog::dismiss(window);
    TestDialog::deleteScheduled();

    const QStringList expected{installCall(packageFile(Plain)), endRequest(Plain, 3000000), endRequest(Plain, 1000000),
                               finished(false, Aborted), Destroyed};
    QVERIFY(settle());
    QCOMPARE(entries(), expected);
    QVERIFY(m_peer->answerHeld(PeerAnswer::values()));
    QVERIFY(settle());
    QCOMPARE(entries(), expected);
}

void InstallationOutcomeTest::listensToTheLastViewOnly()
{
    TransactionView other(nullptr);
    InstallPackageTransaction *transaction = make({packageFile(Plain)}, false);
    transaction->setTransactionView(&other);
    transaction->setTransactionView(m_view.get());
    transaction->start();
    QCOMPARE(entries(), asking(Plain));

    m_journal.clear();
    emit other.installationConfirmed();
    emit other.installationCancelled();
    QVERIFY(settle());
    QCOMPARE(entries(), QStringList());

    QVERIFY(dismiss());
    QCOMPARE(entries(), QStringList({endRequest(Plain, 1000000), finished(false, Aborted), Destroyed}));
}

void InstallationOutcomeTest::listensOnceToTheSameView()
{
    InstallPackageTransaction *transaction = make({packageFile(Plain)}, false);
    transaction->setTransactionView(m_view.get());
    transaction->setTransactionView(m_view.get());
    transaction->start();
    m_journal.clear();
    QVERIFY(confirm());

    const QStringList expected{installCall(packageFile(Plain)), endRequest(Plain, 3000000), Destroyed, finished(true)};
    QCOMPARE(settledEntries(expected.size()), expected);
}

// Required: a transaction listens to the view until it is released, so the
// answer to another one's dialog is an answer to it as well.
void InstallationOutcomeTest::installsAgainWithTheNextConfirmation()
{
    m_peer->answer(Install, PeerAnswer::held());
    start({packageFile(Plain)});
    QVERIFY(confirm());
    start({packageFile(Translated)});
    QCOMPARE(settledEntries(15).mid(9), asking(Translated));

    m_journal.clear();
    QVERIFY(confirm());
    const QStringList expected{installCall(packageFile(Plain)), installCall(packageFile(Translated)),
                               endRequest(Translated, 3000000), Destroyed};
    QCOMPARE(settledEntries(expected.size()), expected);

    // The first answer ends the first transaction, with which its second request is forgotten.
    m_journal.clear();
    for (int call = 0; call < 3; ++call) {
        QVERIFY(m_peer->answerHeld(PeerAnswer::values()));
        QVERIFY(settle());
        TestDialog::deleteScheduled();
    }
    QCOMPARE(entries(), QStringList({finished(true), finished(true)}));
}

// Required: each answer of the package manager goes on to a file, and the dialog of the last one is asked about.
void InstallationOutcomeTest::passesOverAFileAfterAnotherConfirmation()
{
    m_peer->answer(Install, PeerAnswer::held());
    start({packageFile(Plain), packageFile(Translated), packageFile(Plain)});
    QVERIFY(confirm());
    emit m_view->installationConfirmed();
    QVERIFY(settle());
    m_journal.clear();
    for (int call = 0; call < 2; ++call) {
        QVERIFY(m_peer->answerHeld(PeerAnswer::values()));
        QVERIFY(settle());
    }
    QCOMPARE(settledEntries(12), asking(Translated) + asking(Plain));

    const QList<QQuickWindow *> dialogs = TestDialog::windows();
    QCOMPARE(dialogs.size(), 2);
    m_journal.clear();
    TestDialog::confirm(dialogs.last());
    QVERIFY(settle());
    QVERIFY(m_peer->answerHeld(PeerAnswer::values()));
    QVERIFY(settle());
    QCOMPARE(entries().filter(Install), QStringList(installCall(packageFile(Plain))));
    QCOMPARE(entries().filter(QStringLiteral("inished")), QStringList(finished(true)));
}

// Required, for the same reason.
void InstallationOutcomeTest::isCancelledWithTheNextRefusal()
{
    m_peer->answer(Install, PeerAnswer::held());
    start({packageFile(Plain)});
    QVERIFY(confirm());
    start({packageFile(Translated)});
    QCOMPARE(settledEntries(15).size(), 15);

    m_journal.clear();
    QVERIFY(dismiss());
    const QStringList expected{endRequest(Translated, 1000000), finished(false, Aborted), finished(false, Aborted),
                               Destroyed};
    QVERIFY(settle());
    QCOMPARE(entries(), expected);
    QVERIFY(m_peer->answerHeld(PeerAnswer::values()));
    QVERIFY(settle());
    QCOMPARE(entries(), expected);
}

int main(int argc, char **argv)
{
    return runOnDevice<InstallationOutcomeTest>(argc, argv);
}

#include "tst_installationoutcome.moc"
