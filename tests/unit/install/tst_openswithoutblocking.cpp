// SPDX-FileCopyrightText: velmora-installationhandler contributors
// SPDX-License-Identifier: BSD-3-Clause

#include "openswithoutblocking.h"

#include "processstate.h"
#include "specialfiles.h"
#include "testrunner.h"

#include <QDir>

#include <fcntl.h>
#include <sys/wait.h>
#include <unistd.h>

/** Known behaviour 48. */
class OpensWithoutBlockingTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase()
    {
        QFile file(m_files.path("file"_s));
        QVERIFY(file.open(QIODevice::WriteOnly));
        QFile secret(m_files.path("secret"_s));
        QVERIFY(secret.open(QIODevice::WriteOnly));
        QVERIFY(secret.setPermissions({}));
        QVERIFY(m_files.makeLink("link"_s, file.fileName()));
        QVERIFY(m_files.makeLink("broken link"_s, "/missing"_s));
        QVERIFY(m_files.makeLink("circle"_s, "circle"_s));
        QVERIFY(m_files.makeLink("link to a terminal"_s, m_files.terminal()));
    }

    void tellsWhatBlocks_data()
    {
        QTest::addColumn<QString>("path");
        QTest::addColumn<bool>("opens");

        QTest::newRow("FIFO") << m_files.fifo() << false;
        QTest::newRow("link to a FIFO") << m_files.linkToFifo() << false;
        QTest::newRow("socket") << m_files.socket() << false;
        QTest::newRow("terminal") << m_files.terminal() << false;
        QTest::newRow("link to a terminal") << m_files.path("link to a terminal"_s) << false;
        QTest::newRow("maker of terminals") << "/dev/ptmx" << false;

        for (const char *name : {"file", "secret", "link", "broken link", "circle", "missing", ""}) {
            QTest::newRow(*name ? name : "folder") << m_files.path(QLatin1String(name)) << true;
        }
        QTest::newRow("no path") << QString() << true;
        QTest::newRow("file as a folder") << m_files.path("file/deeper"_s) << true;
        QTest::newRow("FIFO as a folder") << m_files.fifo() + "/deeper"_s << true;
        QTest::newRow("too long a name") << m_files.path(QString(256, QLatin1Char('x'))) << true;
        QTest::newRow("too long a path") << QString(5000, QLatin1Char('/')) << true;
        QTest::newRow("kernel's random numbers") << "/dev/urandom" << true;
        QTest::newRow("null device") << "/dev/null" << true;
        QTest::newRow("zero device") << "/dev/zero" << true;
        QTest::newRow("URL of a FIFO") << "file://"_s + m_files.fifo() << true;
    }

    void tellsWhatBlocks()
    {
        QFETCH(QString, path);
        const QStringList openBefore = openFiles();
        const Deadline deadline;
        QTEST(opensWithoutBlocking(path.toUtf8()), "opens");
        QVERIFY2(!deadline.hasPassed(), "The check waited for somebody at the other end");
        QCOMPARE(openFiles(), openBefore);
    }

    void goesByThePathAlone()
    {
        // "-" is a file like any other, whatever the standard input is.
        const QString before = QDir::currentPath();
        QVERIFY(QDir::setCurrent(m_files.path(QString())));
        QVERIFY(opensWithoutBlocking("-"));
        const bool made = m_files.makeFifo("-"_s);
        const bool opens = opensWithoutBlocking("-");
        QVERIFY(QDir::setCurrent(before));
        QVERIFY(made);
        QVERIFY(!opens);
    }

    void refusesEvenWithSomebodyAtTheOtherEnd()
    {
        const int writer = open(QFile::encodeName(m_files.fifo()).constData(), O_RDWR | O_CLOEXEC);
        QVERIFY(writer >= 0);
        const bool opens = opensWithoutBlocking(m_files.fifo().toUtf8());
        close(writer);
        QVERIFY(!opens);
    }

    void takesNoTerminalForItsOwn()
    {
        const QByteArray terminal = m_files.terminal().toUtf8();
        const pid_t child = fork();
        QVERIFY(child >= 0);
        if (child == 0) {
            // The first terminal that a session's leader opens becomes its own, unless it takes care.
            setsid();
            const bool opens = opensWithoutBlocking(terminal);
            const bool hasTerminal = open("/dev/tty", O_RDONLY) >= 0;
            _exit(opens || hasTerminal ? 1 : 0);
        }
        int status = -1;
        QCOMPARE(waitpid(child, &status, 0), child);
        QVERIFY(WIFEXITED(status));
        QCOMPARE(WEXITSTATUS(status), 0);
    }

private:
    SpecialFiles m_files;
};

VELMORA_TEST(OpensWithoutBlockingTest, Anywhere, Core)

#include "tst_openswithoutblocking.moc"
