// SPDX-FileCopyrightText: velmora-installationhandler contributors
// SPDX-License-Identifier: BSD-3-Clause

#include "desktopownerresolver.h"
#include "devicefile.h"
#include "journal.h"
#include "testrunner.h"
#include "uninstalltransactionpkgkit.h"

#include <QDBusConnection>

#include <optional>

/**
 * Without a system bus there is no PackageKit. Removals and searches end all the same, though not inside the call that
 * starts them. Known behaviour 9, 42.
 */
class RemovalWithoutBusTest : public QObject
{
    Q_OBJECT

private:
    void note(const QString &entry) { m_journal.add(entry); }

    bool ends(QObject *object)
    {
        bool deleted = false;
        connect(object, &QObject::destroyed, this, [&] { deleted = true; });
        return waitFor([&] { return deleted; }, "the deletion");
    }

    Journal m_journal;
    std::optional<MessageLog> m_log;

private Q_SLOTS:
    void init()
    {
        m_journal.clear();
        m_log.emplace(&m_journal);
    }

    void cleanup() { m_log.reset(); }

    void failsToRemove()
    {
        QVERIFY(!QDBusConnection::systemBus().isConnected());
        m_journal.clear();
        const auto removal = new Package::UninstallTransactionPkgKit({"a"_s}, false);
        connect(removal, &Package::Transaction::failure, this,
                [this](const QString &details) { note("failure: "_s + details); });
        connect(removal, &Package::Transaction::success, this, [this] { note("success"_s); });
        connect(removal, &Package::Transaction::finished, this, [this] { note("finished"_s); });
        removal->start();

        const QString start = "debug: UninstallTransactionPkgKit::start: (\"a\")"_s;
        QCOMPARE(m_journal.entries(), QStringList(start));
        QVERIFY(ends(removal));
        QCOMPARE(m_journal.entries(),
                 QStringList({start,
                              "debug: Resolve Error: (\"a\") PackageKit::Transaction::ErrorInternalError "
                              "\"Not connected to the system bus\""_s,
                              "debug: void Package::UninstallTransactionPkgKit::giveUp(const QString&) "
                              "\"Not connected to the system bus\""_s,
                              "failure: Not connected to the system bus"_s, "finished"_s,
                              "debug: deleting UninstallTransactionPkgKit"_s}));
    }

    void findsTheAndroidApplication()
    {
        const QString path = "/usr/share/applications/app.desktop"_s;
        const DeviceFile launcher(path, "[Desktop Entry]\nX-zindro-apkfile=/data/app.apk\n");
        const auto search = new DesktopOwnerResolver(path);
        connect(search, &DesktopOwnerResolver::ownerPackageFound, this, [this] { note("owner"_s); });
        connect(search, &DesktopOwnerResolver::ownerApkFound, this,
                [this](const QString &file, const QString &apk) { note(file + " "_s + apk); });

        QCOMPARE(m_journal.entries(), QStringList());
        QVERIFY(ends(search));
        QCOMPARE(m_journal.entries(),
                 QStringList({"warning: Error on resolving desktop file owner "
                              "PackageKit::Transaction::ErrorInternalError \"Not connected to the system bus\""_s,
                              path + " /data/app.apk"_s}));
    }
};

VELMORA_TEST(RemovalWithoutBusTest, Device, Core)

#include "tst_removalwithoutbus.moc"
