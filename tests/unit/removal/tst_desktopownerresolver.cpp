// SPDX-FileCopyrightText: velmora-installationhandler contributors
// SPDX-License-Identifier: BSD-3-Clause

#include "ownersearchscene.h"

#include "testrunner.h"

#include <QMetaEnum>

using PackageKit::Transaction;

namespace {

const QString Launcher = OwnerSearchScene::launcher();
const QString Id = QStringLiteral("a;1-1;noarch;installed");
const QByteArray Android = "[Desktop Entry]\nX-zindro-apkfile=/data/app.apk\n";

const QString OwnerA = QStringLiteral("owner a");
const QString Apk = QStringLiteral("apk /data/app.apk of /usr/share/applications/app.desktop");
const QString Deleted = QStringLiteral("deleted");

}

/** Who owns a launcher. */
class DesktopOwnerResolverTest : public OwnerSearchScene
{
    Q_OBJECT

private Q_SLOTS:
    void searchesTheLauncher_data();
    void searchesTheLauncher();
    void searchesTheAndroidPackage_data();
    void searchesTheAndroidPackage();
    void reportsAnOwner_data();
    void reportsAnOwner();
    void reportsEveryOwner();
    void takesTheNameUpToTheFirstSemicolon();
    void dropsEmptyNames();
    void reportsTheAndroidApplication_data();
    void reportsTheAndroidApplication();
    void endsSilently_data();
    void endsSilently();
    void readsTheKeyAgain_data();
    void readsTheKeyAgain();
};

void DesktopOwnerResolverTest::searchesTheLauncher_data()
{
    QTest::addColumn<QByteArray>("contents");
    QTest::newRow("no key") << QByteArray("[Desktop Entry]\nType=Application\n");
    QTest::newRow("empty key") << QByteArray("[Desktop Entry]\nX-zindro-apkfile=\n");
    QTest::newRow("no group") << QByteArray("X-zindro-apkfile=/data/app.apk\n");
    QTest::newRow("other group") << QByteArray("[Desktop Action New]\nX-zindro-apkfile=/data/app.apk\n");
    QTest::newRow("other case") << QByteArray("[Desktop Entry]\nX-Zindro-Apkfile=/data/app.apk\n");
    QTest::newRow("translated key") << QByteArray("[Desktop Entry]\nX-zindro-apkfile[de]=/data/app.apk\n");
    QTest::newRow("empty") << QByteArray();
    QTest::newRow("no text") << QByteArray("\x7f"
                                           "ELF\0\1\2",
                                           7);
}

void DesktopOwnerResolverTest::searchesTheLauncher()
{
    QFETCH(QByteArray, contents);

    m_launcher->write(contents);
    resolve();
    QVERIFY(searches(Launcher));
    m_packageKit->tellEnd(0, Transaction::ExitSuccess);
    QVERIFY(happens({Deleted}));
}

void DesktopOwnerResolverTest::searchesTheAndroidPackage_data()
{
    QTest::addColumn<QByteArray>("value");
    QTest::addColumn<QString>("term");
    QTest::newRow("path") << QByteArray("/data/app.apk") << QStringLiteral("/data/app.apk");
    QTest::newRow("relative path") << QByteArray("app.apk") << QStringLiteral("app.apk");
    QTest::newRow("escapes") << QByteArray("/data/my\\sapp.apk") << QStringLiteral("/data/my app.apk");
    QTest::newRow("UTF-8") << QByteArray("/data/\xc3\xa4.apk") << QStringLiteral("/data/\u00e4.apk");
}

void DesktopOwnerResolverTest::searchesTheAndroidPackage()
{
    QFETCH(QByteArray, value);
    QFETCH(QString, term);

    m_launcher->write("[Desktop Entry]\nX-zindro-apkfile=" + value + '\n');
    resolve();
    QVERIFY(searches(term));
    m_packageKit->tellEnd(0, Transaction::ExitSuccess);
    QVERIFY(happens({QStringLiteral("apk %1 of %2").arg(term, Launcher), Deleted}));
}

void DesktopOwnerResolverTest::reportsAnOwner_data()
{
    QTest::addColumn<QByteArray>("contents");
    QTest::addColumn<QString>("term");
    QTest::newRow("of the launcher") << QByteArray("[Desktop Entry]\n") << Launcher;
    QTest::newRow("of the Android package") << Android << QStringLiteral("/data/app.apk");
}

void DesktopOwnerResolverTest::reportsAnOwner()
{
    QFETCH(QByteArray, contents);
    QFETCH(QString, term);

    m_launcher->write(contents);
    resolve();
    QVERIFY(searches(term));
    m_packageKit->tellPackage(0, Id);
    QVERIFY(happens({OwnerA}));
    m_packageKit->tellEnd(0, Transaction::ExitSuccess);
    QVERIFY(happens({Deleted}));
}

void DesktopOwnerResolverTest::reportsEveryOwner()
{
    resolve();
    QVERIFY(searches(Launcher));
    m_packageKit->tellPackage(0, QStringLiteral("b;1;;"), QStringLiteral("summary"), Transaction::InfoUnknown);
    m_packageKit->tellPackage(0, Id, {}, Transaction::InfoAvailable);
    m_packageKit->tellPackage(0, Id);
    QVERIFY(happens({QStringLiteral("owner b"), OwnerA, OwnerA}));
    m_packageKit->tellEnd(0, Transaction::ExitSuccess);
    QVERIFY(happens({Deleted}));
}

void DesktopOwnerResolverTest::takesTheNameUpToTheFirstSemicolon()
{
    resolve();
    QVERIFY(searches(Launcher));
    m_packageKit->tellPackage(0, QStringLiteral("no-semicolon"));
    m_packageKit->tellPackage(0, QStringLiteral("a b\u00e4*;"));
    QVERIFY(happens({QStringLiteral("owner no-semicolon"), QStringLiteral("owner a b\u00e4*")}));
}

// A package without a name is no owner, either.
void DesktopOwnerResolverTest::dropsEmptyNames()
{
    m_launcher->write(Android);
    resolve();
    QVERIFY(searches(QStringLiteral("/data/app.apk")));
    m_packageKit->tellPackage(0, QString());
    m_packageKit->tellPackage(0, QStringLiteral(";1-1;noarch;installed"));
    QVERIFY(happens({}));
    m_packageKit->tellEnd(0, Transaction::ExitSuccess);
    QVERIFY(happens({Apk, Deleted}));
}

void DesktopOwnerResolverTest::reportsTheAndroidApplication_data()
{
    QTest::addColumn<PackageKit::Transaction::Exit>("exit");
    const QMetaEnum exits = QMetaEnum::fromType<Transaction::Exit>();
    for (int i = 0; i < exits.keyCount(); ++i) {
        QTest::newRow(exits.key(i)) << static_cast<Transaction::Exit>(exits.value(i));
    }
}

void DesktopOwnerResolverTest::reportsTheAndroidApplication()
{
    QFETCH(PackageKit::Transaction::Exit, exit);

    m_launcher->write(Android);
    resolve();
    QVERIFY(searches(QStringLiteral("/data/app.apk")));
    m_packageKit->tellEnd(0, exit, 4711);
    QVERIFY(happens({Apk, Deleted}));
}

void DesktopOwnerResolverTest::endsSilently_data()
{
    reportsTheAndroidApplication_data();
}

void DesktopOwnerResolverTest::endsSilently()
{
    QFETCH(PackageKit::Transaction::Exit, exit);

    resolve();
    QVERIFY(searches(Launcher));
    m_packageKit->tellEnd(0, exit);
    QVERIFY(happens({Deleted}));
}

void DesktopOwnerResolverTest::readsTheKeyAgain_data()
{
    QTest::addColumn<QByteArray>("before");
    QTest::addColumn<QString>("term");
    QTest::addColumn<QByteArray>("after");
    QTest::addColumn<QStringList>("reported");

    const QByteArray plain = "[Desktop Entry]\n";
    const QString android = QStringLiteral("/data/app.apk");
    QTest::newRow("gained") << plain << Launcher << Android << QStringList(Apk);
    QTest::newRow("lost") << Android << android << plain << QStringList();
    QTest::newRow("changed") << Android << android << QByteArray("[Desktop Entry]\nX-zindro-apkfile=other\n")
                             << QStringList(QStringLiteral("apk other of ") + Launcher);
}

void DesktopOwnerResolverTest::readsTheKeyAgain()
{
    QFETCH(QByteArray, before);
    QFETCH(QString, term);
    QFETCH(QByteArray, after);
    QFETCH(QStringList, reported);

    m_launcher->write(before);
    resolve();
    QVERIFY(searches(term));
    m_launcher->write(after);
    m_packageKit->tellEnd(0, Transaction::ExitSuccess);
    QVERIFY(happens(reported + QStringList(Deleted)));
}

VELMORA_TEST(DesktopOwnerResolverTest, Gui)

#include "tst_desktopownerresolver.moc"
