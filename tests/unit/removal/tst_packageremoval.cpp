// SPDX-FileCopyrightText: velmora-installationhandler contributors
// SPDX-License-Identifier: BSD-3-Clause

#include "devicefile.h"
#include "handlerremovalfixture.h"
#include "testrunner.h"

#include <QDBusPendingCallWatcher>

using PackageKit::Transaction;

namespace {

const QString A = "a"_s;
const QString Launcher = "/usr/share/applications/a.desktop"_s;
const QString Managed = "debug: Uninstall \"a\" via ZARN"_s;
const QString NothingInFlight = "0 in flight"_s;
const QString Refusal = "not \"today\""_s;
const QString Silence = "Did not receive a reply. Possible causes include: the remote application did not "
                        "send a reply, the message bus security policy blocked the reply, the reply "
                        "timeout expired, or the network connection was broken."_s;

const PeerAnswer Unknown = PeerAnswer::error("ru.quon.ZARN.Error.Unknown");
const PeerAnswer Known = PeerAnswer::values("(@a{ss} {'name': 'other'},)");

QString quoted(const QString &text)
{
    QString result;
    QDebug(&result).nospace() << text;
    return result;
}

}

/** The back end that removes a package, and the outcome of its answer. */
class PackageRemovalTest : public HandlerRemovalFixture
{
    Q_OBJECT

private:
    // Starts the removal of "a" through PackageKit.
    bool removesNatively()
    {
        m_handler->removePackages({A});
        return happens({packageQuery(A), nativeRemoval(A)});
    }

    // Starts the removal of "a" through the package manager.
    bool removesByThePackageManager()
    {
        m_packageManager->answer("GetPackage"_s, Known);
        m_handler->removePackages({A});
        return happens({packageQuery(A), Managed, removalCall(A)});
    }

    // The last operation in flight ends with an error.
    static QStringList failure(const QString &errorString)
    {
        return {"debug: Failed to uninstall \"a\" "_s + quoted(errorString), updatingFinished(A),
                finished(false, errorString, 0)};
    }

    // The log lines of a removal through PackageKit that fails; they come before those of failure().
    static QStringList giveUp(const QString &details)
    {
        return {"debug: Resolve Error: (\"a\") PackageKit::Transaction::ErrorNoCache "_s + quoted(details),
                "debug: void Package::UninstallTransactionPkgKit::giveUp(const QString&) "_s + quoted(details)};
    }

    void noteCountWhenAnnounced()
    {
        const auto noteCount = [this] { note("%1 in flight"_s.arg(count())); };
        m_homeScreen->answer("updatingStarted"_s, PeerAnswer::values().after(noteCount));
    }

private Q_SLOTS:
    void doesNothingWithoutNames()
    {
        m_handler->removePackages({});
        QVERIFY(happens({}));
        QCOMPARE(count(), 0);
    }

    void asksThePackageManager_data()
    {
        QTest::addColumn<bool>("keepUserdata");
        QTest::addColumn<QString>("options");
        QTest::newRow("with its data") << false << "@a{sv} {}"_s;
        QTest::newRow("without its data") << true << "{'KeepUserData': <true>}"_s;
    }

    void asksThePackageManager()
    {
        QFETCH(bool, keepUserdata);
        QFETCH(QString, options);
        m_packageManager->answer("GetPackage"_s, PeerAnswer::values("(@a{ss} {},)"));
        m_handler->removePackages({A}, keepUserdata);
        QCOMPARE(count(), 1);
        QCOMPARE(m_handler->findChildren<QDBusPendingCallWatcher *>().size(), 1);
        QVERIFY(happens({packageQuery(A), Managed, removalCall(A, options)}));
        QVERIFY(m_packageManager->answerHeld(PeerAnswer::values()));
        QVERIFY(happens({success(A)}));
        QVERIFY(m_handler->findChildren<QDBusPendingCallWatcher *>().isEmpty());
    }

    // The removal does not count as in flight before the back end has been asked.
    void announcesTheLauncher()
    {
        const DeviceFile launcher(Launcher);
        m_packageManager->answer("GetPackage"_s, Known);
        noteCountWhenAnnounced();
        m_handler->removePackages({A});
        QVERIFY(happens({packageQuery(A), Managed, updatingStarted(A, Launcher), NothingInFlight, removalCall(A)}));
        QCOMPARE(count(), 1);
    }

    void announcesAndroidLaunchersBeforeTheRemoval()
    {
        const QString name = "ambrel-apk-a.b"_s;
        const QString first = "/usr/share/applications/zindro_launcher_a_b1.desktop"_s;
        const QString second = "/usr/share/applications/zindro_launcher_a_b2.desktop"_s;
        const DeviceFile firstFile(first);
        const DeviceFile secondFile(second);
        noteCountWhenAnnounced();
        m_handler->removePackages({name});
        const QStringList removal = nativeRemoval(name);
        QVERIFY(happens({packageQuery(name), removal.first(), updatingStarted(name, first), NothingInFlight,
                         updatingStarted(name, second), NothingInFlight, removal.mid(1)}));
    }

    void passesTheAnswerOn_data()
    {
        QTest::addColumn<PeerAnswer>("answer");
        QTest::addColumn<QString>("error");
        QTest::newRow("unexpected values") << PeerAnswer::values("(false, 'no')") << QString();
        QTest::newRow("error") << PeerAnswer::error("ru.quon.ZARN.Error.Failed", Refusal.toUtf8()) << Refusal;
        QTest::newRow("death") << PeerAnswer::death()
                               << "Message recipient disconnected from message bus without replying"_s;
    }

    void passesTheAnswerOn()
    {
        QFETCH(PeerAnswer, answer);
        QFETCH(QString, error);
        QVERIFY(removesByThePackageManager());
        QVERIFY(m_packageManager->answerHeld(answer));
        QVERIFY(happens({error.isEmpty() ? success(A) : failure(error)}));
    }

    // An answer that comes later changes nothing.
    void endsWithTheTimeout()
    {
        // The query before the removal has all its time.
        const auto hurry = [this] { HandlerInternals::packageManager(m_handler.get()).setTimeout(100); };
        m_packageManager->answer("GetPackage"_s, Known.after(hurry));
        m_handler->removePackages({A});
        QVERIFY(happens({packageQuery(A), Managed, failure(Silence)}, removalCall(A)));
        QVERIFY(m_packageManager->answerHeld(PeerAnswer::error("ru.quon.ZARN.Error.Failed", "late")));
        QVERIFY(roundTrip(QDBusConnection::systemBus(), "ru.quon.ZARN"_s));
        QVERIFY(happens({}));
    }

    void removesByPackageKit_data()
    {
        QTest::addColumn<PeerAnswer>("answer");
        QTest::newRow("unknown to the package manager") << Unknown;
        QTest::newRow("no record") << PeerAnswer::values("('a',)");
        QTest::newRow("no answer") << PeerAnswer::death();
    }

    // Known behaviour 16.
    void removesByPackageKit()
    {
        QFETCH(PeerAnswer, answer);
        m_packageManager->answer("GetPackage"_s, answer);
        m_handler->removePackages({A}, true);
        QCOMPARE(count(), 1);
        QVERIFY(happens({packageQuery(A), nativeRemoval(A)}));
        m_packageKit->tellEnd(0, Transaction::ExitSuccess);
        QVERIFY(happens({success(A), deletion()}));
    }

    // A record that comes later changes nothing. The time-out is not logged.
    void removesByPackageKitAfterTheTimeout()
    {
        HandlerInternals::packageManager(m_handler.get()).setTimeout(100);
        m_packageManager->answer("GetPackage"_s, PeerAnswer::held());
        m_handler->removePackages({A});
        QVERIFY(happens({nativeRemoval(A)}, packageQuery(A)));
        QVERIFY(m_packageManager->answerHeld(Known));
        QVERIFY(roundTrip(QDBusConnection::systemBus(), "ru.quon.ZARN"_s));
        QVERIFY(happens({}));
        m_packageKit->tellEnd(0, Transaction::ExitSuccess);
        QVERIFY(happens({success(A), deletion()}));
    }

    void passesPackageKitsErrorOn_data()
    {
        QTest::addColumn<QString>("details");
        QTest::newRow("with a text") << Refusal;
        QTest::newRow("without a text") << QString();
    }

    // Known behaviour 34.
    void passesPackageKitsErrorOn()
    {
        QFETCH(QString, details);
        QVERIFY(removesNatively());
        m_packageKit->tellError(0, Transaction::ErrorNoCache, details);
        QVERIFY(happens({giveUp(details), details.isEmpty() ? success(A) : failure(details), deletion()}));
    }

    // Known behaviour 23, 27.
    void reportsTwiceWhenTheEndIsQueued()
    {
        QVERIFY(removesNatively());
        m_packageKit->tellError(0, Transaction::ErrorNoCache, Refusal);
        m_packageKit->tellEnd(0, Transaction::ExitFailed);
        QVERIFY(PackageKitPeer::settle());
        QVERIFY(happens({giveUp(Refusal), failure(Refusal), success(A).mid(0, 2),
                         "warning: Transaction count out of sync!"_s, finished(true, QString(), 0), deletion()}));
    }

    // Known behaviour 20.
    void reportsNothingWithoutAnError()
    {
        QVERIFY(removesNatively());
        m_packageKit->tellPackage(0, "a;1;;"_s);
        m_packageKit->tellEnd(0, Transaction::ExitSuccess);
        QVERIFY(happens({"debug: Resolved: PackageKit::Transaction::InfoInstalled \"a;1;;\" \"\""_s,
                         m_packageKit->calls(1, "RemovePackages(uint64 2, ['a;1;;'], false, false)"_s)}));
        m_packageKit->tellEnd(1, Transaction::ExitCancelled);
        QVERIFY(happens(
                {"debug: slotUninstallFinished: (\"a\") PackageKit::Transaction::ExitCancelled 0"_s, deletion()}));
        QCOMPARE(count(), 1);
    }

    void removesEachByItself()
    {
        m_packageManager->answer("GetPackage"_s, {Known, Unknown});
        m_handler->removePackages({"b"_s, A});
        QCOMPARE(count(), 2);
        QVERIFY(waitForEntry(nativeRemoval(A).last()));
        QVERIFY(waitForEntry(removalCall("b"_s)));
        m_journal.clear();

        m_packageKit->tellEnd(0, Transaction::ExitSuccess);
        QVERIFY(happens({success(A).mid(0, 2), finished(true, QString(), 1), deletion()}));
        QVERIFY(m_packageManager->answerHeld(PeerAnswer::error("ru.quon.ZARN.Error.Failed", "no")));
        QVERIFY(happens(
                {"debug: Failed to uninstall \"b\" \"no\""_s, updatingFinished("b"_s), finished(false, "no"_s, 0)}));
    }

    void doesWithoutTheHomeScreen()
    {
        const DeviceFile launcher(Launcher);
        m_homeScreen.reset();
        QVERIFY(removesByThePackageManager());
        QVERIFY(m_packageManager->answerHeld(PeerAnswer::values()));
        QVERIFY(happens({success(A).first(), finished(true, QString(), 0)}));
    }

    // PackageKit goes on with the removal, and its end reaches nobody.
    void outlivesTheHandler()
    {
        QVERIFY(removesNatively());
        m_handler.reset();
        m_packageKit->tellEnd(0, Transaction::ExitSuccess);
        QVERIFY(happens({deletion()}));
    }
};

VELMORA_TEST(PackageRemovalTest, Device, Gui)

#include "tst_packageremoval.moc"
