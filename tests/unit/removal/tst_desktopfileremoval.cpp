// SPDX-FileCopyrightText: velmora-installationhandler contributors
// SPDX-License-Identifier: BSD-3-Clause

#include "desktopownerresolver.h"
#include "devicefile.h"
#include "handlerremovalfixture.h"
#include "testrunner.h"

#include <QDBusPendingCallWatcher>

using PackageKit::Transaction;

namespace {

const QString A = "a"_s;
const QString B = "b"_s;
const QString App = "app"_s;
const QString Launcher = "/usr/share/applications/app.desktop"_s;
const QString Path = "/org/velmoraos/installationhandler"_s;
const QString Interface = "org.velmoraos.installationhandler"_s;
const QString Search = "SearchFiles(uint64 4, ['/data/app.apk'])"_s;
const QString Removal =
        "com.zelka.zindro /com/zelka/zindro com.zelka.zindro.removeFile('/usr/share/applications/app.desktop',)"_s;
const QString Busy = "1 in flight, busy"_s;
const QString Idle = "0 in flight, idle"_s;

}

/** The removal of an Android application whose package file may have an owner, by its launcher. */
class DesktopFileRemovalTest : public HandlerRemovalFixture
{
    Q_OBJECT

private:
    // Requests the removal over the bus, since the service checks the caller. Returns whether the call succeeded.
    bool request()
    {
        const QString name = "caller"_s;
        const QDBusConnection bus = QDBusConnection::connectToBus(QDBusConnection::SessionBus, name);
        QDBusMessage call = QDBusMessage::createMethodCall(QDBusConnection::sessionBus().baseService(), Path, Interface,
                                                           "removePackageByDesktopFile"_s);
        call << Launcher;
        const QDBusPendingCallWatcher reply(bus.asyncCall(call, WaitLimit));
        const bool answered = waitFor([&] { return reply.isFinished(); }, "the reply");
        QDBusConnection::disconnectFromBus(name);
        return answered && !reply.isError();
    }

    bool searches() { return request() && happens({packageQuery(App), m_packageKit->calls(0, Search)}); }

    QString state() const
    {
        const bool idle = HandlerInternals::idleTimer(m_handler.get()).isActive();
        return "%1 in flight, %2"_s.arg(count()).arg(idle ? "idle"_s : "busy"_s);
    }

    std::optional<DeviceFile> m_launcher;
    std::unique_ptr<RecordingPeer> m_zindro;

private Q_SLOTS:
    void init()
    {
        m_zindro = std::make_unique<RecordingPeer>(qEnvironmentVariable("DBUS_SYSTEM_BUS_ADDRESS"),
                                                   QStringList("com.zelka.zindro"_s), &m_journal);
        m_zindro->answer("removeFile"_s, PeerAnswer::values("(true,)"));
        m_launcher.emplace(Launcher, "[Desktop Entry]\nX-zindro-apkfile=/data/app.apk\n");
        HandlerRemovalFixture::init();
        QVERIFY(QDBusConnection::sessionBus().registerObject(Path, m_handler.get(),
                                                             QDBusConnection::ExportAllContents));
    }

    void cleanup()
    {
        HandlerRemovalFixture::cleanup();
        m_launcher.reset();
        m_zindro.reset();
    }

    // The call of the Android daemon is no operation in flight. Known behaviour 41.
    void isOverWhenTheDaemonIsCalled()
    {
        m_zindro->answer("removeFile"_s, PeerAnswer::values("(true,)").after([this] { note(state()); }));
        QVERIFY(searches());
        QCOMPARE(state(), Busy);
        m_packageKit->tellEnd(0, Transaction::ExitSuccess);
        QVERIFY(happens({Removal, Idle}));
        QCOMPARE(state(), Idle);
    }

    // The search ends as an operation before the removal of the owner begins as one.
    void isOverWhenTheOwnerIsRemoved()
    {
        const PeerAnswer unknown = PeerAnswer::error("ru.quon.ZARN.Error.Unknown");
        m_packageManager->answer("GetPackage"_s, {unknown, unknown.after([this] { note(state()); })});
        QVERIFY(searches());
        QCOMPARE(state(), Busy);
        m_packageKit->tellPackage(0, "a;1;;"_s);
        QVERIFY(happens({packageQuery(A), Idle, nativeRemoval(A, 1)}));
        QCOMPARE(state(), Busy);
    }

    // The warning comes before the second removal counts. Known behaviour 23.
    void endsOnceMoreForEachFurtherOwner()
    {
        QVERIFY(searches());
        m_packageKit->tellPackage(0, "a;1;;"_s);
        QVERIFY(happens({packageQuery(A), nativeRemoval(A, 1)}));
        m_packageKit->tellEnd(1, Transaction::ExitSuccess);
        QVERIFY(happens({success(A), deletion()}));

        m_packageKit->tellPackage(0, "b;1;;"_s);
        QVERIFY(happens({"warning: Transaction count out of sync!"_s, packageQuery(B), nativeRemoval(B, 2)}));
        QCOMPARE(state(), Busy);
        m_packageKit->tellEnd(2, Transaction::ExitSuccess);
        QVERIFY(happens({success(B), deletion()}));
        QCOMPARE(state(), Idle);
    }

    // A record that comes later changes nothing. The time-out is not logged.
    void searchesAfterTheTimeout()
    {
        HandlerInternals::packageManager(m_handler.get()).setTimeout(100);
        m_packageManager->answer("GetPackage"_s, PeerAnswer::held());
        QVERIFY(request());
        QVERIFY(happens({m_packageKit->calls(0, Search)}, packageQuery(App)));
        QVERIFY(m_packageManager->answerHeld(PeerAnswer::values("(@a{ss} {},)")));
        QVERIFY(roundTrip(QDBusConnection::systemBus(), "ru.quon.ZARN"_s));
        QVERIFY(happens({}));
        m_packageKit->tellEnd(0, Transaction::ExitSuccess);
        QVERIFY(happens({Removal}));
    }

    void outlivesTheHandler_data()
    {
        QTest::addColumn<bool>("owned");
        QTest::newRow("owner") << true;
        QTest::newRow("no owner") << false;
    }

    // The search ends, and its outcome reaches nobody.
    void outlivesTheHandler()
    {
        QFETCH(bool, owned);
        QVERIFY(searches());
        QVERIFY(m_handler->findChildren<DesktopOwnerResolver *>().isEmpty());
        m_handler.reset();
        if (owned) {
            m_packageKit->tellPackage(0, "a;1;;"_s);
        }
        m_packageKit->tellEnd(0, Transaction::ExitSuccess);
        QVERIFY(happens({}));
    }
};

VELMORA_TEST(DesktopFileRemovalTest, Device, Gui)

#include "tst_desktopfileremoval.moc"
