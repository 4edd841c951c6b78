// SPDX-FileCopyrightText: velmora-installationhandler contributors
// SPDX-License-Identifier: BSD-3-Clause

#include "handlerremovalscene.h"

#include "desktopownerresolver.h"
#include "devicefile.h"
#include "roundtrip.h"
#include "testrunner.h"

#include <QDBusPendingCallWatcher>

using PackageKit::Transaction;

namespace {

const QString A = QStringLiteral("a");
const QString B = QStringLiteral("b");
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
    void isOverWhenTheOwnerIsRemoved();
    void endsOnceMoreForEachFurtherOwner();
    void searchesAfterTheTimeout();
    void outlivesTheHandler_data();
    void outlivesTheHandler();

private:
    bool ask();
    QString state() const;
    QStringList beginning(const QString &package, int transaction) const;
    QStringList end(const QString &package) const;

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
    return QStringLiteral("%1 in flight, %2")
            .arg(count())
            .arg(HandlerInternals::idleTimer(m_handler.get())->isActive() ? QStringLiteral("idle")
                                                                          : QStringLiteral("busy"));
}

// What a removal through PackageKit consists of, and what it comes to when nothing of the package is installed.
QStringList DesktopFileRemovalTest::beginning(const QString &package, int transaction) const
{
    return QStringList{QStringLiteral("debug: Uninstall \"%1\" via RPM").arg(package),
                       QStringLiteral("debug: UninstallTransactionPkgKit::start: (\"%1\")").arg(package)}
    + m_packageKit->calls(transaction, QStringLiteral("Resolve(uint64 4, ['%1'])").arg(package));
}

QStringList DesktopFileRemovalTest::end(const QString &package) const
{
    return {QStringLiteral("debug: Uninstalled \"%1\"").arg(package), updatingFinished(package),
            finished(true, QString(), 0), QStringLiteral("debug: deleting UninstallTransactionPkgKit")};
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

// Required: the search ends as an operation before the removal begins as one, not when it has begun.
void DesktopFileRemovalTest::isOverWhenTheOwnerIsRemoved()
{
    const PeerAnswer unknown = PeerAnswer::error("ru.quon.ZARN.Error.Unknown");
    m_packageManager->answer(QStringLiteral("GetPackage"), {unknown, unknown.after([this] { note(state()); })});
    QVERIFY(ask());
    QVERIFY(happens(QStringList{packageQuery(App)} + m_packageKit->calls(0, Search)));
    QCOMPARE(state(), QStringLiteral("1 in flight, busy"));
    m_packageKit->tellPackage(0, QStringLiteral("a;1;;"));
    QVERIFY(happens(QStringList{packageQuery(A), QStringLiteral("0 in flight, idle")} + beginning(A, 1)));
    QCOMPARE(state(), QStringLiteral("1 in flight, busy"));
}

// Required: with nothing else in flight that is once too often, and said before the removal is counted.
void DesktopFileRemovalTest::endsOnceMoreForEachFurtherOwner()
{
    QVERIFY(ask());
    QVERIFY(happens(QStringList{packageQuery(App)} + m_packageKit->calls(0, Search)));
    m_packageKit->tellPackage(0, QStringLiteral("a;1;;"));
    QVERIFY(happens(QStringList{packageQuery(A)} + beginning(A, 1)));
    m_packageKit->tellEnd(1, Transaction::ExitSuccess);
    QVERIFY(happens(end(A)));

    m_packageKit->tellPackage(0, QStringLiteral("b;1;;"));
    QVERIFY(happens(QStringList{QStringLiteral("warning: Transaction count out of sync!"), packageQuery(B)}
                    + beginning(B, 2)));
    QCOMPARE(state(), QStringLiteral("1 in flight, busy"));
    m_packageKit->tellEnd(2, Transaction::ExitSuccess);
    QVERIFY(happens(end(B)));
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
    QVERIFY(m_handler->findChildren<DesktopOwnerResolver *>().isEmpty());
    m_handler.reset();
    if (owned) {
        m_packageKit->tellPackage(0, QStringLiteral("a;1;;"));
    }
    m_packageKit->tellEnd(0, Transaction::ExitSuccess);
    QVERIFY(happens({}));
}

VELMORA_TEST(DesktopFileRemovalTest, Gui)

#include "tst_desktopfileremoval.moc"
