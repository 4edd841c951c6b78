// SPDX-FileCopyrightText: velmora-installationhandler contributors
// SPDX-License-Identifier: BSD-3-Clause

#include "journal.h"
#include "messagelog.h"
#include "processstate.h"
#include "rpminfo.h"
#include "rpmtest.h"

#include <QtEndian>
#include <QtTest>

#include <cstring>

namespace {

constexpr int leadSize = 96;

QByteArray contents(const QString &path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

bool save(const QString &path, const QByteArray &bytes)
{
    QFile file(path);
    return file.open(QIODevice::WriteOnly) && file.write(bytes) == bytes.size();
}

/** Where the header at an offset of a package ends. */
int headerEnd(const QByteArray &package, int start)
{
    const char *const counts = package.constData() + start + 8;
    const int entries = qFromBigEndian<qint32>(counts);
    const int size = qFromBigEndian<qint32>(counts + 4);
    return start + 16 + 16 * entries + size;
}

/** Where the payload of a package starts. */
int payloadStart(const QByteArray &package)
{
    const int signatureEnd = headerEnd(package, leadSize);
    return headerEnd(package, (signatureEnd + 7) / 8 * 8);
}

/** What the log says when librpm's result is the given one; its other half is the text of any error number. */
bool isFailureLine(const QString &line, int result)
{
    const QString start = QStringLiteral("debug: could not read rpm: %1 \"").arg(result);
    for (int error = 0; error < 134; ++error) {
        if (line == start + QString::fromLatin1(std::strerror(error)) + QLatin1Char('"')) {
            return true;
        }
    }
    return false;
}

}

/** Files that open, but hold nothing that librpm makes sense of. */
class TestRpmInfoFailure : public RpmTest
{
    Q_OBJECT

private Q_SLOTS:
    void refuses_data();
    void refuses();
    void refusesWhateverIsTruncated();
    void saysWhyAFolderCannotBeRead();
    void keepsTheValuesOfTheFileBefore();
    void readsAGoodFileAfterwards();
    void gainsNoMemory();

private:
    void checkRefusal(const QString &path, int result);

    QTemporaryDir m_folder;
};

void TestRpmInfoFailure::checkRefusal(const QString &path, int result)
{
    Journal journal;
    RpmInfo info;
    {
        const MessageLog log(&journal);
        info.readPackage(path);
    }
    QVERIFY(!info.isValid());
    QVERIFY(!info.isSignatureValid());
    QVERIFY(info.name().isEmpty());
    QVERIFY(info.version().isEmpty());
    QVERIFY(info.summary().isEmpty());
    QCOMPARE(info.fileName(), path);
    QCOMPARE(journal.entries().size(), 1);
    QVERIFY2(isFailureLine(journal.entries().constFirst(), result), qPrintable(journal.entries().constFirst()));
}

void TestRpmInfoFailure::refuses_data()
{
    QTest::addColumn<QString>("path");
    QTest::addColumn<int>("result");
    constexpr int notAPackage = 1;
    constexpr int failed = 2;

    for (const char *broken :
         {"damaged-header", "name-number", "claims-nothing", "claims-most", "claims-most-entries", "claims-most-data",
          "claims-entries", "claims-data", "claims-all-allowed", "signature-claims-most", "signature-claims-entries",
          "signature-claims-data", "signature-claims-all-allowed"}) {
        QTest::newRow(broken) << packageFile(QLatin1String(broken)) << failed;
    }

    const auto addFile = [this](const char *name, const QByteArray &bytes, int result) {
        const QString path = m_folder.filePath(QLatin1String(name));
        QVERIFY(save(path, bytes));
        QTest::newRow(name) << path << result;
    };
    addFile("no bytes", QByteArray(), notAPackage);
    addFile("text", QByteArray("This is no package. ").repeated(100), notAPackage);
    addFile("zeros", QByteArray(4096, '\0'), notAPackage);
    const QByteArray lead = contents(packageFile(QStringLiteral("plain"))).left(leadSize);
    addFile("a lead, then zeros", lead + QByteArray(4096, '\0'), failed);
    QTest::newRow("the device without contents") << QStringLiteral("/dev/null") << notAPackage;
    QTest::newRow("the device without end") << QStringLiteral("/dev/zero") << notAPackage;
    QTest::newRow("a folder") << m_folder.path() << failed;
}

void TestRpmInfoFailure::refuses()
{
    QFETCH(QString, path);
    QFETCH(int, result);
    checkRefusal(path, result);
}

void TestRpmInfoFailure::refusesWhateverIsTruncated()
{
    const QByteArray package = contents(packageFile(QStringLiteral("plain")));
    const int signatureEnd = headerEnd(package, leadSize);
    const int payload = payloadStart(package);
    QVERIFY(payload > signatureEnd && payload < package.size());

    QList<int> lengths{1,
                       leadSize - 1,
                       leadSize,
                       leadSize + 1,
                       leadSize + 15,
                       leadSize + 16,
                       signatureEnd - 1,
                       signatureEnd,
                       signatureEnd + 1,
                       signatureEnd + 16,
                       payload - 1};
    constexpr int step = 53;
    for (int length = step; length < payload; length += step) {
        lengths.append(length);
    }
    const QString path = m_folder.filePath(QStringLiteral("truncated.rpm"));
    for (const int length : qAsConst(lengths)) {
        QVERIFY(save(path, package.left(length)));
        checkRefusal(path, length < leadSize ? 1 : 2);
        QVERIFY2(!QTest::currentTestFailed(), qPrintable(QStringLiteral("%1 bytes").arg(length)));
    }

    // Nobody looks at the payload.
    QVERIFY(save(path, package.left(payload)));
    RpmInfo info;
    info.readPackage(path);
    QVERIFY(info.isValid());
    QCOMPARE(info.name(), QStringLiteral("plain"));
}

void TestRpmInfoFailure::saysWhyAFolderCannotBeRead()
{
    Journal journal;
    const MessageLog log(&journal);
    RpmInfo().readPackage(m_folder.path());
    QCOMPARE(journal.entries(), QStringList{QStringLiteral("debug: could not read rpm: 2 \"Is a directory\"")});
}

void TestRpmInfoFailure::keepsTheValuesOfTheFileBefore()
{
    RpmInfo info;
    info.readPackage(packageFile(QStringLiteral("plain")));
    QVERIFY(info.isValid());

    info.readPackage(packageFile(QStringLiteral("damaged-header")));
    QVERIFY(!info.isValid());
    QCOMPARE(info.name(), QStringLiteral("plain"));
    QCOMPARE(info.version(), QStringLiteral("1.2.3"));
    QCOMPARE(info.summary(), QStringLiteral("A plain package"));
    QCOMPARE(info.fileName(), packageFile(QStringLiteral("damaged-header")));
}

void TestRpmInfoFailure::readsAGoodFileAfterwards()
{
    RpmInfo info;
    info.readPackage(packageFile(QStringLiteral("claims-most")));
    QVERIFY(!info.isValid());
    info.readPackage(packageFile(QStringLiteral("plain")));
    QVERIFY(info.isValid());
    QCOMPARE(info.name(), QStringLiteral("plain"));
}

void TestRpmInfoFailure::gainsNoMemory()
{
    RpmInfo info;
    const QString file = packageFile(QStringLiteral("damaged-header"));
    const qint64 gained = bytesGainedPerCall([&] { info.readPackage(file); });
    QVERIFY2(gained < 1024, qPrintable(QStringLiteral("%1 bytes a read").arg(gained)));
}

QTEST_GUILESS_MAIN(TestRpmInfoFailure)

#include "tst_rpminfofailure.moc"
