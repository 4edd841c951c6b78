// SPDX-FileCopyrightText: velmora-installationhandler contributors
// SPDX-License-Identifier: BSD-3-Clause

#include "mdesktopentry.h"

#include "devicefile.h"
#include "nobody.h"
#include "processstate.h"
#include "specialfiles.h"

#include <QTemporaryDir>
#include <QtTest>

namespace {

const QString Key = QStringLiteral("Desktop Entry/X-key");
constexpr int limit = 4 * 1024 * 1024;

}

/** Launcher files, good and bad: a value or nothing. */
class MDesktopEntryTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void reads_data();
    void reads();
    void readsNothing_data();
    void readsNothing();
    void tellsKeysApart();
    void keepsWhatItHasRead();
    void followsLinks();
    void readsThousandsOfTranslations();
    void readsUpToALimit();
    void readsNothingThatIsLarge();
    void readsNothingThatIsNoFile_data();
    void readsNothingThatIsNoFile();
    void readsNothingFromAPipe();
    void readsNothingBehindAZeroByte();
    void readsNothingThatIsSecret();
    void leavesNothingOpen();

private:
    MDesktopEntry entry(const QByteArray &contents);

    QTemporaryDir m_folder;
    SpecialFiles m_files;
};

MDesktopEntry MDesktopEntryTest::entry(const QByteArray &contents)
{
    const DeviceFile file(m_folder.filePath(QStringLiteral("a.desktop")), contents);
    return MDesktopEntry(m_folder.filePath(QStringLiteral("a.desktop")));
}

void MDesktopEntryTest::reads_data()
{
    QTest::addColumn<QByteArray>("contents");
    QTest::addColumn<QString>("value");

    const QString plain = QStringLiteral("value");
    QTest::newRow("plain") << QByteArray("[Desktop Entry]\nX-key=value\n") << plain;
    QTest::newRow("no last newline") << QByteArray("[Desktop Entry]\nX-key=value") << plain;
    QTest::newRow("blanks") << QByteArray("[Desktop Entry]\n\nX-key  =  value\n") << plain;
    QTest::newRow("comments") << QByteArray("# a\n[Desktop Entry]\n# b\nX-key=value\n#X-key=c\n") << plain;
    QTest::newRow("equals sign") << QByteArray("[Desktop Entry]\nX-key=a=b;c\n") << QStringLiteral("a=b;c");
    QTest::newRow("escapes") << QByteArray("[Desktop Entry]\nX-key=\\sa\\tb\\nc\\rd\\\\e\n")
                             << QStringLiteral(" a\tb\nc\rd\\e");
    QTest::newRow("UTF-8") << QByteArray("[Desktop Entry]\nX-key=\xc3\xa4\xe2\x82\xac\xf0\x9f\x98\x80\n")
                           << QStringLiteral("\u00e4\u20ac\U0001f600");
    QTest::newRow("empty") << QByteArray("[Desktop Entry]\nX-key=\n") << QString();
    QTest::newRow("key twice") << QByteArray("[Desktop Entry]\nX-key=first\nX-key=value\n") << plain;
    QTest::newRow("group twice") << QByteArray("[Desktop Entry]\nX-key=first\n[Other]\n[Desktop Entry]\nX-key=value\n")
                                 << plain;
    QTest::newRow("group taken up again")
            << QByteArray("[Desktop Entry]\nX-key=value\n[Other]\n[Desktop Entry]\nb=c\n") << plain;
    QTest::newRow("other bytes elsewhere")
            << QByteArray("[Desktop Entry]\nName=\xe4\nX-key=value\n# \xff\xfe\n") << plain;
    QTest::newRow("8-bit value") << QByteArray("[Desktop Entry]\nX-key=\xe4\n") << QString();
    QTest::newRow("unknown escape") << QByteArray("[Desktop Entry]\nX-key=a\\qb\n") << QStringLiteral("a\\qb");
    QTest::newRow("carriage returns") << QByteArray("[Desktop Entry]\r\nX-key=value\r\n") << plain;
    QTest::newRow("long value") << "[Desktop Entry]\nX-key=" + QByteArray(1000000, 'x')
                                << QString(1000000, QLatin1Char('x'));
}

void MDesktopEntryTest::reads()
{
    QFETCH(QByteArray, contents);
    QFETCH(QString, value);

    const MDesktopEntry read = entry(contents);
    QVERIFY(read.contains(Key));
    QCOMPARE(read.value(Key), value);
}

void MDesktopEntryTest::readsNothing_data()
{
    QTest::addColumn<QByteArray>("contents");

    QTest::newRow("zero bytes") << QByteArray();
    QTest::newRow("only newlines") << QByteArray(1000, '\n');
    QTest::newRow("only comments") << QByteArray("# [Desktop Entry]\n# X-key=value\n");
    QTest::newRow("no group") << QByteArray("X-key=value\n");
    QTest::newRow("key before the group") << QByteArray("X-key=value\n[Desktop Entry]\n");
    QTest::newRow("other group") << QByteArray("[Other]\nX-key=value\n");
    QTest::newRow("no key") << QByteArray("[Desktop Entry]\nX-other=value\n");
    QTest::newRow("translated key alone") << QByteArray("[Desktop Entry]\nX-key[de]=value\n");
    QTest::newRow("byte order mark") << QByteArray("\xef\xbb\xbf[Desktop Entry]\nX-key=value\n");
    QTest::newRow("broken group") << QByteArray("[Desktop Entry\nX-key=value\n");
    QTest::newRow("empty group") << QByteArray("[]\nX-key=value\n");
    QTest::newRow("fault after the key") << QByteArray("[Desktop Entry]\nX-key=value\nno assignment\n");
    QTest::newRow("UTF-16") << QByteArray("\xff\xfe[\0D\0]\0\n\0", 10);
    QTest::newRow("zeroes") << QByteArray(100000, '\0');
    QTest::newRow("every byte") << [] {
        QByteArray bytes;
        for (int byte = 0; byte < 256; ++byte) {
            bytes.append(char(byte));
        }
        return bytes;
    }();
}

void MDesktopEntryTest::readsNothing()
{
    QFETCH(QByteArray, contents);

    const MDesktopEntry read = entry(contents);
    QVERIFY(!read.contains(Key));
    QCOMPARE(read.value(Key), QString());
}

void MDesktopEntryTest::tellsKeysApart()
{
    const MDesktopEntry read = entry("[Desktop Entry]\nX-key=value\n[a/b]\nc=slash\n[Desktop Action New]\nX-key=new\n");
    QCOMPARE(read.value(QStringLiteral("Desktop Action New/X-key")), QStringLiteral("new"));
    QCOMPARE(read.value(QStringLiteral("a/b/c")), QStringLiteral("slash"));
    for (const char *key : {"Desktop Entry/x-key", "desktop entry/X-key", "Desktop Entry/", "/X-key", "X-key", "/", "",
                            "Desktop Entry/X-key/", "Desktop Entry//X-key", "Desktop Entry/X-key[de]"}) {
        QVERIFY2(!read.contains(QString::fromLatin1(key)), key);
        QVERIFY2(read.value(QString::fromLatin1(key)).isNull(), key);
    }
    QVERIFY(read.contains(Key));
}

void MDesktopEntryTest::keepsWhatItHasRead()
{
    DeviceFile file(m_folder.filePath(QStringLiteral("changing.desktop")), "[Desktop Entry]\nX-key=before\n");
    const MDesktopEntry before(m_folder.filePath(QStringLiteral("changing.desktop")));
    file.write("[Desktop Entry]\nX-key=after\n");
    QCOMPARE(before.value(Key), QStringLiteral("before"));
    QCOMPARE(MDesktopEntry(m_folder.filePath(QStringLiteral("changing.desktop"))).value(Key), QStringLiteral("after"));
}

void MDesktopEntryTest::followsLinks()
{
    const DeviceFile file(m_folder.filePath(QStringLiteral("file")), "[Desktop Entry]\nX-key=value\n");
    const QString link = m_folder.filePath(QStringLiteral("link \u00e4"));
    QVERIFY(QFile::link(m_folder.filePath(QStringLiteral("file")), link));
    QCOMPARE(MDesktopEntry(link).value(Key), QStringLiteral("value"));
}

void MDesktopEntryTest::readsThousandsOfTranslations()
{
    QByteArray contents = "[Desktop Entry]\nName=name\n";
    for (int language = 0; language < 20000; ++language) {
        contents += "Name[l" + QByteArray::number(language) + "]=translated\n";
    }
    const MDesktopEntry read = entry(contents + "X-key=value\n");
    QCOMPARE(read.value(Key), QStringLiteral("value"));
    QCOMPARE(read.value(QStringLiteral("Desktop Entry/Name")), QStringLiteral("name"));
}

void MDesktopEntryTest::readsUpToALimit()
{
    const QByteArray start = "[Desktop Entry]\nX-key=value\n#";
    const QByteArray filling(limit - start.size(), 'x');
    QCOMPARE(entry(start + filling).value(Key), QStringLiteral("value"));
    QVERIFY(!entry(start + filling + 'x').contains(Key));
}

// Nor takes long over it.
void MDesktopEntryTest::readsNothingThatIsLarge()
{
    const QString path = m_folder.filePath(QStringLiteral("large.desktop"));
    const DeviceFile file(path, "[Desktop Entry]\nX-key=value\n" + QByteArray(50 * 1024 * 1024, '\n'));
    const Deadline deadline;
    QVERIFY(!MDesktopEntry(path).contains(Key));
    QVERIFY(!deadline.hasPassed());
}

void MDesktopEntryTest::readsNothingThatIsNoFile_data()
{
    QTest::addColumn<QString>("path");
    QTest::newRow("no path") << QString();
    QTest::newRow("missing") << m_folder.filePath(QStringLiteral("missing"));
    QTest::newRow("folder") << m_folder.path();
    QTest::newRow("FIFO") << m_files.fifo();
    QTest::newRow("link to a FIFO") << m_files.linkToFifo();
    QTest::newRow("socket") << m_files.socket();
    QTest::newRow("terminal") << m_files.terminal();
    QTest::newRow("endless") << QStringLiteral("/dev/zero");
    QTest::newRow("link to itself") << m_files.path(QStringLiteral("circle"));
    QTest::newRow("overlong") << QString(100000, QLatin1Char('x'));
    QTest::newRow("resource") << QStringLiteral(":/qt-project.org");
}

void MDesktopEntryTest::readsNothingThatIsNoFile()
{
    QFETCH(QString, path);

    QFile::link(QStringLiteral("circle"), m_files.path(QStringLiteral("circle")));
    const Deadline deadline;
    const MDesktopEntry read(path);
    QVERIFY(!deadline.hasPassed());
    QVERIFY(!read.contains(Key));
    QCOMPARE(read.value(Key), QString());
}

// Even if what it holds would make an entry.
void MDesktopEntryTest::readsNothingFromAPipe()
{
    QFile writer(m_files.fifo());
    QVERIFY(writer.open(QIODevice::ReadWrite | QIODevice::Unbuffered));
    const QByteArray text("[Desktop Entry]\nX-key=value\n");
    QCOMPARE(writer.write(text), qint64(text.size()));
    QVERIFY(!MDesktopEntry(m_files.fifo()).contains(Key));
    QCOMPARE(writer.read(text.size()), text);
}

// Which ends a path for the system, so that it would be another file's.
void MDesktopEntryTest::readsNothingBehindAZeroByte()
{
    const QString path = m_folder.filePath(QStringLiteral("a.desktop"));
    const DeviceFile file(path, "[Desktop Entry]\nX-key=value\n");
    QVERIFY(MDesktopEntry(path).contains(Key));
    QVERIFY(!MDesktopEntry(path + QChar(0) + QLatin1Char('b')).contains(Key));
}

void MDesktopEntryTest::readsNothingThatIsSecret()
{
    const QString path = m_folder.filePath(QStringLiteral("secret.desktop"));
    const DeviceFile file(path, "[Desktop Entry]\nX-key=value\n");
    QVERIFY(QFile::setPermissions(path, {}));
    QVERIFY(MDesktopEntry(path).contains(Key));
    const QFile::Permissions open = QFile::permissions(m_folder.path()) | QFile::ReadOther | QFile::ExeOther;
    QVERIFY(QFile::setPermissions(m_folder.path(), open));
    const Nobody nobody;
    QVERIFY(!MDesktopEntry(path).contains(Key));
}

void MDesktopEntryTest::leavesNothingOpen()
{
    const QStringList before = openFiles();
    {
        const MDesktopEntry read = entry("[Desktop Entry]\nX-key=value\n");
        QCOMPARE(openFiles(), before);
        const MDesktopEntry bad = entry("bad");
        QCOMPARE(openFiles(), before);
    }
    QVERIFY(bytesGainedPerCall([this] { entry("[Desktop Entry]\nX-key=value\nbad\n").value(Key); }) < 16);
}

QTEST_GUILESS_MAIN(MDesktopEntryTest)

#include "tst_mdesktopentry.moc"
