// SPDX-FileCopyrightText: velmora-installationhandler contributors
// SPDX-License-Identifier: BSD-3-Clause

#include "transactionscene.h"

#include "devicefile.h"
#include "devicetest.h"
#include "methodsof.h"
#include "roundtrip.h"

#include <QDBusPendingCallWatcher>
#include <QSignalSpy>

#include <type_traits>

static_assert(std::is_abstract_v<InstallTransaction>);
static_assert(sizeof(InstallTransaction) == sizeof(QObject), "The base keeps nothing");
static_assert(std::is_same_v<decltype(&InstallTransaction::transactionFinished),
                             void (InstallTransaction::*)(bool, const QString &, InstallPackageTransaction *)>);

namespace {

const QString Plain = QStringLiteral("plain");
const QString Translated = QStringLiteral("translated");
const QString Destroyed = QStringLiteral("dialog destroyed");

const QString NotSdkMode = QStringLiteral("The installation is not running in sdk mode. ");

const QString Policy = QStringLiteral("/etc/velmora/access-policy.conf");
const QByteArray Forbidding = QByteArrayLiteral("[Applications]\nInstallationEnabled=false\n");

}

/** The policy's gate, the way of one file, and the ends that nobody hears of. */
class InstallPackageTransactionTest : public TransactionScene
{
    Q_OBJECT

private Q_SLOTS:
    void init() { setUpTransactions(); }
    void cleanup() { tearDownTransactions(); }

    void hasItsMethods();
    void signalsAcrossTheEventLoop();
    void finishesAtOnceWithoutFiles_data();
    void finishesAtOnceWithoutFiles();
    void isRefusedByPolicy_data();
    void isRefusedByPolicy();
    void isRefusedWithoutNotificationService();
    void asksThePolicyEachTime();
    void asksBeforeItInstalls();
    void takesOneFileAfterTheOther();
    void releasesAnsweredCalls();
    void goesOnWithFilesThatCannotBeRead();
    void handsThePathOver_data();
    void handsThePathOver();
    void stallsWithoutView();
    void waitsForEverWithoutPackageManager();
    void waitsForEverWhenTheDialogCannotBeHad();
    void canBeReleasedWhileInstalling();
};

void InstallPackageTransactionTest::hasItsMethods()
{
    QCOMPARE(methodsOf(InstallTransaction::staticMetaObject),
             QStringList(QStringLiteral("signal transactionFinished(bool success, QString errorString, "
                                        "InstallPackageTransaction* transaction)")));
    QCOMPARE(
            methodsOf(InstallPackageTransaction::staticMetaObject),
            QStringList({QStringLiteral("signal needShowConfirm()"), QStringLiteral("private slot installCurrentRpm()"),
                         QStringLiteral("private slot handleInstallCancelled()")}));
    QVERIFY(InstallPackageTransaction::staticMetaObject.inherits(&InstallTransaction::staticMetaObject));
    QVERIFY(!InstallPackageTransaction({}, false).parent());
}

// The third argument's type is known where a queued signal needs it.
void InstallPackageTransactionTest::signalsAcrossTheEventLoop()
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

void InstallPackageTransactionTest::finishesAtOnceWithoutFiles_data()
{
    QTest::addColumn<bool>("sdkMode");
    QTest::newRow("sdk mode") << true;
    QTest::newRow("ordinary") << false;
}

void InstallPackageTransactionTest::finishesAtOnceWithoutFiles()
{
    QFETCH(bool, sdkMode);
    start({}, sdkMode);

    QCOMPARE(entries(), QStringList(finished(true)));
    QVERIFY(settle());
    QCOMPARE(entries(), QStringList(finished(true)));
}

void InstallPackageTransactionTest::isRefusedByPolicy_data()
{
    QTest::addColumn<QStringList>("files");
    QTest::addColumn<bool>("sdkMode");
    QTest::newRow("ordinary") << QStringList{packageFile(Plain), packageFile(Translated)} << false;
    QTest::newRow("sdk mode") << QStringList{packageFile(Plain)} << true;
    QTest::newRow("no files") << QStringList() << false;
}

void InstallPackageTransactionTest::isRefusedByPolicy()
{
    QFETCH(QStringList, files);
    QFETCH(bool, sdkMode);
    const DeviceFile policy(Policy, Forbidding);
    const DeviceFile system(QStringLiteral("/etc/os-release"), "NAME=\"Test System\"\n");
    const DeviceFile emulator(QStringLiteral("/etc/velmoraos-emulator"));
    const QString notifications = QStringLiteral("org.freedesktop.Notifications");
    Journal published;
    RecordingPeer peer(qEnvironmentVariable("DBUS_SESSION_BUS_ADDRESS"), {notifications}, &published);
    peer.answer(QStringLiteral("Notify"), PeerAnswer::values("(uint32 1,)"));

    // The notification is out before anybody hears of the end.
    const QStringList expected(
            QStringLiteral("org.freedesktop.Notifications /org/freedesktop/Notifications "
                           "org.freedesktop.Notifications.Notify('', uint32 0, 'icon-lock-warning', '', "
                           "'Test System forbids it', @as [], {'transient': <true>, 'urgency': <byte 0x02>}, -1)"));
    QStringList publishedBefore;
    m_whenFinished = [&] {
        roundTrip(QDBusConnection::sessionBus(), notifications);
        publishedBefore = published.entries();
    };
    start(files, sdkMode);

    QCOMPARE(entries(), QStringList(finished(false, QStringLiteral("Test System forbids it"))));
    QVERIFY(settle());
    QCOMPARE(entries().size(), 1);
    QCOMPARE(publishedBefore, expected);
    QCOMPARE(published.entries(), expected);
}

void InstallPackageTransactionTest::isRefusedWithoutNotificationService()
{
    const DeviceFile policy(Policy, Forbidding);
    const DeviceFile system(QStringLiteral("/etc/os-release"), "NAME=\"Test System\"\n");
    start({packageFile(Plain)});

    QVERIFY(settle());
    QCOMPARE(entries(), QStringList(finished(false, QStringLiteral("Test System forbids it"))));
}

void InstallPackageTransactionTest::asksThePolicyEachTime()
{
    start({});
    {
        const DeviceFile policy(Policy, Forbidding);
        start({});
    }
    start({});
    QCOMPARE(entries().size(), 3);
    QCOMPARE(entries().first(), finished(true));
    QVERIFY(entries().at(1).startsWith(QStringLiteral("finished badly")));
    QCOMPARE(entries().last(), finished(true));
}

void InstallPackageTransactionTest::asksBeforeItInstalls()
{
    start({packageFile(Plain)});
    QCOMPARE(entries(), asking(Plain));

    m_journal.clear();
    QVERIFY(confirm());
    const QStringList expected{installCall(packageFile(Plain)), endRequest(Plain, 3000000), Destroyed, finished(true)};
    QCOMPARE(settledEntries(expected.size()), expected);
}

void InstallPackageTransactionTest::takesOneFileAfterTheOther()
{
    m_peer->answer(QStringLiteral("Install"), {PeerAnswer::held(), PeerAnswer::values("('whatever', 42)")});
    start({packageFile(Plain), packageFile(Translated)}, true);
    const QStringList first{readLine(Plain), silenceQuery(), installCall(packageFile(Plain))};
    QCOMPARE(settledEntries(first.size()), first);

    QVERIFY(m_peer->answerHeld(PeerAnswer::values()));
    const QStringList both = first
            + QStringList{readLine(Translated), silenceQuery(), installCall(packageFile(Translated)), finished(true)};
    QCOMPARE(settledEntries(both.size()), both);
}

// Not only when the last file is done, as there may be many.
void InstallPackageTransactionTest::releasesAnsweredCalls()
{
    m_peer->answer(QStringLiteral("Install"), {PeerAnswer::values(), PeerAnswer::held()});
    InstallPackageTransaction *transaction = make({packageFile(Plain), packageFile(Translated)}, true);
    transaction->start();
    const QStringList both{readLine(Plain),      silenceQuery(), installCall(packageFile(Plain)),
                           readLine(Translated), silenceQuery(), installCall(packageFile(Translated))};
    QCOMPARE(settledEntries(both.size()), both);

    TestDialog::deleteScheduled();
    QCOMPARE(transaction->findChildren<QDBusPendingCallWatcher *>().size(), 1);

    QVERIFY(m_peer->answerHeld(PeerAnswer::values()));
    QCOMPARE(settledEntries(both.size() + 1), both + QStringList(finished(true)));
}

// Required: whether a file can be read is the package manager's to find out,
// and the dialog tells what was read last.
void InstallPackageTransactionTest::goesOnWithFilesThatCannotBeRead()
{
    start({packageFile(Plain), QStringLiteral("/absent.rpm")});
    QVERIFY(dismiss());
    QCOMPARE(TestDialog::window()->property("shown").toString(),
             QStringLiteral("plain|1.2.3|A plain package|/absent.rpm"));

    m_journal.clear();
    QVERIFY(confirm());
    const QStringList expected{installCall(QStringLiteral("/absent.rpm")), endRequest(Plain, 3000000), Destroyed,
                               finished(false, QStringLiteral("Not wanted"))};
    QCOMPARE(settledEntries(expected.size()), expected);
}

void InstallPackageTransactionTest::handsThePathOver_data()
{
    QTest::addColumn<QString>("path");
    QTest::addColumn<QString>("argument");
    QTest::newRow("empty") << QString() << QString();
    QTest::newRow("relative") << QStringLiteral("a.rpm") << QStringLiteral("a.rpm");
    QTest::newRow("UTF-8") << QStringLiteral("/ä/\u4f60.rpm") << QStringLiteral("/ä/\u4f60.rpm");
    QTest::newRow("blank, percent") << QStringLiteral("/a b%20%1.rpm") << QStringLiteral("/a b%20%1.rpm");
    QTest::newRow("newline") << QStringLiteral("/a\nb.rpm") << QStringLiteral("/a\\nb.rpm");
}

void InstallPackageTransactionTest::handsThePathOver()
{
    QFETCH(QString, path);
    QFETCH(QString, argument);
    start({path}, true);

    const QStringList expected{silenceQuery(), installCall(argument), finished(true)};
    QCOMPARE(settledEntries(expected.size()), expected);
}

// Required: nobody is asked, nothing is installed, and nobody is told.
void InstallPackageTransactionTest::stallsWithoutView()
{
    make({packageFile(Plain), packageFile(Translated)}, false)->start();

    const QStringList expected{readLine(Plain), silenceQuery(), confirmWarning(NotSdkMode),
                               QStringLiteral("warning: Unable to show the confirmation dialog")};
    QCOMPARE(entries(), expected);
    QVERIFY(settle());
    QCOMPARE(entries(), expected);
}

// Required: in silence.
void InstallPackageTransactionTest::waitsForEverWithoutPackageManager()
{
    InstallPackageTransaction *transaction = make({packageFile(Plain), packageFile(Translated)}, true);
    transaction->setPackageManagerInterface(nullptr);
    transaction->setTransactionView(m_view.get());
    transaction->start();

    const QStringList expected{readLine(Plain), silenceQuery()};
    QCOMPARE(entries(), expected);
    QVERIFY(settle());
    QCOMPARE(entries(), expected);
}

// Required: the view only warns.
void InstallPackageTransactionTest::waitsForEverWhenTheDialogCannotBeHad()
{
    m_dialog->remove();
    m_view->setEngine(makeEngine());
    start({packageFile(Plain), packageFile(Translated)});

    QVERIFY(settle());
    QCOMPARE(entries().mid(0, 4), asking(Plain).mid(0, 4));
    QCOMPARE(entries().size(), 5);
}

void InstallPackageTransactionTest::canBeReleasedWhileInstalling()
{
    m_peer->answer(QStringLiteral("Install"), PeerAnswer::held());
    InstallPackageTransaction *transaction = make({packageFile(Plain), packageFile(Translated)}, true);
    transaction->start();
    QCOMPARE(settledEntries(3).size(), 3);
    delete transaction;

    QVERIFY(m_peer->answerHeld(PeerAnswer::values()));
    QVERIFY(settle());
    QCOMPARE(entries().size(), 3);
}

int main(int argc, char **argv)
{
    return runOnDevice<InstallPackageTransactionTest>(argc, argv);
}

#include "tst_installpackagetransaction.moc"
