// SPDX-FileCopyrightText: velmora-installationhandler contributors
// SPDX-License-Identifier: BSD-3-Clause

#include "transactionfixture.h"

#include "devicefile.h"
#include "testrunner.h"

#include <QDBusPendingCallWatcher>
#include <QSignalSpy>

#include <type_traits>

static_assert(std::is_abstract_v<InstallTransaction>);
static_assert(sizeof(InstallTransaction) == sizeof(QObject), "The base keeps nothing");
static_assert(std::is_same_v<decltype(&InstallTransaction::transactionFinished),
                             void (InstallTransaction::*)(bool, const QString &, InstallPackageTransaction *)>);

namespace {

/** A device whose policy forbids installations. */
struct ForbiddingDevice
{
    DeviceFile policy{"/etc/velmora/access-policy.conf"_s, "[Applications]\nInstallationEnabled=false\n"};
    DeviceFile system{"/etc/os-release"_s, "NAME=\"Test System\"\n"};
    QString text = "Test System forbids it"_s;
};

}

/** The policy, the way of one file, and the cases in which a transaction never finishes. */
class InstallPackageTransactionTest : public TransactionFixture
{
    Q_OBJECT

private Q_SLOTS:
    void hasItsMethods()
    {
        QCOMPARE(methodsOf(InstallTransaction::staticMetaObject),
                 QStringList("signal transactionFinished(bool success, QString errorString, "
                             "InstallPackageTransaction* transaction)"_s));
        QCOMPARE(methodsOf(InstallPackageTransaction::staticMetaObject),
                 QStringList({"signal needShowConfirm()"_s, "private slot installCurrentRpm()"_s,
                              "private slot handleInstallCancelled()"_s}));
        QVERIFY(InstallPackageTransaction::staticMetaObject.inherits(&InstallTransaction::staticMetaObject));
        QVERIFY(!InstallPackageTransaction({}, false).parent());
    }

    // A queued signal needs to know the type of the third argument.
    void signalsAcrossTheEventLoop()
    {
        InstallPackageTransaction transaction({}, true);
        QObject receiver;
        connect(&transaction,
                SIGNAL(transactionFinished(bool, QString, InstallPackageTransaction *)), &receiver, SLOT(deleteLater()));
        QSignalSpy finished(&transaction, &InstallTransaction::transactionFinished);
        transaction.start();

        QCOMPARE(finished.size(), 1);
        QCOMPARE(finished.first().value(2).value<InstallPackageTransaction *>(), &transaction);
    }

    void finishesAtOnceWithoutFiles()
    {
        for (const bool sdkMode : {true, false}) {
            m_journal.clear();
            start({}, sdkMode);
            checkNothingFollows({finished(true)});
        }
    }

    void isRefusedByPolicy_data()
    {
        QTest::addColumn<QStringList>("files");
        QTest::addColumn<bool>("sdkMode");
        QTest::addColumn<bool>("hasService");
        QTest::newRow("ordinary") << QStringList{Path, TranslatedPath} << false << true;
        QTest::newRow("sdk mode") << QStringList{Path} << true << true;
        QTest::newRow("no files") << QStringList() << false << true;
        QTest::newRow("no notification service") << QStringList{Path} << false << false;
    }

    void isRefusedByPolicy()
    {
        QFETCH(QStringList, files);
        QFETCH(bool, sdkMode);
        QFETCH(bool, hasService);
        const ForbiddingDevice device;
        const DeviceFile emulator("/etc/velmoraos-emulator"_s);
        const QString service = "org.freedesktop.Notifications"_s;
        Journal published;
        RecordingPeer peer(qEnvironmentVariable("DBUS_SESSION_BUS_ADDRESS"),
                           hasService ? QStringList(service) : QStringList(), &published);
        peer.answer("Notify"_s, PeerAnswer::values("(uint32 1,)"));
        QStringList publishedBefore;
        m_whenFinished = [&] {
            roundTrip(QDBusConnection::sessionBus(), service);
            publishedBefore = published.entries();
        };
        start(files, sdkMode);

        checkNothingFollows({finished(false, device.text)});
        const QString notification =
                "org.freedesktop.Notifications /org/freedesktop/Notifications org.freedesktop.Notifications.Notify('', "
                "uint32 0, 'icon-lock-warning', 'Test System', 'Test System forbids it', @as [], "
                "{'image-path': <'dialog-warning'>, 'transient': <true>, 'urgency': <byte 0x02>}, -1)"_s;
        QCOMPARE(publishedBefore, hasService ? QStringList(notification) : QStringList());
        QCOMPARE(published.entries(), publishedBefore);
    }

    void asksThePolicyEachTime()
    {
        start({});
        QString text;
        {
            const ForbiddingDevice device;
            start({});
            text = device.text;
        }
        start({});
        QCOMPARE(entries(), QStringList({finished(true), finished(false, text), finished(true)}));
    }

    void asksBeforeItInstalls()
    {
        start({Path});
        QCOMPARE(entries(), asking(Plain));

        m_journal.clear();
        QVERIFY(confirm());
        const QStringList expected{installCall(), endRequest(Plain, 3000000), Destroyed, finished(true)};
        QCOMPARE(settledEntries(expected.size()), expected);
    }

    void takesOneFileAfterTheOther()
    {
        m_peer->answer("Install"_s, {PeerAnswer::held(), PeerAnswer::values("('whatever', 42)")});
        start({Path, TranslatedPath}, true);
        const QStringList first = plainRead() + QStringList(installCall());
        QCOMPARE(settledEntries(first.size()), first);

        QVERIFY(m_peer->answerHeld(PeerAnswer::values()));
        const QStringList both =
                first + QStringList{readLine(Translated), silenceQuery(), installCall(TranslatedPath), finished(true)};
        QCOMPARE(settledEntries(both.size()), both);
    }

    // There may be many files, so this does not wait for the last one.
    void releasesAnsweredCalls()
    {
        m_peer->answer("Install"_s, {PeerAnswer::values(), PeerAnswer::held()});
        InstallPackageTransaction *transaction = make({Path, Path}, true);
        transaction->start();
        const QStringList both = plainRead() + QStringList(installCall()) + plainRead() + QStringList(installCall());
        QCOMPARE(settledEntries(both.size()), both);

        TestDialog::deleteScheduled();
        QCOMPARE(transaction->findChildren<QDBusPendingCallWatcher *>().size(), 1);

        QVERIFY(m_peer->answerHeld(PeerAnswer::values()));
        QCOMPARE(settledEntries(both.size() + 1), both + QStringList(finished(true)));
    }

    // Known behaviour 43, 44, 51.
    void goesOnWithFilesThatCannotBeRead()
    {
        start({Path, "/absent.rpm"_s});
        QVERIFY(dismiss());
        QCOMPARE(TestDialog::window()->property("shown").toString(), "plain|1.2.3|A plain package|/absent.rpm"_s);

        m_journal.clear();
        QVERIFY(confirm());
        const QStringList expected{installCall("/absent.rpm"_s), endRequest(Plain, 3000000), Destroyed,
                                   finished(false, Aborted)};
        QCOMPARE(settledEntries(expected.size()), expected);
    }

    void handsThePathOver_data()
    {
        QTest::addColumn<QString>("path");
        QTest::addColumn<QString>("argument");
        QTest::newRow("empty") << QString() << QString();
        QTest::newRow("relative") << "a.rpm" << "a.rpm";
        QTest::newRow("UTF-8") << "/ä/\u4f60.rpm" << "/ä/\u4f60.rpm";
        QTest::newRow("blank, percent") << "/a b%20%1.rpm" << "/a b%20%1.rpm";
        QTest::newRow("newline") << "/a\nb.rpm" << "/a\\nb.rpm";
    }

    void handsThePathOver()
    {
        QFETCH(QString, path);
        QFETCH(QString, argument);
        start({path}, true);

        const QStringList expected{silenceQuery(), installCall(argument), finished(true)};
        QCOMPARE(settledEntries(expected.size()), expected);
    }

    void waitsForEverWithoutView()
    {
        make({Path, TranslatedPath}, false)->start();
        checkNothingFollows(
                plainRead()
                + QStringList{confirmWarning(NotSdkMode), "warning: Unable to show the confirmation dialog"_s});
    }

    void waitsForEverWithoutPackageManager()
    {
        InstallPackageTransaction *transaction = make({Path, TranslatedPath}, true);
        transaction->setPackageManagerInterface(nullptr);
        transaction->setTransactionView(m_view.get());
        transaction->start();
        checkNothingFollows(plainRead());
    }

    // Known behaviour 52.
    void waitsForEverWithoutDialog()
    {
        m_dialog->remove();
        m_view->setEngine(makeEngine());
        start({Path, TranslatedPath});

        QVERIFY(settle());
        QCOMPARE(entries().mid(0, 4), asking(Plain).mid(0, 4));
        QCOMPARE(entries().size(), 5);
    }

    void canBeReleasedWhileInstalling()
    {
        m_peer->answer("Install"_s, PeerAnswer::held());
        InstallPackageTransaction *transaction = make({Path, TranslatedPath}, true);
        transaction->start();
        QCOMPARE(settledEntries(3).size(), 3);
        delete transaction;

        QVERIFY(answerInstall());
        QCOMPARE(entries().size(), 3);
    }

private:
    /** Checks the entries, and that no others follow. */
    void checkNothingFollows(const QStringList &expected)
    {
        QCOMPARE(entries(), expected);
        QVERIFY(settle());
        QCOMPARE(entries(), expected);
    }
};

VELMORA_TEST(InstallPackageTransactionTest, Device, Gui)

#include "tst_installpackagetransaction.moc"
