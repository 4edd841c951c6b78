// SPDX-FileCopyrightText: velmora-installationhandler contributors
// SPDX-License-Identifier: BSD-3-Clause

#include "mdesktopentry.h"

#include "devicefile.h"
#include "processstate.h"
#include "specialfiles.h"
#include "testrunner.h"

#include <QTemporaryDir>

namespace {

const QString Key = "Desktop Entry/X-key"_s;
const QByteArray Good = "[Desktop Entry]\nX-key=value\n";
constexpr int SizeLimit = 4 * 1024 * 1024;

QByteArray everyByte()
{
    QByteArray bytes;
    for (int byte = 0; byte < 256; ++byte) {
        bytes.append(char(byte));
    }
    return bytes;
}

}

/** Launcher files, good and bad: a value or nothing. */
class MDesktopEntryTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void reads_data()
    {
        QTest::addColumn<QByteArray>("contents");
        QTest::addColumn<QString>("value");
        const auto row = [](const char *name, const QByteArray &contents, const QString &value = "value"_s) {
            QTest::newRow(name) << "[Desktop Entry]\n" + contents << value;
        };
        row("plain", "X-key=value\n");
        row("no last newline", "X-key=value");
        row("blanks", "\nX-key  =  value\n");
        row("comments", "# b\nX-key=value\n#X-key=c\n");
        row("equals sign", "X-key=a=b;c\n", "a=b;c"_s);
        row("escapes", "X-key=\\sa\\tb\\nc\\rd\\\\e\n", " a\tb\nc\rd\\e"_s);
        row("UTF-8", "X-key=ä€\U0001f600\n", "ä€\U0001f600"_s);
        row("empty", "X-key=\n", {});
        row("key twice", "X-key=first\nX-key=value\n");
        row("group twice", "X-key=first\n[Other]\n[Desktop Entry]\nX-key=value\n");
        row("group taken up again", "X-key=value\n[Other]\n[Desktop Entry]\nb=c\n");
        row("other bytes elsewhere", "Name=\xe4\nX-key=value\n# \xff\xfe\n");
        row("8-bit value", "X-key=\xe4\n", {});
        row("unknown escapes", "X-key=a\\qb\\;\\\\q\n", "a\\qb\\;\\q"_s);
        row("backslash at the end", "X-key=a\\\nb=c\n", "a\\"_s);
        row("long value", "X-key=" + QByteArray(1000000, 'x'), QString(1000000, QLatin1Char('x')));

        QTest::newRow("comment before the group") << "# a\n" + Good << "value";
        QTest::newRow("carriage returns") << QByteArray("[Desktop Entry]\r\nX-key=value\r\n") << "value";
    }

    void reads()
    {
        QFETCH(QByteArray, contents);
        QFETCH(QString, value);
        const MDesktopEntry read = entry(contents);
        QVERIFY(read.contains(Key));
        QCOMPARE(read.value(Key), value);
    }

    void readsNothing_data()
    {
        QTest::addColumn<QByteArray>("contents");
        const auto row = [](const char *name, const QByteArray &contents) { QTest::newRow(name) << contents; };
        row("zero bytes", "");
        row("only newlines", QByteArray(1000, '\n'));
        row("only comments", "# [Desktop Entry]\n# X-key=value\n");
        row("no group", "X-key=value\n");
        row("key before the group", "X-key=value\n[Desktop Entry]\n");
        row("other group", "[Other]\nX-key=value\n");
        row("no key", "[Desktop Entry]\nX-other=value\n");
        row("translated key alone", "[Desktop Entry]\nX-key[de]=value\n");
        // Known behaviour 36.
        row("byte order mark", "\xef\xbb\xbf" + Good);
        row("broken group", "[Desktop Entry\nX-key=value\n");
        row("empty group", "[]\nX-key=value\n");
        row("fault after the key", Good + "no assignment\n");
        row("UTF-16", QByteArray("\xff\xfe[\0D\0]\0\n\0", 10));
        row("zeroes", QByteArray(100000, '\0'));
        row("every byte", everyByte());
        row("far too large", Good + QByteArray(50 * 1024 * 1024, '\n'));
    }

    void readsNothing()
    {
        QFETCH(QByteArray, contents);
        const MDesktopEntry read = entry(contents);
        QVERIFY(!read.contains(Key));
        QCOMPARE(read.value(Key), QString());
    }

    void tellsKeysApart()
    {
        const MDesktopEntry read = entry(Good + "[a/b]\nc=slash\n[Desktop Action New]\nX-key=new\n");
        QCOMPARE(read.value("Desktop Action New/X-key"_s), "new"_s);
        QCOMPARE(read.value("a/b/c"_s), "slash"_s);
        for (const char *key : {"Desktop Entry/x-key", "desktop entry/X-key", "Desktop Entry/", "/X-key", "X-key", "/",
                                "", "Desktop Entry/X-key/", "Desktop Entry//X-key", "Desktop Entry/X-key[de]"}) {
            QVERIFY2(!read.contains(QString::fromUtf8(key)), key);
            QVERIFY2(read.value(QString::fromUtf8(key)).isNull(), key);
        }
        QVERIFY(read.contains(Key));
    }

    void keepsWhatItHasRead()
    {
        DeviceFile file(path(), "[Desktop Entry]\nX-key=before\n");
        const MDesktopEntry before(path());
        file.write("[Desktop Entry]\nX-key=after\n");
        QCOMPARE(before.value(Key), "before"_s);
        QCOMPARE(MDesktopEntry(path()).value(Key), "after"_s);
    }

    void followsLinks()
    {
        const DeviceFile file(path(), Good);
        QVERIFY(QFile::link(path(), path("link ä"_s)));
        QCOMPARE(MDesktopEntry(path("link ä"_s)).value(Key), "value"_s);
    }

    void readsThousandsOfTranslations()
    {
        QByteArray contents = "[Desktop Entry]\nName=name\n";
        for (int language = 0; language < 20000; ++language) {
            contents += "Name[l" + QByteArray::number(language) + "]=translated\n";
        }
        const MDesktopEntry read = entry(contents + "X-key=value\n");
        QCOMPARE(read.value(Key), "value"_s);
        QCOMPARE(read.value("Desktop Entry/Name"_s), "name"_s);
    }

    // Known behaviour 37.
    void readsUpToALimit()
    {
        const QByteArray largest = Good + '#' + QByteArray(SizeLimit - Good.size() - 1, 'x');
        QCOMPARE(entry(largest).value(Key), "value"_s);
        QVERIFY(!entry(largest + 'x').contains(Key));
    }

    void readsNothingThatIsNoFile_data()
    {
        QTest::addColumn<QString>("path");
        QTest::newRow("no path") << QString();
        QTest::newRow("missing") << path("missing"_s);
        QTest::newRow("folder") << m_folder.path();
        QTest::newRow("FIFO") << m_files.fifo();
        QTest::newRow("link to a FIFO") << m_files.linkToFifo();
        QTest::newRow("socket") << m_files.socket();
        QTest::newRow("terminal") << m_files.terminal();
        QTest::newRow("endless") << "/dev/zero";
        QTest::newRow("link to itself") << m_files.path("circle"_s);
        QTest::newRow("overlong") << QString(100000, QLatin1Char('x'));
        QTest::newRow("resource") << ":/qt-project.org";
    }

    void readsNothingThatIsNoFile()
    {
        QFETCH(QString, path);
        QFile::link("circle"_s, m_files.path("circle"_s));
        const Deadline deadline;
        const MDesktopEntry read(path);
        QVERIFY2(!deadline.hasPassed(), "The entry waited for somebody at the other end");
        QVERIFY(!read.contains(Key));
        QCOMPARE(read.value(Key), QString());
    }

    // The text in the pipe would make an entry.
    void readsNothingFromAPipe()
    {
        QFile writer(m_files.fifo());
        QVERIFY(writer.open(QIODevice::ReadWrite | QIODevice::Unbuffered));
        QCOMPARE(writer.write(Good), qint64(Good.size()));
        QVERIFY(!MDesktopEntry(m_files.fifo()).contains(Key));
        QCOMPARE(writer.read(Good.size()), Good);
    }

    // A zero byte ends a path for the system, so that the path would be another file's.
    void readsNothingBehindAZeroByte()
    {
        const DeviceFile file(path(), Good);
        QVERIFY(MDesktopEntry(path()).contains(Key));
        QVERIFY(!MDesktopEntry(path() + QChar(0) + "b"_s).contains(Key));
    }

    void readsNothingThatIsSecret()
    {
        const DeviceFile file(path(), Good);
        QVERIFY(MDesktopEntry(path()).contains(Key));
        QVERIFY(QFile::setPermissions(path(), {}));
        const QFile::Permissions open = QFile::permissions(m_folder.path()) | QFile::ReadOther | QFile::ExeOther;
        QVERIFY(QFile::setPermissions(m_folder.path(), open));
        const Nobody nobody;
        QVERIFY(!MDesktopEntry(path()).contains(Key));
    }

    void leavesNothingOpen()
    {
        const QStringList before = openFiles();
        {
            const MDesktopEntry read = entry(Good);
            QCOMPARE(openFiles(), before);
            const MDesktopEntry bad = entry("bad");
            QCOMPARE(openFiles(), before);
        }
        const qint64 gained = bytesGainedPerCall([this] { entry(Good + "bad\n").value(Key); });
        QVERIFY2(gained < 16, qPrintable("%1 bytes a read"_s.arg(gained)));
    }

private:
    QString path(const QString &name = "a.desktop"_s) const { return m_folder.filePath(name); }
    MDesktopEntry entry(const QByteArray &contents)
    {
        const DeviceFile file(path(), contents);
        return MDesktopEntry(path());
    }

    QTemporaryDir m_folder;
    SpecialFiles m_files;
};

VELMORA_TEST(MDesktopEntryTest, Anywhere, Core)

#include "tst_mdesktopentry.moc"
