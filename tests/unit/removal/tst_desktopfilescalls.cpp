// SPDX-FileCopyrightText: velmora-installationhandler contributors
// SPDX-License-Identifier: BSD-3-Clause

#include "desktopfiles.h"
#include "testrunner.h"

#include <QScopeGuard>
#include <QTextCodec>

#include <rpm/rpmdb.h>
#include <rpm/rpmfi.h>
#include <rpm/rpmlib.h>
#include <rpm/rpmts.h>

namespace {

const QString Launcher = "/usr/share/applications/a.desktop"_s;

// The packages that every look-up finds, each as the paths of its files.
QList<QStringList> installed;
// The calls of librpm, for example "rpmfiInit(files, 0)".
QStringList calls;

int packageIndex; // of the iterator
int fileIndex; // of the file list
QByteArray path;

// A handle is the address of its name.
template<typename Handle>
Handle handle(const char *name)
{
    return reinterpret_cast<Handle>(const_cast<char *>(name));
}

template<typename Handle>
QString name(Handle handle)
{
    return handle ? QString::fromLatin1(reinterpret_cast<const char *>(handle)) : "null"_s;
}

void note(const char *function, const QStringList &arguments = {})
{
    calls.append("%1(%2)"_s.arg(QLatin1String(function), arguments.join(", "_s)));
}

}

// These functions take the place of librpm's own, since the program's definitions come first.
extern "C" {

int rpmReadConfigFiles(const char *file, const char *target)
{
    note("rpmReadConfigFiles", {name(file), name(target)});
    return 0;
}

rpmts rpmtsCreate()
{
    note("rpmtsCreate");
    return handle<rpmts>("ts");
}

// The key is bytes and not text. It is noted as Latin-1, a character for each byte.
rpmdbMatchIterator rpmtsInitIterator(const rpmts ts, rpmDbiTagVal tag, const void *key, size_t length)
{
    note("rpmtsInitIterator", {name(ts), QString::number(tag), name(key), QString::number(length)});
    packageIndex = -1;
    return handle<rpmdbMatchIterator>("packages");
}

Header rpmdbNextIterator(rpmdbMatchIterator packages)
{
    note("rpmdbNextIterator", {name(packages)});
    return ++packageIndex < installed.size() ? handle<Header>("package") : nullptr;
}

rpmfi rpmfiNew(const rpmts ts, Header package, rpmTagVal tag, rpmfiFlags flags)
{
    note("rpmfiNew", {name(ts), name(package), QString::number(tag), QString::number(flags)});
    return handle<rpmfi>("files");
}

rpmfi rpmfiInit(rpmfi files, int first)
{
    note("rpmfiInit", {name(files), QString::number(first)});
    fileIndex = first - 1;
    return files;
}

int rpmfiNext(rpmfi files)
{
    note("rpmfiNext", {name(files)});
    return ++fileIndex < installed.at(packageIndex).size() ? fileIndex : -1;
}

const char *rpmfiFN(rpmfi files)
{
    note("rpmfiFN", {name(files)});
    path = installed.at(packageIndex).at(fileIndex).toUtf8();
    return path.constData();
}

rpmfi rpmfiFree(rpmfi files)
{
    note("rpmfiFree", {name(files)});
    return nullptr;
}

rpmdbMatchIterator rpmdbFreeIterator(rpmdbMatchIterator packages)
{
    note("rpmdbFreeIterator", {name(packages)});
    return nullptr;
}

rpmts rpmtsFree(rpmts ts)
{
    note("rpmtsFree", {name(ts)});
    return nullptr;
}
}

/** The calls of librpm for the launchers of a package, and their order. */
class DesktopFilesCallsTest : public QObject
{
    Q_OBJECT

private:
    // The calls for a package with so many files, or for none with a negative number.
    static QStringList lookup(const QString &key, int files)
    {
        QStringList all{"rpmtsCreate()"_s, "rpmtsInitIterator(ts, 1000, %1, 0)"_s.arg(key),
                        "rpmdbNextIterator(packages)"_s};
        if (files >= 0) {
            all += {"rpmfiNew(ts, package, 1117, 98318)"_s, "rpmfiInit(files, 0)"_s};
            for (int file = 0; file < files; ++file) {
                all += {"rpmfiNext(files)"_s, "rpmfiFN(files)"_s};
            }
            all += {"rpmfiNext(files)"_s, "rpmfiFree(files)"_s};
        }
        return all + QStringList{"rpmdbFreeIterator(packages)"_s, "rpmtsFree(ts)"_s};
    }

private Q_SLOTS:
    // Only the first look-up of a process reads the configuration, and one of an Android package does not.
    void initTestCase()
    {
        installed = {{Launcher}};
        QCOMPARE(findDesktopFiles("ambrel-apk-nothing.of.it"_s), QStringList());
        QCOMPARE(calls, QStringList());
        QCOMPARE(findDesktopFiles("a"_s), QStringList(Launcher));
        QCOMPARE(calls, QStringList("rpmReadConfigFiles(null, null)"_s) + lookup("a"_s, 1));
    }

    void init()
    {
        installed = {{Launcher}};
        calls.clear();
    }

    void readsTheFileList_data()
    {
        QTest::addColumn<QList<QStringList>>("packages");
        QTest::addColumn<QStringList>("launchers");

        const QStringList files{"/usr/bin/a"_s, Launcher, "/usr/bin/b"_s};
        const QStringList other("/usr/share/applications/b.desktop"_s);
        QTest::newRow("no package") << QList<QStringList>() << QStringList();
        QTest::newRow("no file") << QList<QStringList>{{}} << QStringList();
        QTest::newRow("no launcher") << QList<QStringList>{{files.first(), files.last()}} << QStringList();
        QTest::newRow("a launcher between others") << QList<QStringList>{files} << QStringList(Launcher);
        QTest::newRow("the first of two packages") << QList<QStringList>{{Launcher}, other} << QStringList(Launcher);
    }

    // The second package is not even asked for.
    void readsTheFileList()
    {
        QFETCH(QList<QStringList>, packages);
        QFETCH(QStringList, launchers);
        installed = packages;
        QCOMPARE(findDesktopFiles("a"_s), launchers);
        QCOMPARE(calls, lookup("a"_s, packages.isEmpty() ? -1 : packages.first().size()));
    }

    void asksByTheNameInTheLocalEncoding_data()
    {
        QTest::addColumn<QByteArray>("encoding");
        QTest::addColumn<QString>("bytes");

        QTest::newRow("UTF-8") << "UTF-8"_b << "n\u00c3\u00a4me"_s;
        QTest::newRow("Latin-1") << "ISO-8859-1"_b << "n\u00e4me"_s;
        QTest::newRow("Cyrillic, which lacks the letter") << "KOI8-R"_b << "n?me"_s;
    }

    void asksByTheNameInTheLocalEncoding()
    {
        QFETCH(QByteArray, encoding);
        QFETCH(QString, bytes);
        QTextCodec *const usual = QTextCodec::codecForLocale();
        const auto restore = qScopeGuard([usual] { QTextCodec::setCodecForLocale(usual); });
        QTextCodec::setCodecForLocale(QTextCodec::codecForName(encoding));
        QCOMPARE(findDesktopFiles("n\u00e4me"_s), QStringList(Launcher));
        QCOMPARE(calls, lookup(bytes, 1));
    }
};

VELMORA_TEST(DesktopFilesCallsTest, Anywhere, Core)

#include "tst_desktopfilescalls.moc"
