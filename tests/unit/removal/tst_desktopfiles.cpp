// SPDX-FileCopyrightText: velmora-installationhandler contributors
// SPDX-License-Identifier: BSD-3-Clause

#include "desktopfiles.h"
#include "devicefile.h"
#include "processstate.h"
#include "rpmenvironment.h"
#include "testrunner.h"

#include <QDir>
#include <QProcess>
#include <QScopeGuard>
#include <QTextCodec>

#include <memory>
#include <vector>

namespace {

const QString Applications = "/usr/share/applications/"_s;

// Runs shell commands, shows their output, and returns whether they succeeded.
bool run(const QString &commands)
{
    QProcess process;
    process.setProcessChannelMode(QProcess::ForwardedChannels);
    process.start("sh"_s, {"-ec"_s, commands});
    if (!process.waitForFinished(WaitLimit)) {
        qWarning() << commands << "has not ended:" << process.errorString();
        return false;
    }
    return process.exitStatus() == QProcess::NormalExit && process.exitCode() == 0;
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

/** The launchers of packages: of native ones as the device's own database lists them, and of Android ones. */
class DesktopFilesTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase()
    {
        for (const char *package : {"several-1.0-1.noarch", "none-1.0-1.noarch", "nothing-1.0-1.noarch",
                                    "twice-1.0-1.noarch", "twice-2.0-1.noarch", "ambrel-apk-a.b-1.0-1.noarch",
                                    "many-1.0-1.noarch", "latin", "latinname", "unicode"}) {
            // The payloads of handmade packages have no digest.
            const QString install = "rpm -i --justdb --nodeps --nodigest --nosignature "_s;
            QVERIFY2(run(install + QStringLiteral(LAUNCHER_PACKAGES "/%1.rpm").arg(QString::fromLatin1(package))),
                     package);
        }
        QVERIFY(run("cp -a /var/lib/rpm /var/lib/rpm-kept"_s));
        // The first look-up opens files that stay open.
        findDesktopFiles("several"_s);
    }

    void findsInstalledLaunchers_data()
    {
        QTest::addColumn<QString>("name");
        QTest::addColumn<QStringList>("launchers");

        QTest::newRow("several, also in subfolders") << "several"_s << QStringList{".desktop"_s,
                                                                                   "a.desktop"_s,
                                                                                   "org.example.App.desktop"_s,
                                                                                   "sub/b.desktop"_s,
                                                                                   "sub/deeper/c.desktop"_s,
                                                                                   "two words.desktop"_s,
                                                                                   "z.desktop"_s};
        QTest::newRow("no launcher") << "none"_s << QStringList();
        QTest::newRow("no file") << "nothing"_s << QStringList();
        // Known behaviour 19.
        QTest::newRow("two of the name: the first") << "twice"_s << QStringList("first.desktop"_s);
        QTest::newRow("name beyond ASCII") << "n\u00e4me"_s << QStringList{"\u00e4.desktop"_s, "\U0001f600.desktop"_s};
        QTest::newRow("files that are not UTF-8") << "latin"_s << QStringList{"latin.desktop"_s, "\ufffd.desktop"_s};
    }

    void findsInstalledLaunchers()
    {
        QFETCH(QString, name);
        QFETCH(QStringList, launchers);
        QCOMPARE(findDesktopFiles(name), applications(launchers));
    }

    // The bytes of another package's name spell this one in UTF-8.
    void looksUpInTheLocalEncoding()
    {
        QTextCodec *const usual = QTextCodec::codecForLocale();
        const auto restore = qScopeGuard([usual] { QTextCodec::setCodecForLocale(usual); });
        QTextCodec::setCodecForLocale(QTextCodec::codecForName("ISO-8859-1"));
        QCOMPARE(findDesktopFiles("n\u00e4me"_s), applications({"latinname.desktop"_s}));
    }

    void findsMany()
    {
        const QStringList found = findDesktopFiles("many"_s);
        QCOMPARE(found.size(), 1000);
        QCOMPARE(found.first(), Applications + "many0000.desktop"_s);
        QCOMPARE(found.last(), Applications + "many0999.desktop"_s);
    }

    void findsNothing_data()
    {
        QTest::addColumn<QString>("name");

        for (const char *name : {"missing",
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
            QTest::newRow(name) << QString::fromUtf8(name);
        }
        QTest::newRow("no name") << QString();
        QTest::newRow("large") << QString(1024 * 1024, QLatin1Char('x'));
        QTest::newRow("half a pair") << QString(QChar(0xd800));
    }

    void findsNothing()
    {
        QFETCH(QString, name);
        QCOMPARE(findDesktopFiles(name), QStringList());
    }

    void readsTheConfigurationOnce()
    {
        RpmEnvironment environment;
        QVERIFY(environment.useDatabase("empty"_s));
        QCOMPARE(findDesktopFiles("twice"_s), applications({"first.desktop"_s}));
    }

    void findsAndroidLaunchers_data()
    {
        QTest::addColumn<QString>("name");
        QTest::addColumn<QStringList>("present");
        QTest::addColumn<QStringList>("absent");

        const QString name = "ambrel-apk-a.b.c"_s;
        const QString launcher = "zindro_launcher_a_b_c.desktop"_s;
        const QStringList none;
        QTest::newRow("one") << name << QStringList(launcher)
                             << QStringList{"a_b_c.desktop"_s,
                                            "zindro_launcher_a.b.c.desktop"_s,
                                            "x_zindro_launcher_a_b_c.desktop"_s,
                                            "zindro_launcher_a_b.desktop"_s,
                                            "zindro_launcher_a_b_c.desktop.bak"_s,
                                            "sub/zindro_launcher_a_b_c.desktop"_s};
        QTest::newRow("longer names, too")
                << name
                << QStringList{launcher, "zindro_launcher_a_b_c_Main.desktop"_s, "zindro_launcher_a_b_cd.desktop"_s}
                << none;
        QTest::newRow("other case") << name << QStringList("Zindro_Launcher_A_B_C.Desktop"_s) << none;
        QTest::newRow("all") << "ambrel-apk-"_s << QStringList{launcher, "zindro_launcher_.desktop"_s}
                             << QStringList("zindro_launcher.desktop"_s);
        QTest::newRow("wildcards") << "ambrel-apk-?.[bx].*"_s << QStringList{launcher, "zindro_launcher_y_x_.desktop"_s}
                                   << QStringList("zindro_launcher_aa_b_c.desktop"_s);
        QTest::newRow("none") << name << none << QStringList("zindro_launcher_b.desktop"_s);
        QTest::newRow("no folder of its own")
                << "ambrel-apk-../applications/a"_s << none << QStringList("zindro_launcher_a.desktop"_s);
        QTest::newRow("prefix in other case") << "Ambrel-apk-a.b.c"_s << none << QStringList(launcher);
        QTest::newRow("prefix elsewhere") << "x-ambrel-apk-a.b.c"_s << none << QStringList(launcher);
        QTest::newRow("beyond ASCII") << "ambrel-apk-\u00e4"_s << QStringList("zindro_launcher_\u00e4.desktop"_s)
                                      << none;
        // The database has a package of this name with a launcher.
        QTest::newRow("installed") << "ambrel-apk-a.b"_s << QStringList("zindro_launcher_a_b.desktop"_s)
                                   << QStringList("carrier.desktop"_s);
    }

    // Known behaviour 35.
    void findsAndroidLaunchers()
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

    // The order is that of a folder's listing: by name without regard to case, folders among the files, and no links
    // that lead nowhere.
    void sortsAndroidLaunchers()
    {
        const QString prefix = Applications + "zindro_launcher_a"_s;
        QVERIFY(run("cd /usr/share/applications; launcher=zindro_launcher_a; touch ${launcher}C.desktop "
                    "${launcher}b.desktop ${launcher}d.desktop; mkdir ${launcher}Bb.desktop; "
                    "ln -s /missing ${launcher}broken.desktop; ln -s ${launcher}d.desktop ${launcher}link.desktop"_s));
        const QStringList found = findDesktopFiles("ambrel-apk-a"_s);
        QVERIFY(run("rm -r /usr/share/applications/zindro_launcher_a*"_s));
        QStringList expected;
        for (const char *end : {"b", "Bb", "C", "d", "link"}) {
            expected.append(prefix + QLatin1String(end) + ".desktop"_s);
        }
        QCOMPARE(found, expected);
    }

    void doesWithoutApplications()
    {
        QVERIFY(run("mv /usr/share/applications /usr/share/applications-away"_s));
        const QStringList android = findDesktopFiles("ambrel-apk-"_s);
        const QStringList native = findDesktopFiles("twice"_s);
        QVERIFY(run("mv /usr/share/applications-away /usr/share/applications"_s));
        QCOMPARE(android, QStringList());
        QCOMPARE(native, applications({"first.desktop"_s}));
    }

    void survivesADamagedDatabase_data()
    {
        QTest::addColumn<QString>("damage");

        QTest::newRow("missing") << "rm -rf /var/lib/rpm"_s;
        QTest::newRow("empty folder") << "rm -f *"_s;
        QTest::newRow("folder is a file") << "rm -rf /var/lib/rpm; echo > /var/lib/rpm"_s;
        QTest::newRow("zero bytes") << "rm -f *; : > rpmdb.sqlite"_s;
        QTest::newRow("garbage") << "rm -f *; head -c 100000 /dev/urandom > rpmdb.sqlite"_s;
        QTest::newRow("start only") << "rm -f *-shm *-wal; truncate -s 8192 rpmdb.sqlite"_s;
        QTest::newRow("pages of zeroes") << "rm -f *-shm *-wal; size=$(stat -c %s rpmdb.sqlite); "
                                            "truncate -s 4096 rpmdb.sqlite; truncate -s $size rpmdb.sqlite"_s;
        QTest::newRow("folder in its place") << "rm -f *; mkdir rpmdb.sqlite"_s;
    }

    void survivesADamagedDatabase()
    {
        QFETCH(QString, damage);
        QVERIFY(run("cd /var/lib/rpm; "_s + damage));
        const QStringList found = findDesktopFiles("twice"_s);
        QVERIFY(run("rm -rf /var/lib/rpm; cp -a /var/lib/rpm-kept /var/lib/rpm"_s));
        QCOMPARE(found, QStringList());
        QCOMPARE(findDesktopFiles("twice"_s), applications({"first.desktop"_s}));
    }

    void releasesItsHandles()
    {
        const QStringList before = openFiles();
        for (const char *name : {"several", "none", "missing", "ambrel-apk-a"}) {
            findDesktopFiles(QString::fromLatin1(name));
            const qint64 gained = bytesGainedPerCall([name] { findDesktopFiles(QString::fromLatin1(name)); });
            // The library fills caches at first; a handle that is not released is a lot more.
            QVERIFY2(gained < 256, qPrintable("%1 bytes more after %2"_s.arg(gained).arg(QLatin1String(name))));
        }
        QCOMPARE(openFiles(), before);
    }
};

VELMORA_TEST(DesktopFilesTest, Device, Core)

#include "tst_desktopfiles.moc"
