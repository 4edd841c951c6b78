// SPDX-FileCopyrightText: velmora-installationhandler contributors
// SPDX-License-Identifier: BSD-3-Clause

#include "handlerremovalscene.h"

#include "devicefile.h"
#include "devicetest.h"
#include "roundtrip.h"

#include <QDBusPendingCallWatcher>

using PackageKit::Transaction;

namespace {

const QString App = QStringLiteral("app");
const QString Launcher = QStringLiteral("/usr/share/applications/app.desktop");
const QString Path = QStringLiteral("/org/velmoraos/installationhandler");
const QString Interface = QStringLiteral("org.velmoraos.installationhandler");
const QString Search = QStringLiteral("SearchFiles(uint64 4, ['/data/app.apk'])");
const QString Removal = QStringLiteral("com.zelka.zindro /com/zelka/zindro com.zelka.zindro.removeFile"
                                       "('/usr/share/applications/app.desktop',)");

}

/** The removal of an Android application whose package file somebody may own, by its launcher. */
class DesktopFileRemovalTest : public HandlerRemovalScene
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void cleanup();

    void isOverWhenTheDaemonIsCalled();
    void searchesAfterTheTimeout();
    void outlivesTheHandler_data();
    void outlivesTheHandler();

private:
    bool ask();
    QString state() const;

    std::optional<DeviceFile> m_launcher;
    std::unique_ptr<RecordingPeer> m_zindro;
};

void DesktopFileRemovalTest::init()
{
    m_zindro = std::make_unique<RecordingPeer>(qEnvironmentVariable("DBUS_SYSTEM_BUS_ADDRESS"),
                                               QStringList(QStringLiteral("com.zelka.zindro")), &m_journal);
    m_zindro->answer(QStringLiteral("removeFile"), PeerAnswer::values("(true,)"));
    m_launcher.emplace(Launcher, "[Desktop Entry]\nX-zindro-apkfile=/data/app.apk\n");
    HandlerRemovalScene::init();
    QVERIFY(QDBusConnection::sessionBus().registerObject(Path, m_handler.get(), QDBusConnection::ExportAllContents));
}

void DesktopFileRemovalTest::cleanup()
{
    HandlerRemovalScene::cleanup();
    m_launcher.reset();
    m_zindro.reset();
}

// From the bus, since whoever calls is looked at; and whether it has been answered without an error.
bool DesktopFileRemovalTest::ask()
{
    const QString name = QStringLiteral("caller");
    const QDBusConnection bus = QDBusConnection::connectToBus(QDBusConnection::SessionBus, name);
    QDBusMessage request = QDBusMessage::createMethodCall(QDBusConnection::sessionBus().baseService(), Path, Interface,
                                                          QStringLiteral("removePackageByDesktopFile"));
    request << Launcher;
    const QDBusPendingCallWatcher reply(bus.asyncCall(request));
    const bool answered = QTest::qWaitFor([&] { return reply.isFinished(); });
    QDBusConnection::disconnectFromBus(name);
    return answered && !reply.isError();
}

QString DesktopFileRemovalTest::state() const
{
    return QStringLiteral("%1 in flight, %2").arg(count()).arg(
            HandlerInternals::idleTimer(m_handler.get())->isActive() ? QStringLiteral("idle") : QStringLiteral("busy"));
}

// Required: the wait for the daemon is no operation in flight.
void DesktopFileRemovalTest::isOverWhenTheDaemonIsCalled()
{
    m_zindro->answer(QStringLiteral("removeFile"), PeerAnswer::values("(true,)").after([this] { note(state()); }));
    QVERIFY(ask());
    QVERIFY(happens(QStringList{packageQuery(App)} + m_packageKit->calls(0, Search)));
    QCOMPARE(state(), QStringLiteral("1 in flight, busy"));
    m_packageKit->tellEnd(0, Transaction::ExitSuccess);
    QVERIFY(happens({Removal, QStringLiteral("0 in flight, idle")}));
    QCOMPARE(state(), QStringLiteral("0 in flight, idle"));
}

// Without a word about it; and a record that comes later is none.
void DesktopFileRemovalTest::searchesAfterTheTimeout()
{
    HandlerInternals::setPackageManagerTimeout(m_handler.get(), 100);
    m_packageManager->answer(QStringLiteral("GetPackage"), PeerAnswer::held());
    QVERIFY(ask());
    QVERIFY(happens(QStringList{packageQuery(App)} + m_packageKit->calls(0, Search)));
    QVERIFY(m_packageManager->answerHeld(PeerAnswer::values("(@a{ss} {},)")));
    QVERIFY(roundTrip(QDBusConnection::systemBus(), QStringLiteral("ru.quon.ZARN")));
    QVERIFY(happens({}));
    m_packageKit->tellEnd(0, Transaction::ExitSuccess);
    QVERIFY(happens({Removal}));
}

void DesktopFileRemovalTest::outlivesTheHandler_data()
{
    QTest::addColumn<bool>("owned");
    QTest::newRow("owner") << true;
    QTest::newRow("no owner") << false;
}

// The search ends, and there is nobody to be told.
void DesktopFileRemovalTest::outlivesTheHandler()
{
    QFETCH(bool, owned);

    QVERIFY(ask());
    QVERIFY(happens(QStringList{packageQuery(App)} + m_packageKit->calls(0, Search)));
    m_handler.reset();
    if (owned) {
        m_packageKit->tellPackage(0, QStringLiteral("a;1;;"));
    }
    m_packageKit->tellEnd(0, Transaction::ExitSuccess);
    QVERIFY(happens({}));
}

int main(int argc, char **argv)
{
    return runOnDevice<DesktopFileRemovalTest>(argc, argv);
}

#include "tst_desktopfileremoval.moc"
