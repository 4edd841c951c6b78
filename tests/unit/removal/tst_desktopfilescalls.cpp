// SPDX-FileCopyrightText: velmora-installationhandler contributors
// SPDX-License-Identifier: BSD-3-Clause

#include "desktopfiles.h"

#include "fakerpmdatabase.h"
#include "testrunner.h"

#include <QScopeGuard>
#include <QTextCodec>
#include <QtTest>

namespace {

const QString Launcher = QStringLiteral("/usr/share/applications/a.desktop");

QStringList beginning(const QString &key)
{
    return {QStringLiteral("rpmtsCreate()"), QStringLiteral("rpmtsInitIterator(ts, 1000, %1, 0)").arg(key),
            QStringLiteral("rpmdbNextIterator(packages)")};
}

QStringList reading(int files)
{
    QStringList calls{QStringLiteral("rpmfiNew(ts, package, 1117, 98318)"), QStringLiteral("rpmfiInit(files, 0)")};
    for (int file = 0; file < files; ++file) {
        calls += {QStringLiteral("rpmfiNext(files)"), QStringLiteral("rpmfiFN(files)")};
    }
    return calls + QStringList{QStringLiteral("rpmfiNext(files)"), QStringLiteral("rpmfiFree(files)")};
}

QStringList end()
{
    return {QStringLiteral("rpmdbFreeIterator(packages)"), QStringLiteral("rpmtsFree(ts)")};
}

}

/** What librpm is asked when the launchers of a package are looked up, and in which order. */
class DesktopFilesCallsTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();
    void init();

    void readsTheConfigurationOnce();
    void readsTheFileList_data();
    void readsTheFileList();
    void readsTheFirstPackageOnly();
    void readsNothingWithoutAPackage();
    void asksByTheNameInTheLocalEncoding_data();
    void asksByTheNameInTheLocalEncoding();
    void asksNothingAboutAndroidPackages();

private:
    QStringList m_first;
};

// There is only one first lookup in a process.
void DesktopFilesCallsTest::initTestCase()
{
    init();
    // Not even the configuration is read for what is not looked up.
    findDesktopFiles(QStringLiteral("ambrel-apk-a"));
    QCOMPARE(FakeRpmDatabase::calls, QStringList());
    QCOMPARE(findDesktopFiles(QStringLiteral("a")), QStringList(Launcher));
    m_first = FakeRpmDatabase::calls;
}

void DesktopFilesCallsTest::init()
{
    FakeRpmDatabase::packages = {{Launcher}};
    FakeRpmDatabase::calls.clear();
}

void DesktopFilesCallsTest::readsTheConfigurationOnce()
{
    const QStringList lookup = beginning(QStringLiteral("a")) + reading(1) + end();
    QCOMPARE(m_first, QStringList(QStringLiteral("rpmReadConfigFiles(null, null)")) + lookup);
    QCOMPARE(findDesktopFiles(QStringLiteral("a")), QStringList(Launcher));
    QCOMPARE(FakeRpmDatabase::calls, lookup);
}

void DesktopFilesCallsTest::readsTheFileList_data()
{
    QTest::addColumn<QStringList>("files");
    QTest::addColumn<QStringList>("launchers");

    QTest::newRow("no file") << QStringList() << QStringList();
    QTest::newRow("no launcher") << QStringList{QStringLiteral("/usr/bin/a"), QStringLiteral("/usr/bin/b")}
                                 << QStringList();
    QTest::newRow("a launcher between others")
            << QStringList{QStringLiteral("/usr/bin/a"), Launcher, QStringLiteral("/usr/bin/b")}
            << QStringList(Launcher);
}

void DesktopFilesCallsTest::readsTheFileList()
{
    QFETCH(QStringList, files);
    QFETCH(QStringList, launchers);

    FakeRpmDatabase::packages = {files};
    QCOMPARE(findDesktopFiles(QStringLiteral("a")), launchers);
    QCOMPARE(FakeRpmDatabase::calls, beginning(QStringLiteral("a")) + reading(files.size()) + end());
}

// The next one is not even asked for.
void DesktopFilesCallsTest::readsTheFirstPackageOnly()
{
    FakeRpmDatabase::packages.append({QStringLiteral("/usr/share/applications/b.desktop")});
    QCOMPARE(findDesktopFiles(QStringLiteral("a")), QStringList(Launcher));
    QCOMPARE(FakeRpmDatabase::calls, beginning(QStringLiteral("a")) + reading(1) + end());
}

void DesktopFilesCallsTest::readsNothingWithoutAPackage()
{
    FakeRpmDatabase::packages.clear();
    QCOMPARE(findDesktopFiles(QStringLiteral("a")), QStringList());
    QCOMPARE(FakeRpmDatabase::calls, beginning(QStringLiteral("a")) + end());
}

void DesktopFilesCallsTest::asksByTheNameInTheLocalEncoding_data()
{
    QTest::addColumn<QByteArray>("encoding");
    QTest::addColumn<QString>("bytes");

    QTest::newRow("UTF-8") << QByteArray("UTF-8") << QStringLiteral("n\u00c3\u00a4me");
    QTest::newRow("Latin-1") << QByteArray("ISO-8859-1") << QStringLiteral("n\u00e4me");
    QTest::newRow("Cyrillic, which lacks the letter") << QByteArray("KOI8-R") << QStringLiteral("n?me");
}

void DesktopFilesCallsTest::asksByTheNameInTheLocalEncoding()
{
    QFETCH(QByteArray, encoding);
    QFETCH(QString, bytes);

    QTextCodec *const usual = QTextCodec::codecForLocale();
    const auto restore = qScopeGuard([usual] { QTextCodec::setCodecForLocale(usual); });
    QTextCodec::setCodecForLocale(QTextCodec::codecForName(encoding));
    QCOMPARE(findDesktopFiles(QStringLiteral("n\u00e4me")), QStringList(Launcher));
    QCOMPARE(FakeRpmDatabase::calls, beginning(bytes) + reading(1) + end());
}

void DesktopFilesCallsTest::asksNothingAboutAndroidPackages()
{
    QCOMPARE(findDesktopFiles(QStringLiteral("ambrel-apk-nothing.of.it")), QStringList());
    QCOMPARE(FakeRpmDatabase::calls, QStringList());
}

VELMORA_TEST(DesktopFilesCallsTest, Core)

#include "tst_desktopfilescalls.moc"
