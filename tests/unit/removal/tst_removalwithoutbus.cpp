// SPDX-FileCopyrightText: velmora-installationhandler contributors
// SPDX-License-Identifier: BSD-3-Clause

#include "desktopownerresolver.h"
#include "devicefile.h"
#include "journal.h"
#include "messagelog.h"
#include "testrunner.h"
#include "uninstalltransactionpkgkit.h"

#include <QCoreApplication>
#include <QDBusConnection>
#include <QTest>

/** There is no system bus, and so no PackageKit: removals and searches end all the same, though not at once. */
class RemovalWithoutBusTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void failsToRemove();
    void findsTheAndroidApplication();

private:
    void note(const QString &entry) { m_journal.add(entry); }
    bool ends();

    Journal m_journal;
};

bool RemovalWithoutBusTest::ends()
{
    return QTest::qWaitFor([this] { return m_journal.entries().contains(QStringLiteral("deleted")); });
}

void RemovalWithoutBusTest::failsToRemove()
{
    QVERIFY(!QDBusConnection::systemBus().isConnected());
    m_journal.clear();
    const MessageLog log(&m_journal);
    const auto removal = new Package::UninstallTransactionPkgKit({QStringLiteral("a")}, false);
    connect(removal, &Package::Transaction::failure, this,
            [this](const QString &details) { note(QLatin1String("failure: ") + details); });
    connect(removal, &Package::Transaction::success, this, [this] { note(QStringLiteral("success")); });
    connect(removal, &Package::Transaction::finished, this, [this] { note(QStringLiteral("finished")); });
    connect(removal, &QObject::destroyed, this, [this] { note(QStringLiteral("deleted")); });
    removal->start();

    const QString start = QStringLiteral("debug: UninstallTransactionPkgKit::start: (\"a\")");
    QCOMPARE(m_journal.entries(), QStringList(start));
    QVERIFY(ends());
    QCOMPARE(m_journal.entries(),
             QStringList({start,
                          QStringLiteral("debug: Resolve Error: (\"a\") PackageKit::Transaction::ErrorInternalError "
                                         "\"Not connected to the system bus\""),
                          QStringLiteral("debug: void Package::UninstallTransactionPkgKit::giveUp(const QString&) "
                                         "\"Not connected to the system bus\""),
                          QStringLiteral("failure: Not connected to the system bus"), QStringLiteral("finished"),
                          QStringLiteral("debug: deleting UninstallTransactionPkgKit"), QStringLiteral("deleted")}));
}

void RemovalWithoutBusTest::findsTheAndroidApplication()
{
    const QString path = QStringLiteral("/usr/share/applications/app.desktop");
    const DeviceFile launcher(path, "[Desktop Entry]\nX-zindro-apkfile=/data/app.apk\n");
    m_journal.clear();
    const MessageLog log(&m_journal);
    const auto search = new DesktopOwnerResolver(path);
    connect(search, &DesktopOwnerResolver::ownerPackageFound, this, [this] { note(QStringLiteral("owner")); });
    connect(search, &DesktopOwnerResolver::ownerApkFound, this,
            [this](const QString &file, const QString &apk) { note(file + QLatin1Char(' ') + apk); });
    connect(search, &QObject::destroyed, this, [this] { note(QStringLiteral("deleted")); });

    QCOMPARE(m_journal.entries(), QStringList());
    QVERIFY(ends());
    QCOMPARE(m_journal.entries(),
             QStringList({QStringLiteral("warning: Error on resolving desktop file owner "
                                         "PackageKit::Transaction::ErrorInternalError "
                                         "\"Not connected to the system bus\""),
                          path + QLatin1String(" /data/app.apk"), QStringLiteral("deleted")}));
}

VELMORA_TEST(RemovalWithoutBusTest, Core)

#include "tst_removalwithoutbus.moc"
