// SPDX-FileCopyrightText: velmora-installationhandler contributors
// SPDX-License-Identifier: BSD-3-Clause

#include "handlerremovalscene.h"

#include "devicefile.h"
#include "roundtrip.h"
#include "testrunner.h"

#include <QDBusPendingCallWatcher>

using PackageKit::Transaction;

namespace {

const QString A = QStringLiteral("a");
const QString Launcher = QStringLiteral("/usr/share/applications/a.desktop");
const QString Native = QStringLiteral("debug: Uninstall \"a\" via RPM");
const QString Managed = QStringLiteral("debug: Uninstall \"a\" via ZARN");
const QString Removed = QStringLiteral("debug: Uninstalled \"a\"");
const QString Resolve = QStringLiteral("Resolve(uint64 4, ['a'])");
const QString NothingInFlight = QStringLiteral("0 in flight");
const QString Refusal = QStringLiteral("not \"today\"");
const QString Silence =
        QStringLiteral("Did not receive a reply. Possible causes include: the remote application did not "
                       "send a reply, the message bus security policy blocked the reply, the reply "
                       "timeout expired, or the network connection was broken.");

QString failed(const QString &errorString)
{
    QString line = QStringLiteral("debug: Failed to uninstall \"a\" ");
    QDebug(&line).nospace() << errorString;
    return line;
}

// What the removal itself logs is not the matter here.
const QString Start = QStringLiteral("debug: UninstallTransactionPkgKit::start: (\"a\")");
const QString Deletion = QStringLiteral("debug: deleting UninstallTransactionPkgKit");

QStringList failing(const QString &details)
{
    QString quoted;
    QDebug(&quoted).nospace() << details;
    return {QLatin1String("debug: Resolve Error: (\"a\") PackageKit::Transaction::ErrorNoCache ") + quoted,
            QLatin1String("debug: void Package::UninstallTransactionPkgKit::giveUp(const QString&) ") + quoted};
}

}

/** Which back end removes a package, and what comes of its answer. */
class PackageRemovalTest : public HandlerRemovalScene
{
    Q_OBJECT

private Q_SLOTS:
    void doesNothingWithoutNames();
    void removesByThePackageManager_data();
    void removesByThePackageManager();
    void announcesTheLauncher();
    void passesTheAnswerOn_data();
    void passesTheAnswerOn();
    void releasesTheAnswer();
    void endsWithTheTimeout();
    void removesByPackageKit_data();
    void removesByPackageKit();
    void removesByPackageKitAfterTheTimeout();
    void passesPackageKitsRefusalOn();
    void takesARefusalWithoutATextForSuccess();
    void reportsTwiceWhenTheEndIsQueued();
    void reportsNothingWhenPackageKitSaysNothing();
    void announcesAndroidLaunchersBeforeTheRemoval();
    void removesEachByItself();
    void doesWithoutTheHomeScreen();
    void outlivesTheHandler();

private:
    void noteCountWhenAnnounced();
};

// A removal counts when it has been asked for, not before.
void PackageRemovalTest::noteCountWhenAnnounced()
{
    const auto noteCount = [this] { m_journal.add(QStringLiteral("%1 in flight").arg(count())); };
    m_homeScreen->answer(QStringLiteral("updatingStarted"), PeerAnswer::values().after(noteCount));
}

void PackageRemovalTest::doesNothingWithoutNames()
{
    m_handler->removePackages({});
    QVERIFY(happens({}));
    QCOMPARE(count(), 0);
}

void PackageRemovalTest::removesByThePackageManager_data()
{
    QTest::addColumn<bool>("keepUserdata");
    QTest::addColumn<QString>("options");
    QTest::newRow("with its data") << false << QStringLiteral("@a{sv} {}");
    QTest::newRow("without its data") << true << QStringLiteral("{'KeepUserData': <true>}");
}

void PackageRemovalTest::removesByThePackageManager()
{
    QFETCH(bool, keepUserdata);
    QFETCH(QString, options);

    m_packageManager->answer(QStringLiteral("GetPackage"), PeerAnswer::values("(@a{ss} {},)"));
    m_handler->removePackages({A}, keepUserdata);
    QCOMPARE(count(), 1);
    QVERIFY(happens({packageQuery(A), Managed, removalCall(A, options)}));
    QVERIFY(m_packageManager->answerHeld(PeerAnswer::values()));
    QVERIFY(happens({Removed, updatingFinished(A), finished(true, QString(), 0)}));
}

void PackageRemovalTest::announcesTheLauncher()
{
    const DeviceFile launcher(Launcher);
    m_packageManager->answer(QStringLiteral("GetPackage"), PeerAnswer::values("(@a{ss} {},)"));
    noteCountWhenAnnounced();
    m_handler->removePackages({A});
    QVERIFY(happens({packageQuery(A), Managed, updatingStarted(A, Launcher), NothingInFlight, removalCall(A)}));
    QCOMPARE(count(), 1);
}

void PackageRemovalTest::passesTheAnswerOn_data()
{
    QTest::addColumn<PeerAnswer>("answer");
    QTest::addColumn<QString>("error");
    QTest::newRow("none") << PeerAnswer::values() << QString();
    QTest::newRow("values that nobody expects") << PeerAnswer::values("(false, 'no')") << QString();
    QTest::newRow("error") << PeerAnswer::error("ru.quon.ZARN.Error.Failed", Refusal.toUtf8()) << Refusal;
    QTest::newRow("death") << PeerAnswer::death()
                           << QStringLiteral("Message recipient disconnected from message bus without replying");
}

void PackageRemovalTest::passesTheAnswerOn()
{
    QFETCH(PeerAnswer, answer);
    QFETCH(QString, error);

    m_packageManager->answer(QStringLiteral("GetPackage"), PeerAnswer::values("(@a{ss} {'name': 'other'},)"));
    m_handler->removePackages({A});
    QVERIFY(happens({packageQuery(A), Managed, removalCall(A)}));
    QVERIFY(m_packageManager->answerHeld(answer));
    QVERIFY(happens(
            {error.isEmpty() ? Removed : failed(error), updatingFinished(A), finished(error.isEmpty(), error, 0)}));
}

// An answer that comes later changes nothing.
void PackageRemovalTest::endsWithTheTimeout()
{
    // Only the removal has so little time.
    const auto hurry = [this] { HandlerInternals::setPackageManagerTimeout(m_handler.get(), 100); };
    m_packageManager->answer(QStringLiteral("GetPackage"), PeerAnswer::values("(@a{ss} {},)").after(hurry));
    m_handler->removePackages({A});
    QVERIFY(happens({packageQuery(A), Managed, removalCall(A), failed(Silence), updatingFinished(A),
                     finished(false, Silence, 0)}));
    QVERIFY(m_packageManager->answerHeld(PeerAnswer::error("ru.quon.ZARN.Error.Failed", "late")));
    QVERIFY(roundTrip(QDBusConnection::systemBus(), QStringLiteral("ru.quon.ZARN")));
    QVERIFY(happens({}));
}

void PackageRemovalTest::releasesTheAnswer()
{
    m_packageManager->answer(QStringLiteral("GetPackage"), PeerAnswer::values("(@a{ss} {},)"));
    m_handler->removePackages({A});
    QCOMPARE(m_handler->findChildren<QDBusPendingCallWatcher *>().size(), 1);
    QVERIFY(happens({packageQuery(A), Managed, removalCall(A)}));
    QVERIFY(m_packageManager->answerHeld(PeerAnswer::values()));
    QVERIFY(happens({Removed, updatingFinished(A), finished(true, QString(), 0)}));
    QVERIFY(m_handler->findChildren<QDBusPendingCallWatcher *>().isEmpty());
}

void PackageRemovalTest::removesByPackageKit_data()
{
    QTest::addColumn<PeerAnswer>("answer");
    QTest::newRow("unknown to the package manager") << PeerAnswer::error("ru.quon.ZARN.Error.Unknown");
    QTest::newRow("no record") << PeerAnswer::values("('a',)");
    QTest::newRow("no answer") << PeerAnswer::death();
}

// Which does not care for anybody's data.
void PackageRemovalTest::removesByPackageKit()
{
    QFETCH(PeerAnswer, answer);

    m_packageManager->answer(QStringLiteral("GetPackage"), answer);
    m_handler->removePackages({A}, true);
    QCOMPARE(count(), 1);
    QVERIFY(happens(QStringList{packageQuery(A), Native, Start} + m_packageKit->calls(0, Resolve)));
    m_packageKit->tellEnd(0, Transaction::ExitSuccess);
    QVERIFY(happens({Removed, updatingFinished(A), finished(true, QString(), 0), Deletion}));
}

// Without a word about it; and a record that comes later is none.
void PackageRemovalTest::removesByPackageKitAfterTheTimeout()
{
    HandlerInternals::setPackageManagerTimeout(m_handler.get(), 100);
    m_packageManager->answer(QStringLiteral("GetPackage"), PeerAnswer::held());
    m_handler->removePackages({A});
    QVERIFY(happens(QStringList{packageQuery(A), Native, Start} + m_packageKit->calls(0, Resolve)));
    QVERIFY(m_packageManager->answerHeld(PeerAnswer::values("(@a{ss} {},)")));
    QVERIFY(roundTrip(QDBusConnection::systemBus(), QStringLiteral("ru.quon.ZARN")));
    QVERIFY(happens({}));
    m_packageKit->tellEnd(0, Transaction::ExitSuccess);
    QVERIFY(happens({Removed, updatingFinished(A), finished(true, QString(), 0), Deletion}));
}

void PackageRemovalTest::passesPackageKitsRefusalOn()
{
    m_handler->removePackages({A});
    QVERIFY(happens(QStringList{packageQuery(A), Native, Start} + m_packageKit->calls(0, Resolve)));
    m_packageKit->tellError(0, Transaction::ErrorNoCache, Refusal);
    QVERIFY(happens(failing(Refusal)
                    + QStringList{failed(Refusal), updatingFinished(A), finished(false, Refusal, 0), Deletion}));
}

// Required: there is no more to tell failure from success than the text.
void PackageRemovalTest::takesARefusalWithoutATextForSuccess()
{
    m_handler->removePackages({A});
    QVERIFY(happens(QStringList{packageQuery(A), Native, Start} + m_packageKit->calls(0, Resolve)));
    m_packageKit->tellError(0, Transaction::ErrorNoCache, QString());
    QVERIFY(happens(failing(QString())
                    + QStringList{Removed, updatingFinished(A), finished(true, QString(), 0), Deletion}));
}

// Required: of one removal come a failure and a success, and the count ends once too often.
void PackageRemovalTest::reportsTwiceWhenTheEndIsQueued()
{
    m_handler->removePackages({A});
    QVERIFY(happens(QStringList{packageQuery(A), Native, Start} + m_packageKit->calls(0, Resolve)));
    m_packageKit->tellError(0, Transaction::ErrorNoCache, Refusal);
    m_packageKit->tellEnd(0, Transaction::ExitFailed);
    QVERIFY(PackageKitPeer::settle());
    QVERIFY(happens(failing(Refusal)
                    + QStringList{failed(Refusal), updatingFinished(A), finished(false, Refusal, 0), Removed,
                                  updatingFinished(A), QStringLiteral("warning: Transaction count out of sync!"),
                                  finished(true, QString(), 0), Deletion}));
}

// Required: the removal is never over.
void PackageRemovalTest::reportsNothingWhenPackageKitSaysNothing()
{
    m_handler->removePackages({A});
    QVERIFY(happens(QStringList{packageQuery(A), Native, Start} + m_packageKit->calls(0, Resolve)));
    m_packageKit->tellPackage(0, QStringLiteral("a;1;;"));
    m_packageKit->tellEnd(0, Transaction::ExitSuccess);
    QVERIFY(happens(
            QStringList(QStringLiteral("debug: Resolved: PackageKit::Transaction::InfoInstalled \"a;1;;\" \"\""))
            + m_packageKit->calls(1, QStringLiteral("RemovePackages(uint64 2, ['a;1;;'], false, false)"))));
    m_packageKit->tellEnd(1, Transaction::ExitCancelled);
    QVERIFY(happens({QStringLiteral("debug: slotUninstallFinished: (\"a\") PackageKit::Transaction::ExitCancelled 0"),
                     Deletion}));
    QCOMPARE(count(), 1);
}

void PackageRemovalTest::announcesAndroidLaunchersBeforeTheRemoval()
{
    const DeviceFile first(QStringLiteral("/usr/share/applications/zindro_launcher_a_b1.desktop"));
    const DeviceFile second(QStringLiteral("/usr/share/applications/zindro_launcher_a_b2.desktop"));
    const QString name = QStringLiteral("ambrel-apk-a.b");
    noteCountWhenAnnounced();
    m_handler->removePackages({name});
    QVERIFY(happens(
            QStringList{packageQuery(name), QStringLiteral("debug: Uninstall \"ambrel-apk-a.b\" via RPM"),
                        updatingStarted(name, QStringLiteral("/usr/share/applications/zindro_launcher_a_b1.desktop")),
                        NothingInFlight,
                        updatingStarted(name, QStringLiteral("/usr/share/applications/zindro_launcher_a_b2.desktop")),
                        NothingInFlight,
                        QStringLiteral("debug: UninstallTransactionPkgKit::start: (\"ambrel-apk-a.b\")")}
            + m_packageKit->calls(0, QStringLiteral("Resolve(uint64 4, ['ambrel-apk-a.b'])"))));
}

void PackageRemovalTest::removesEachByItself()
{
    m_packageManager->answer(QStringLiteral("GetPackage"),
                             {PeerAnswer::values("(@a{ss} {},)"), PeerAnswer::error("ru.quon.ZARN.Error.Unknown")});
    m_handler->removePackages({QStringLiteral("b"), A});
    QCOMPARE(count(), 2);
    m_packageKit->settle();
    QVERIFY(QTest::qWaitFor([this] { return m_journal.entries().contains(m_packageKit->call(0, Resolve)); }));
    m_journal.clear();

    m_packageKit->tellEnd(0, Transaction::ExitSuccess);
    QVERIFY(happens({Removed, updatingFinished(A), finished(true, QString(), 1), Deletion}));
    QVERIFY(m_packageManager->answerHeld(PeerAnswer::error("ru.quon.ZARN.Error.Failed", "no")));
    QVERIFY(happens({QStringLiteral("debug: Failed to uninstall \"b\" \"no\""), updatingFinished(QStringLiteral("b")),
                     finished(false, QStringLiteral("no"), 0)}));
}

void PackageRemovalTest::doesWithoutTheHomeScreen()
{
    const DeviceFile launcher(Launcher);
    m_homeScreen.reset();
    m_packageManager->answer(QStringLiteral("GetPackage"), PeerAnswer::values("(@a{ss} {},)"));
    m_handler->removePackages({A});
    QVERIFY(happens({packageQuery(A), Managed, removalCall(A)}));
    QVERIFY(m_packageManager->answerHeld(PeerAnswer::values()));
    QVERIFY(happens({Removed, finished(true, QString(), 0)}));
}

// PackageKit goes on, and there is nobody to be told.
void PackageRemovalTest::outlivesTheHandler()
{
    m_handler->removePackages({A});
    QVERIFY(happens(QStringList{packageQuery(A), Native, Start} + m_packageKit->calls(0, Resolve)));
    m_handler.reset();
    m_packageKit->tellEnd(0, Transaction::ExitSuccess);
    QVERIFY(happens({Deletion}));
}

VELMORA_TEST(PackageRemovalTest, Gui)

#include "tst_packageremoval.moc"
