// SPDX-FileCopyrightText: velmora-installationhandler contributors
// SPDX-License-Identifier: BSD-3-Clause

#include "transactionfixture.h"

#include "testrunner.h"

namespace {

const QString Install = "Install"_s;
const QByteArray NoSpace = "ru.quon.ZARN.Error.NoSpace";
const QByteArray Conflict = "ru.quon.ZARN.Error.Conflict";

QString unknown(const char *error)
{
    return "zarn_installation_error_desc_%1 (code: %1)"_s.arg(QLatin1String(error));
}

}

/** The reported outcome: one failure after the other, refusals in between, and two transactions with one dialog. */
class InstallationOutcomeTest : public TransactionFixture
{
    Q_OBJECT

private Q_SLOTS:
    // Known behaviour 51.
    void addsUpTheFiles_data()
    {
        const QString noSpace = "No space left (code: NoSpace)"_s;
        const QString conflict = "In the way (code: Conflict)"_s;

        // The name has one letter for each file: installed, no space left, in conflict, dismissed.
        QTest::addColumn<QStringList>("errors");
        const auto row = [](const char *files, const QStringList &errors) { QTest::newRow(files) << errors; };
        row("i", {});
        row("n", {noSpace});
        row("d", {Aborted});
        row("ii", {});
        row("in", {noSpace});
        row("id", {Aborted});
        row("ni", {noSpace});
        row("nc", {noSpace, conflict});
        row("nd", {Aborted});
        row("di", {Aborted});
        row("dn", {Aborted, noSpace});
        row("dd", {Aborted});
        row("ncn", {noSpace, conflict, noSpace});
        row("ncdc", {Aborted, conflict});
    }

    void addsUpTheFiles()
    {
        QFETCH(QStringList, errors);
        const QByteArray files = QTest::currentDataTag();
        start(QVector<QString>(files.size(), Path).toList());

        QStringList expected;
        for (const char file : files) {
            expected += asking(Plain);
            if (file == 'd') {
                QVERIFY(dismiss());
                expected += endRequest(Plain, 1000000);
            } else {
                const QByteArray error = file == 'n' ? NoSpace : Conflict;
                m_peer->answer(Install,
                               file == 'i' ? PeerAnswer::values() : PeerAnswer::error(error, "for developers"));
                QVERIFY(confirm());
                expected += {installCall(), endRequest(Plain, 3000000)};
            }
        }
        expected += finished(errors.isEmpty(), errors.join(QLatin1Char('\n')));

        QStringList happened = settledEntries(expected.size() + files.size());
        QCOMPARE(happened.removeAll(Destroyed), files.size());
        QCOMPARE(happened, expected);
    }

    void describesTheError_data()
    {
        QTest::addColumn<PeerAnswer>("answer");
        QTest::addColumn<QString>("errorString");
        const auto row = [](const char *name, const PeerAnswer &answer, const QString &errorString) {
            QTest::newRow(name) << answer << errorString;
        };
        row("known", PeerAnswer::error("a.b.NoSpace"), "No space left (code: NoSpace)"_s);
        row("message not used", PeerAnswer::error("a.b.NoSpace", "a.b.Conflict"), "No space left (code: NoSpace)"_s);
        row("unknown", PeerAnswer::error("a.b.Failed"), unknown("Failed"));
        row("placeholder", PeerAnswer::error("a.b.Placeholder"), "See Placeholder (code: %3)"_s);
        row("death", PeerAnswer::death(), unknown("NoReply"));
    }

    void describesTheError()
    {
        QFETCH(PeerAnswer, answer);
        QFETCH(QString, errorString);
        m_peer->answer(Install, answer);
        start({Path}, true);

        const QStringList expected = plainRead() + QStringList{installCall(), finished(false, errorString)};
        QCOMPARE(settledEntries(expected.size()), expected);
    }

    void describesAnAbsentPackageManager()
    {
        start({Path});
        m_peer.reset();
        m_journal.clear();
        QVERIFY(confirm());

        const QStringList expected{Destroyed, finished(false, unknown("ServiceUnknown"))};
        QCOMPARE(settledEntries(expected.size()), expected);
    }

    // The proxy's time-out ends the wait. An answer that comes later changes nothing.
    void describesATimeout()
    {
        m_packageManager->setTimeout(100);
        m_peer->answer(Install, PeerAnswer::held());
        start({Path}, true);

        QStringList expected = plainRead() + QStringList{installCall(), finished(false, unknown("NoReply"))};
        QStringList happened = settledEntries(expected.size());
        // The call may reach the peer after the time-out on a busy machine.
        happened.sort();
        expected.sort();
        QCOMPARE(happened, expected);
        QVERIFY(answerInstall());
        QCOMPARE(entries().size(), expected.size());
    }

    void endsWithoutBus()
    {
        const QDBusConnection none("none"_s);
        m_developerMode = std::make_unique<QDBusInterface>("ru.quon.developermode"_s, "/"_s, QString(), none);
        m_packageManager = std::make_unique<QDBusInterface>("ru.quon.ZARN"_s, "/ru/quon/ZARN"_s, QString(), none);
        start({Path}, true);
        const QString warning = R"(warning: Could not fetch developer mode state:  "Not connected to D-Bus server")"_s;
        QCOMPARE(entries(), QStringList({readLine(Plain), warning}) + asking(Plain).mid(3));

        m_journal.clear();
        QVERIFY(confirm());
        const QStringList expected{endRequest(Plain, 3000000), Destroyed, finished(false, unknown("Disconnected"))};
        QCOMPARE(settledEntries(expected.size()), expected);
    }

    // The second answer ends the transaction, so that the package manager's answer reaches nobody.
    void isToldOnceAfterASecondAnswer()
    {
        m_peer->answer(Install, PeerAnswer::held());
        start({Path});
        m_journal.clear();
        QQuickWindow *window = TestDialog::window();
        TestDialog::confirm(window);
        TestDialog::dismiss(window);
        TestDialog::deleteScheduled();

        const QStringList expected{installCall(), endRequest(Plain, 3000000), endRequest(Plain, 1000000),
                                   finished(false, Aborted), Destroyed};
        QVERIFY(settle());
        QCOMPARE(entries(), expected);
        QVERIFY(answerInstall());
        QCOMPARE(entries(), expected);
    }

    void listensToTheLastViewOnly()
    {
        TransactionView other(nullptr);
        InstallPackageTransaction *transaction = make({Path}, false);
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

    void listensOnceToTheSameView()
    {
        InstallPackageTransaction *transaction = make({Path}, false);
        transaction->setTransactionView(m_view.get());
        transaction->setTransactionView(m_view.get());
        transaction->start();
        m_journal.clear();
        QVERIFY(confirm());

        const QStringList expected{installCall(), endRequest(Plain, 3000000), Destroyed, finished(true)};
        QCOMPARE(settledEntries(expected.size()), expected);
    }

    // A transaction listens to the view until it is released. Known behaviour 55.
    void installsAgainWithTheNextConfirmation()
    {
        askWhileInstalling();
        QVERIFY(confirm());
        const QStringList expected{installCall(), installCall(TranslatedPath), endRequest(Translated, 3000000),
                                   Destroyed};
        QCOMPARE(settledEntries(expected.size()), expected);

        // The first answer ends the first transaction, and its second call is forgotten.
        m_journal.clear();
        for (int call = 0; call < 3; ++call) {
            QVERIFY(answerInstall());
            TestDialog::deleteScheduled();
        }
        QCOMPARE(entries(), QStringList({finished(true), finished(true)}));
    }

    // Known behaviour 60.
    void passesOverAFileAfterAnotherConfirmation()
    {
        m_peer->answer(Install, PeerAnswer::held());
        start({Path, TranslatedPath, Path});
        QVERIFY(confirm());
        emit m_view->installationConfirmed();
        QVERIFY(settle());
        m_journal.clear();
        QVERIFY(answerInstall());
        QVERIFY(answerInstall());
        QCOMPARE(settledEntries(12), asking(Translated) + asking(Plain));

        const QList<QQuickWindow *> dialogs = TestDialog::windows();
        QCOMPARE(dialogs.size(), 2);
        m_journal.clear();
        TestDialog::confirm(dialogs.last());
        QVERIFY(settle());
        QVERIFY(answerInstall());
        QCOMPARE(entries().filter(Install), QStringList(installCall()));
        QCOMPARE(entries().filter("inished"_s), QStringList(finished(true)));
    }

    // Known behaviour 56.
    void isCancelledWithTheNextRefusal()
    {
        askWhileInstalling();
        QVERIFY(dismiss());
        const QStringList expected{endRequest(Translated, 1000000), finished(false, Aborted), finished(false, Aborted),
                                   Destroyed};
        QVERIFY(settle());
        QCOMPARE(entries(), expected);
        QVERIFY(answerInstall());
        QCOMPARE(entries(), expected);
    }

private:
    /** The package manager has not answered for "plain" yet, and the user is asked about "translated". */
    void askWhileInstalling()
    {
        m_peer->answer(Install, PeerAnswer::held());
        start({Path});
        QVERIFY(confirm());
        start({TranslatedPath});
        QCOMPARE(settledEntries(15).mid(9), asking(Translated));
        m_journal.clear();
    }
};

VELMORA_TEST(InstallationOutcomeTest, Device, Gui)

#include "tst_installationoutcome.moc"
