// SPDX-FileCopyrightText: velmora-installationhandler contributors
// SPDX-License-Identifier: BSD-3-Clause

#include "desktopownerresolver.h"
#include "devicefile.h"
#include "removalfixture.h"
#include "testrunner.h"

#include <QMetaEnum>

#include <memory>

using PackageKit::Transaction;

namespace {

const QString Launcher = "/usr/share/applications/app.desktop"_s;
const QString ApkFile = "/data/app.apk"_s;
const QString Id = "a;1-1;noarch;installed"_s;
const QByteArray Plain = "[Desktop Entry]\nType=Application\n";
const QByteArray Android = "[Desktop Entry]\nX-zindro-apkfile=/data/app.apk\n";

const QString OwnerA = "owner a"_s;
const QString Apk = "apk /data/app.apk of /usr/share/applications/app.desktop"_s;
const QString Deleted = "deleted"_s;

QString errorLine(const QString &error, const QString &details)
{
    return "warning: Error on resolving desktop file owner PackageKit::Transaction::%1 \"%2\""_s.arg(error, details);
}

}

/** The search for the owner of a launcher. */
class DesktopOwnerResolverTest : public RemovalFixture
{
    Q_OBJECT

private:
    DesktopOwnerResolver *resolve(QObject *parent = nullptr)
    {
        const auto resolver = new DesktopOwnerResolver(Launcher, parent);
        connect(resolver, &DesktopOwnerResolver::ownerPackageFound, this,
                [this](const QString &package) { note("owner "_s + package); });
        connect(resolver, &DesktopOwnerResolver::ownerApkFound, this,
                [this](const QString &file, const QString &apk) { note("apk %1 of %2"_s.arg(apk, file)); });
        connect(resolver, &QObject::destroyed, this, [this] { note(Deleted); });
        return resolver;
    }

    // Whether PackageKit is to find the owners of this file, and nothing else has happened.
    bool searches(const QString &file, int transaction = 0)
    {
        return happens({m_packageKit->calls(transaction, "SearchFiles(uint64 4, ['%1'])"_s.arg(file))});
    }

    // Starts the search for the owner of a launcher with these contents.
    bool searchesFor(const QByteArray &contents, int transaction = 0)
    {
        m_launcher->write(contents);
        resolve();
        return searches(contents == Android ? ApkFile : Launcher, transaction);
    }

    std::optional<DeviceFile> m_launcher;

private Q_SLOTS:
    void init()
    {
        RemovalFixture::init();
        m_launcher.emplace(Launcher, Plain);
    }

    void searchesTheFile_data()
    {
        QTest::addColumn<QByteArray>("contents");
        QTest::addColumn<QString>("apk");
        QTest::newRow("no key") << Plain << QString();
        QTest::newRow("empty key") << "[Desktop Entry]\nX-zindro-apkfile=\n"_b << QString();
        QTest::newRow("no group") << "X-zindro-apkfile=/data/app.apk\n"_b << QString();
        QTest::newRow("other group") << "[Desktop Action New]\nX-zindro-apkfile=/data/app.apk\n"_b << QString();
        QTest::newRow("other case") << "[Desktop Entry]\nX-Zindro-Apkfile=/data/app.apk\n"_b << QString();
        QTest::newRow("translated key") << "[Desktop Entry]\nX-zindro-apkfile[de]=/data/app.apk\n"_b << QString();
        QTest::newRow("empty") << QByteArray() << QString();
        QTest::newRow("not a text") << "\x7f"_b + "ELF\0\1\2"_b << QString();

        const QByteArray key = "[Desktop Entry]\nX-zindro-apkfile=";
        QTest::newRow("path") << key + "/data/app.apk\n" << ApkFile;
        QTest::newRow("relative path") << key + "app.apk\n" << "app.apk"_s;
        QTest::newRow("escapes") << key + "/data/my\\sapp.apk\n" << "/data/my app.apk"_s;
        QTest::newRow("UTF-8") << key + "/data/\xc3\xa4.apk\n" << "/data/\u00e4.apk"_s;
    }

    // The owner of the Android package is searched for if the launcher has one, and else that of the launcher.
    void searchesTheFile()
    {
        QFETCH(QByteArray, contents);
        QFETCH(QString, apk);
        m_launcher->write(contents);
        resolve();
        QVERIFY(searches(apk.isEmpty() ? Launcher : apk));
        m_packageKit->tellEnd(0, Transaction::ExitSuccess);
        const QStringList reported("apk %1 of %2"_s.arg(apk, Launcher));
        QVERIFY(happens({apk.isEmpty() ? QStringList() : reported, Deleted}));
    }

    void endsWithoutAnOwner_data()
    {
        QTest::addColumn<PackageKit::Transaction::Exit>("exit");
        const QMetaEnum exits = QMetaEnum::fromType<Transaction::Exit>();
        for (int i = 0; i < exits.keyCount(); ++i) {
            QTest::newRow(exits.key(i)) << static_cast<Transaction::Exit>(exits.value(i));
        }
    }

    // An Android application is reported, and else nothing is.
    void endsWithoutAnOwner()
    {
        QFETCH(PackageKit::Transaction::Exit, exit);
        QVERIFY(searchesFor(Plain));
        m_packageKit->tellEnd(0, exit);
        QVERIFY(happens({Deleted}));

        QVERIFY(searchesFor(Android, 1));
        m_packageKit->tellEnd(1, exit, 4711);
        QVERIFY(happens({Apk, Deleted}));
    }

    // The application is not reported where its package file has an owner. Known behaviour 23, 24.
    void reportsEveryOwner()
    {
        QVERIFY(searchesFor(Android));
        m_packageKit->tellPackage(0, "b;1;;"_s, "summary"_s, Transaction::InfoUnknown);
        m_packageKit->tellPackage(0, Id, {}, Transaction::InfoAvailable);
        m_packageKit->tellPackage(0, Id);
        // The name ends with the first semicolon.
        m_packageKit->tellPackage(0, "no-semicolon"_s);
        m_packageKit->tellPackage(0, "a b\u00e4*;"_s);
        QVERIFY(happens({"owner b"_s, OwnerA, OwnerA, "owner no-semicolon"_s, "owner a b\u00e4*"_s}));
        m_packageKit->tellEnd(0, Transaction::ExitSuccess);
        QVERIFY(happens({Deleted}));
    }

    // A package without a name does not count as an owner.
    void dropsEmptyNames()
    {
        QVERIFY(searchesFor(Android));
        m_packageKit->tellPackage(0, QString());
        m_packageKit->tellPackage(0, ";1-1;noarch;installed"_s);
        QVERIFY(happens({}));
        m_packageKit->tellEnd(0, Transaction::ExitSuccess);
        QVERIFY(happens({Apk, Deleted}));
    }

    void readsTheKeyAgain_data()
    {
        QTest::addColumn<QByteArray>("before");
        QTest::addColumn<QByteArray>("after");
        QTest::addColumn<QStringList>("reported");

        QTest::newRow("gained") << Plain << Android << QStringList(Apk);
        QTest::newRow("lost") << Android << Plain << QStringList();
        QTest::newRow("changed") << Android << "[Desktop Entry]\nX-zindro-apkfile=other\n"_b
                                 << QStringList("apk other of "_s + Launcher);
    }

    void readsTheKeyAgain()
    {
        QFETCH(QByteArray, before);
        QFETCH(QByteArray, after);
        QFETCH(QStringList, reported);
        QVERIFY(searchesFor(before));
        m_launcher->write(after);
        m_packageKit->tellEnd(0, Transaction::ExitSuccess);
        QVERIFY(happens({reported, Deleted}));
    }

    void goesOnAfterAnError()
    {
        QVERIFY(searchesFor(Android));
        m_packageKit->tellError(0, Transaction::ErrorCannotGetLock, "no \"lock\""_s);
        QVERIFY(happens({errorLine("ErrorCannotGetLock"_s, "no \\\"lock\\\""_s)}));
        m_packageKit->tellEnd(0, Transaction::ExitFailed);
        QVERIFY(happens({Apk, Deleted}));
    }

    // The search takes owners before and after the error, and does not end by itself.
    void countsOwnersInSpiteOfAnError()
    {
        QVERIFY(searchesFor(Android));
        m_packageKit->tellPackage(0, Id);
        m_packageKit->tellError(0, Transaction::ErrorOom, QString());
        m_packageKit->tellPackage(0, Id);
        QVERIFY(happens({OwnerA, errorLine("ErrorOom"_s, QString()), OwnerA}));
        m_packageKit->tellEnd(0, Transaction::ExitFailed);
        QVERIFY(happens({Deleted}));
    }

    void doesWithoutPackageKit()
    {
        m_packageKit.reset();
        m_launcher->write(Android);
        resolve();
        const QString absent = "The name org.freedesktop.PackageKit was not provided by any .service files"_s;
        QVERIFY(happens({errorLine("ErrorInternalError"_s, absent), Apk, Deleted}));
    }

    void noticesThatPackageKitVanishes()
    {
        QVERIFY(searchesFor(Plain));
        m_packageKit.reset();
        QVERIFY(happens({errorLine("ErrorProcessKill"_s, "The PackageKit daemon has crashed"_s), Deleted}));
    }

    void belongsToItsParent()
    {
        QObject parent;
        QCOMPARE(resolve(&parent)->parent(), &parent);
        QVERIFY(searches(Launcher));
        m_packageKit->tellEnd(0, Transaction::ExitSuccess);
        QVERIFY(happens({Deleted}));
        QVERIFY(parent.children().isEmpty());
    }
};

VELMORA_TEST(DesktopOwnerResolverTest, Device, Gui)

#include "tst_desktopownerresolver.moc"
