// SPDX-FileCopyrightText: velmora-installationhandler contributors
// SPDX-License-Identifier: BSD-3-Clause

#include "journal.h"
#include "messagelog.h"
#include "nobody.h"
#include "processstate.h"
#include "rpminfo.h"
#include "rpmtest.h"
#include "specialfiles.h"

#include <QtTest>

#include <optional>

#include <unistd.h>

/** Which paths lead to a package and which to nothing. */
class TestRpmInfoPath : public RpmTest
{
    Q_OBJECT

private Q_SLOTS:
    void reads_data();
    void reads();
    void readsFromTheCurrentFolder_data();
    void readsFromTheCurrentFolder();
    void passesOverWhatDoesNotOpen_data();
    void passesOverWhatDoesNotOpen();
    void passesOverWhatMayNotBeOpened();
    void passesOverTheStandardInput();

private:
    enum Reader { Root, NobodyElse };

    void checkNothingIsRead(const QString &path, Reader reader = Root);

    SpecialFiles m_files;
};

/** A good file has been read before: its values have to stay, and nothing is said. */
void TestRpmInfoPath::checkNothingIsRead(const QString &path, Reader reader)
{
    Journal journal;
    RpmInfo info;
    info.readPackage(packageFile(QStringLiteral("plain")));
    {
        std::optional<Nobody> nobody;
        if (reader == NobodyElse) {
            nobody.emplace();
        }
        const MessageLog log(&journal);
        const Deadline deadline;
        info.readPackage(path);
        QVERIFY2(!deadline.hasPassed(), "the read waited for somebody at the other end");
    }
    QVERIFY(!info.isValid());
    QVERIFY(!info.isSignatureValid());
    QCOMPARE(info.name(), QStringLiteral("plain"));
    QCOMPARE(info.version(), QStringLiteral("1.2.3"));
    QCOMPARE(info.summary(), QStringLiteral("A plain package"));
    QCOMPARE(info.fileName(), path);
    QCOMPARE(journal.entries(), QStringList());
}

void TestRpmInfoPath::reads_data()
{
    QTest::addColumn<QString>("name");
    QTest::newRow("blanks") << QStringLiteral(" a  b .rpm ");
    QTest::newRow("UTF-8") << QStringLiteral("\u043f\u0430\u043a\u0435\u0442 \u6253\u5305 \U0001f4e6.rpm");
    QTest::newRow("line feed") << QStringLiteral("line\nfeed.rpm");
    QTest::newRow("percent") << QStringLiteral("%1 %n %20 %s.rpm");
    QTest::newRow("quotes") << QStringLiteral("\"'`$(x)\\.rpm");
    QTest::newRow("no suffix") << QStringLiteral("package");
    QTest::newRow("macro") << QStringLiteral("%{_dbpath}%(exit 1).rpm");
    QTest::newRow("pattern") << QStringLiteral("[*?]{a,b}.rpm");
    QTest::newRow("longest name") << QString(255, QLatin1Char('x'));
}

void TestRpmInfoPath::reads()
{
    QFETCH(QString, name);
    const QString path = m_files.path(name);
    QVERIFY(QFile::copy(packageFile(QStringLiteral("plain")), path));
    RpmInfo info;
    info.readPackage(path);
    QVERIFY(info.isValid());
    QCOMPARE(info.name(), QStringLiteral("plain"));
    QCOMPARE(info.fileName(), path);
}

void TestRpmInfoPath::readsFromTheCurrentFolder_data()
{
    QTest::addColumn<QString>("path");
    QTest::newRow("name") << QStringLiteral("here.rpm");
    QTest::newRow("option") << QStringLiteral("--eval");
    QTest::newRow("dash") << QStringLiteral("-");
    QTest::newRow("dots") << QStringLiteral("./../current/here2.rpm");
    QTest::newRow("link") << QStringLiteral("link.rpm");
}

void TestRpmInfoPath::readsFromTheCurrentFolder()
{
    QFETCH(QString, path);
    const QString before = QDir::currentPath();
    const QString current = m_files.path(QStringLiteral("current"));
    QVERIFY(QDir().mkpath(current));
    QVERIFY(QDir::setCurrent(current));
    const QString package = packageFile(QStringLiteral("plain"));
    const bool made = path.startsWith(QLatin1String("link")) ? QFile::link(package, path) : QFile::copy(package, path);
    RpmInfo info;
    info.readPackage(path);
    QVERIFY(QDir::setCurrent(before));

    QVERIFY(made);
    QVERIFY(info.isValid());
    QCOMPARE(info.name(), QStringLiteral("plain"));
    QCOMPARE(info.fileName(), path);
}

void TestRpmInfoPath::passesOverWhatDoesNotOpen_data()
{
    const QString package = packageFile(QStringLiteral("plain"));
    QTest::addColumn<QString>("path");
    QTest::newRow("missing") << QStringLiteral("/missing.rpm");
    QTest::newRow("empty") << QString();
    QTest::newRow("a blank") << QStringLiteral(" ");
    QTest::newRow("too long a name") << m_files.path(QString(256, QLatin1Char('x')));
    QTest::newRow("too long a path") << QString(5000, QLatin1Char('/'));
    QTest::newRow("a very long path") << QLatin1Char('/') + QString(1024 * 1024, QLatin1Char('x'));
    QTest::newRow("a file as a folder") << package + QLatin1Char('/');
    QTest::newRow("a URL") << QLatin1String("file://") + package;
    QTest::newRow("a remote URL") << QStringLiteral("http://localhost/package.rpm");
    QTest::newRow("dash") << QStringLiteral("-");
    QTest::newRow("tilde") << QStringLiteral("~/package.rpm");
    QTest::newRow("FIFO") << m_files.fifo();
    QTest::newRow("link to a FIFO") << m_files.linkToFifo();
    QTest::newRow("URL of a FIFO") << QLatin1String("file://") + m_files.fifo();
    QTest::newRow("socket") << m_files.socket();
    QTest::newRow("terminal") << m_files.terminal();
}

void TestRpmInfoPath::passesOverWhatDoesNotOpen()
{
    QFETCH(QString, path);
    checkNothingIsRead(path);
}

void TestRpmInfoPath::passesOverWhatMayNotBeOpened()
{
    const QString path = m_files.path(QStringLiteral("secret.rpm"));
    QVERIFY(QFile::copy(packageFile(QStringLiteral("plain")), path));
    QVERIFY(QFile::setPermissions(path, QFileDevice::ReadOwner));
    QVERIFY(QFile::setPermissions(m_files.path(QString()), QFileDevice::Permissions(0x7555)));

    checkNothingIsRead(path, NobodyElse);
}

void TestRpmInfoPath::passesOverTheStandardInput()
{
    // A pipe that nobody writes to.
    int ends[2];
    QCOMPARE(pipe(ends), 0);
    const int standardInput = dup(STDIN_FILENO);
    QCOMPARE(dup2(ends[0], STDIN_FILENO), STDIN_FILENO);

    checkNothingIsRead(QStringLiteral("/dev/stdin"));

    QCOMPARE(dup2(standardInput, STDIN_FILENO), STDIN_FILENO);
    for (const int descriptor : {standardInput, ends[0], ends[1]}) {
        close(descriptor);
    }
}

QTEST_GUILESS_MAIN(TestRpmInfoPath)

#include "tst_rpminfopath.moc"
