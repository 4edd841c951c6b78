// SPDX-FileCopyrightText: velmora-installationhandler contributors
// SPDX-License-Identifier: BSD-3-Clause

#include "desktopfiles.h"

#include "devicefile.h"
#include "processstate.h"
#include "rpmenvironment.h"
#include "runcommand.h"
#include "testrunner.h"

#include <QDir>
#include <QTextCodec>
#include <QtTest>

#include <memory>
#include <vector>

namespace {

const QString Applications = QStringLiteral("/usr/share/applications/");
const QString Database = QStringLiteral("/var/lib/rpm");
const QString Kept = QStringLiteral("/var/lib/rpm-kept");

bool install(const QString &file)
{
    // What is made by hand has no digest of its payload.
    return runCommand(QStringLiteral("rpm"),
                      {QStringLiteral("-i"), QStringLiteral("--justdb"), QStringLiteral("--nodeps"),
                       QStringLiteral("--nodigest"), QStringLiteral("--nosignature"),
                       QStringLiteral(LAUNCHER_PACKAGES "/") + file});
}

QStringList applications(const QStringList &names)
{
    QStringList files;
    for (const QString &name : names) {
        files.append(Applications + name);
    }
    return files;
}

}

/** The launchers of native packages, by what the device's own database says. */
class DesktopFilesTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();

    void findsInstalledLaunchers_data();
    void findsInstalledLaunchers();
    void looksUpInTheLocalEncoding();
    void findsMany();
    void findsNothing_data();
    void findsNothing();
    void readsTheConfigurationOnce();
    void findsAndroidLaunchers_data();
    void findsAndroidLaunchers();
    void sortsAndroidLaunchers();
    void doesWithoutApplications();
    void survivesADamagedDatabase_data();
    void survivesADamagedDatabase();
    void keepsNothing();
};

void DesktopFilesTest::initTestCase()
{
    for (const char *package :
         {"several-1.0-1.noarch", "none-1.0-1.noarch", "nothing-1.0-1.noarch", "twice-1.0-1.noarch",
          "twice-2.0-1.noarch", "ambrel-apk-a.b-1.0-1.noarch", "many-1.0-1.noarch", "latin", "latinname", "unicode"}) {
        QVERIFY2(install(QLatin1String(package) + QLatin1String(".rpm")), package);
    }
    QVERIFY(runCommand(QStringLiteral("cp"), {QStringLiteral("-a"), Database, Kept}));
    // Opens what stays open.
    findDesktopFiles(QStringLiteral("several"));
}

void DesktopFilesTest::findsInstalledLaunchers_data()
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<QStringList>("launchers");

    QTest::newRow("several, also in subfolders") << QStringLiteral("several")
                                                 << QStringList{QStringLiteral(".desktop"),
                                                                QStringLiteral("a.desktop"),
                                                                QStringLiteral("org.example.App.desktop"),
                                                                QStringLiteral("sub/b.desktop"),
                                                                QStringLiteral("sub/deeper/c.desktop"),
                                                                QStringLiteral("two words.desktop"),
                                                                QStringLiteral("z.desktop")};
    QTest::newRow("no launcher") << QStringLiteral("none") << QStringList();
    QTest::newRow("no file") << QStringLiteral("nothing") << QStringList();
    QTest::newRow("two of the name: the first")
            << QStringLiteral("twice") << QStringList(QStringLiteral("first.desktop"));
    QTest::newRow("name beyond ASCII") << QStringLiteral(
            "n\u00e4me") << QStringList{QStringLiteral("\u00e4.desktop"), QStringLiteral("\U0001f600.desktop")};
    QTest::newRow("files that are not UTF-8")
            << QStringLiteral("latin")
            << QStringList{QStringLiteral("latin.desktop"), QStringLiteral("\ufffd.desktop")};
}

void DesktopFilesTest::findsInstalledLaunchers()
{
    QFETCH(QString, name);
    QFETCH(QStringList, launchers);

    QCOMPARE(findDesktopFiles(name), applications(launchers));
}

// Another package's bytes spell the name in UTF-8.
void DesktopFilesTest::looksUpInTheLocalEncoding()
{
    QTextCodec *const usual = QTextCodec::codecForLocale();
    QTextCodec::setCodecForLocale(QTextCodec::codecForName("ISO-8859-1"));
    const QStringList found = findDesktopFiles(QStringLiteral("n\u00e4me"));
    QTextCodec::setCodecForLocale(usual);
    QCOMPARE(found, applications({QStringLiteral("latinname.desktop")}));
}

void DesktopFilesTest::findsMany()
{
    const QStringList found = findDesktopFiles(QStringLiteral("many"));
    QCOMPARE(found.size(), 1000);
    QCOMPARE(found.first(), Applications + QLatin1String("many0000.desktop"));
    QCOMPARE(found.last(), Applications + QLatin1String("many0999.desktop"));
}

void DesktopFilesTest::findsNothing_data()
{
    QTest::addColumn<QString>("name");

    for (const char *name : {"",
                             "missing",
                             "Several",
                             "severa",
                             "several2",
                             "several*",
                             "sever?l",
                             "[s]everal",
                             "*",
                             "%",
                             "several-1.0",
                             "several-1.0-1.noarch",
                             "several;1.0-1;noarch;installed",
                             "several\nnone",
                             " several",
                             "/usr/share/applications/a.desktop",
                             "a.desktop",
                             "' OR 1=1 --",
                             "$(several)",
                             "%{name}",
                             "name",
                             "ambrel-apk-a.b"}) {
        QTest::newRow(*name ? name : "no name") << QString::fromUtf8(name);
    }
    QTest::newRow("large") << QString(1024 * 1024, QLatin1Char('x'));
    QTest::newRow("half a pair") << QString(QChar(0xd800));
}

void DesktopFilesTest::findsNothing()
{
    QFETCH(QString, name);

    QCOMPARE(findDesktopFiles(name), QStringList());
}

void DesktopFilesTest::readsTheConfigurationOnce()
{
    RpmEnvironment environment;
    QVERIFY(environment.useDatabase(QStringLiteral("empty")));
    QCOMPARE(findDesktopFiles(QStringLiteral("twice")), applications({QStringLiteral("first.desktop")}));
}

void DesktopFilesTest::findsAndroidLaunchers_data()
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<QStringList>("present");
    QTest::addColumn<QStringList>("absent");

    const QString name = QStringLiteral("ambrel-apk-a.b.c");
    const QString launcher = QStringLiteral("zindro_launcher_a_b_c.desktop");
    QTest::newRow("one") << name << QStringList(launcher)
                         << QStringList{QStringLiteral("a_b_c.desktop"),
                                        QStringLiteral("zindro_launcher_a.b.c.desktop"),
                                        QStringLiteral("x_zindro_launcher_a_b_c.desktop"),
                                        QStringLiteral("zindro_launcher_a_b.desktop"),
                                        QStringLiteral("zindro_launcher_a_b_c.desktop.bak"),
                                        QStringLiteral("sub/zindro_launcher_a_b_c.desktop")};
    QTest::newRow("longer names, too") << name
                                       << QStringList{launcher, QStringLiteral("zindro_launcher_a_b_c_Main.desktop"),
                                                      QStringLiteral("zindro_launcher_a_b_cd.desktop")}
                                       << QStringList();
    QTest::newRow("whatever the case") << name << QStringList(QStringLiteral("Zindro_Launcher_A_B_C.Desktop"))
                                       << QStringList();
    QTest::newRow("all") << QStringLiteral("ambrel-apk-")
                         << QStringList{launcher, QStringLiteral("zindro_launcher_.desktop")}
                         << QStringList(QStringLiteral("zindro_launcher.desktop"));
    QTest::newRow("wildcards") << QStringLiteral("ambrel-apk-?.[bx].*")
                               << QStringList{launcher, QStringLiteral("zindro_launcher_y_x_.desktop")}
                               << QStringList(QStringLiteral("zindro_launcher_aa_b_c.desktop"));
    QTest::newRow("none") << name << QStringList() << QStringList(QStringLiteral("zindro_launcher_b.desktop"));
    QTest::newRow("no folder of its own") << QStringLiteral("ambrel-apk-../applications/a") << QStringList()
                                          << QStringList(QStringLiteral("zindro_launcher_a.desktop"));
    QTest::newRow("prefix in other case")
            << QStringLiteral("Ambrel-apk-a.b.c") << QStringList() << QStringList(launcher);
    QTest::newRow("prefix elsewhere") << QStringLiteral("x-ambrel-apk-a.b.c") << QStringList() << QStringList(launcher);
    QTest::newRow("beyond ASCII") << QStringLiteral("ambrel-apk-\u00e4")
                                  << QStringList(QStringLiteral("zindro_launcher_\u00e4.desktop")) << QStringList();
    // The database knows a package of this name, and it has a launcher.
    QTest::newRow("installed") << QStringLiteral("ambrel-apk-a.b")
                               << QStringList(QStringLiteral("zindro_launcher_a_b.desktop"))
                               << QStringList(QStringLiteral("carrier.desktop"));
}

void DesktopFilesTest::findsAndroidLaunchers()
{
    QFETCH(QString, name);
    QFETCH(QStringList, present);
    QFETCH(QStringList, absent);

    std::vector<std::unique_ptr<DeviceFile>> files;
    for (const QString &file : applications(present + absent)) {
        files.push_back(std::make_unique<DeviceFile>(file));
    }
    QStringList found = findDesktopFiles(name);
    found.sort();
    present.sort();
    QCOMPARE(found, applications(present));
}

// As a folder is listed: by name whatever its case, folders among the files, and
// no links that lead nowhere.
void DesktopFilesTest::sortsAndroidLaunchers()
{
    const QString prefix = Applications + QLatin1String("zindro_launcher_a");
    const DeviceFile c(prefix + QLatin1String("C.desktop"));
    const DeviceFile b(prefix + QLatin1String("b.desktop"));
    const DeviceFile d(prefix + QLatin1String("d.desktop"));
    QVERIFY(QDir().mkdir(prefix + QLatin1String("Bb.desktop")));
    QVERIFY(QFile::link(QStringLiteral("/missing"), prefix + QLatin1String("broken.desktop")));
    QVERIFY(QFile::link(prefix + QLatin1String("d.desktop"), prefix + QLatin1String("link.desktop")));

    const QStringList found = findDesktopFiles(QStringLiteral("ambrel-apk-a"));
    QVERIFY(QFile::remove(prefix + QLatin1String("link.desktop")));
    QVERIFY(QFile::remove(prefix + QLatin1String("broken.desktop")));
    QVERIFY(QDir().rmdir(prefix + QLatin1String("Bb.desktop")));
    QStringList expected;
    for (const char *end : {"b", "Bb", "C", "d", "link"}) {
        expected.append(prefix + QLatin1String(end) + QLatin1String(".desktop"));
    }
    QCOMPARE(found, expected);
}

void DesktopFilesTest::doesWithoutApplications()
{
    const QString away = QStringLiteral("/usr/share/applications-away");
    QVERIFY(runCommand(QStringLiteral("mv"), {Applications, away}));
    const QStringList android = findDesktopFiles(QStringLiteral("ambrel-apk-"));
    const QStringList native = findDesktopFiles(QStringLiteral("twice"));
    QVERIFY(runCommand(QStringLiteral("mv"), {away, Applications}));
    QCOMPARE(android, QStringList());
    QCOMPARE(native, applications({QStringLiteral("first.desktop")}));
}

void DesktopFilesTest::survivesADamagedDatabase_data()
{
    QTest::addColumn<QString>("damage");

    // Commands of the shell, in the database's folder.
    QTest::newRow("missing") << QStringLiteral("rm -rf /var/lib/rpm");
    QTest::newRow("empty folder") << QStringLiteral("rm -f *");
    QTest::newRow("folder is a file") << QStringLiteral("rm -rf /var/lib/rpm; echo > /var/lib/rpm");
    QTest::newRow("zero bytes") << QStringLiteral("rm -f *; : > rpmdb.sqlite");
    QTest::newRow("garbage") << QStringLiteral("rm -f *; head -c 100000 /dev/urandom > rpmdb.sqlite");
    QTest::newRow("start only") << QStringLiteral("rm -f *-shm *-wal; truncate -s 8192 rpmdb.sqlite");
    QTest::newRow("pages of zeroes") << QStringLiteral(
            "rm -f *-shm *-wal; size=$(stat -c %s rpmdb.sqlite); truncate -s 4096 rpmdb.sqlite; "
            "truncate -s $size rpmdb.sqlite");
    QTest::newRow("folder in its place") << QStringLiteral("rm -f *; mkdir rpmdb.sqlite");
}

void DesktopFilesTest::survivesADamagedDatabase()
{
    QFETCH(QString, damage);

    QVERIFY(runCommand(QStringLiteral("sh"), {QStringLiteral("-c"), QStringLiteral("cd /var/lib/rpm; ") + damage}));
    const QStringList found = findDesktopFiles(QStringLiteral("twice"));
    QVERIFY(runCommand(QStringLiteral("rm"), {QStringLiteral("-rf"), Database}));
    QVERIFY(runCommand(QStringLiteral("cp"), {QStringLiteral("-a"), Kept, Database}));
    QCOMPARE(found, QStringList());
    QCOMPARE(findDesktopFiles(QStringLiteral("twice")), applications({QStringLiteral("first.desktop")}));
}

void DesktopFilesTest::keepsNothing()
{
    const QStringList before = openFiles();
    for (const char *name : {"several", "none", "missing", "ambrel-apk-a"}) {
        findDesktopFiles(QString::fromLatin1(name));
        const qint64 gained = bytesGainedPerCall([name] { findDesktopFiles(QString::fromLatin1(name)); });
        // The library fills caches at first; a handle that is not released is a lot more.
        QVERIFY2(gained < 256,
                 qPrintable(QStringLiteral("%1 bytes more after %2").arg(gained).arg(QLatin1String(name))));
    }
    QCOMPARE(openFiles(), before);
}

VELMORA_TEST(DesktopFilesTest, Core)

#include "tst_desktopfiles.moc"
