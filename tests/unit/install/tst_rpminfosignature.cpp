// SPDX-FileCopyrightText: velmora-installationhandler contributors
// SPDX-License-Identifier: BSD-3-Clause

#include "journal.h"
#include "messagelog.h"
#include "processstate.h"
#include "rpminfo.h"
#include "rpmtest.h"

#include <QtTest>

/** Reads signed packages with a real database that knows the keys "known" and "modern". */
class TestRpmInfoSignature : public RpmTest
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();

    void verifiesOnlyHeaderAndPayload_data();
    void verifiesOnlyHeaderAndPayload();
    void refusesHeadersThatContradictTheirSignature_data();
    void refusesHeadersThatContradictTheirSignature();
    void clearsTheFlagAtEveryRead_data();
    void clearsTheFlagAtEveryRead();
    void looksForKeysAnewAtEveryRead();
    void gainsNoMemory();
};

void TestRpmInfoSignature::initTestCase()
{
    RpmTest::initTestCase();
    QVERIFY(m_environment.useDatabase(QStringLiteral("known")));
    QVERIFY(m_environment.importKey(QStringLiteral("known.asc")));
    QVERIFY(m_environment.importKey(QStringLiteral("modern.asc")));
}

void TestRpmInfoSignature::verifiesOnlyHeaderAndPayload_data()
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<bool>("signatureValid");
    const auto addRow = [](const char *name, bool signatureValid) {
        QTest::newRow(name) << QString::fromLatin1(name) << signatureValid;
    };
    addRow("signed", true);
    addRow("signed-unknown-key", false);
    // Good signatures, but of the header alone, or of a kind that has another tag.
    addRow("signed-header-only", false);
    addRow("signed-modern", false);
    addRow("signed-unknown-key-header-only", false);

    QTest::newRow("plain") << QStringLiteral("plain") << false;
    for (const char *damaged : {"signed-damaged-payload", "signed-damaged-signature", "signed-unreadable-signature"}) {
        QTest::newRow(damaged) << QStringLiteral("signed") << false;
    }
}

void TestRpmInfoSignature::verifiesOnlyHeaderAndPayload()
{
    QFETCH(QString, name);
    QFETCH(bool, signatureValid);
    const QString file = packageFile(QLatin1String(QTest::currentDataTag()));

    Journal journal;
    RpmInfo info;
    {
        const MessageLog log(&journal);
        info.readPackage(file);
    }

    QVERIFY(info.isValid());
    QCOMPARE(info.isSignatureValid(), signatureValid);
    QCOMPARE(info.name(), name);
    QCOMPARE(info.fileName(), file);
    // Whatever the signature is worth, the log does not tell.
    QCOMPARE(journal.entries(),
             QStringList{QStringLiteral("debug: RPM Package info: \"%1\" \"%2\" \"%3\"")
                                 .arg(info.name(), info.version(), info.summary())});
}

void TestRpmInfoSignature::refusesHeadersThatContradictTheirSignature_data()
{
    QTest::addColumn<int>("unused");
    QTest::newRow("signed-damaged-header") << 0;
    QTest::newRow("signed-damaged-header-signature") << 0;
    QTest::newRow("signed-unreadable-header-signature") << 0;
}

void TestRpmInfoSignature::refusesHeadersThatContradictTheirSignature()
{
    Journal journal;
    const MessageLog log(&journal);
    RpmInfo info;
    info.readPackage(packageFile(QLatin1String(QTest::currentDataTag())));

    QVERIFY(!info.isValid());
    QVERIFY(!info.isSignatureValid());
    QVERIFY(info.name().isEmpty());
    QCOMPARE(journal.entries().size(), 1);
    QVERIFY2(journal.entries().constFirst().startsWith(QLatin1String("debug: could not read rpm: 2 \"")),
             qPrintable(journal.entries().constFirst()));
}

void TestRpmInfoSignature::clearsTheFlagAtEveryRead_data()
{
    QTest::addColumn<QString>("file");
    QTest::newRow("an unsigned one") << packageFile(QStringLiteral("plain"));
    QTest::newRow("an unknown key") << packageFile(QStringLiteral("signed-unknown-key"));
    QTest::newRow("a damaged header") << packageFile(QStringLiteral("damaged-header"));
    QTest::newRow("a missing one") << QStringLiteral("/missing.rpm");
    QTest::newRow("no name at all") << QString();
}

void TestRpmInfoSignature::clearsTheFlagAtEveryRead()
{
    QFETCH(QString, file);
    RpmInfo info;
    info.readPackage(packageFile(QStringLiteral("signed")));
    QVERIFY(info.isSignatureValid());
    info.readPackage(file);
    QVERIFY(!info.isSignatureValid());
    info.readPackage(packageFile(QStringLiteral("signed")));
    QVERIFY(info.isSignatureValid());
}

void TestRpmInfoSignature::looksForKeysAnewAtEveryRead()
{
    RpmInfo info;
    const auto isKnown = [&info] {
        info.readPackage(packageFile(QStringLiteral("signed")));
        return info.isValid() && info.isSignatureValid();
    };
    QVERIFY(isKnown());
    QVERIFY(m_environment.useDatabase(QStringLiteral("empty")));
    const bool knownToTheEmptyOne = isKnown();
    QVERIFY(m_environment.useDatabase(QStringLiteral("known")));
    QVERIFY(!knownToTheEmptyOne);
    QVERIFY(isKnown());
}

void TestRpmInfoSignature::gainsNoMemory()
{
    RpmInfo info;
    const QString file = packageFile(QStringLiteral("signed"));
    const qint64 gained = bytesGainedPerCall([&] { info.readPackage(file); });
    QVERIFY2(gained < 1024, qPrintable(QStringLiteral("%1 bytes a read").arg(gained)));
}

QTEST_GUILESS_MAIN(TestRpmInfoSignature)

#include "tst_rpminfosignature.moc"
