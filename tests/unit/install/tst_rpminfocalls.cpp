// SPDX-FileCopyrightText: velmora-installationhandler contributors
// SPDX-License-Identifier: BSD-3-Clause

#include "errortext.h"
#include "fakerpm.h"
#include "journal.h"
#include "messagelog.h"
#include "rpmhandle.h"
#include "rpminfo.h"

#include <QtTest>

#include <cerrno>
#include <limits>

Q_DECLARE_METATYPE(rpmRC)

/** What the reader makes of each answer that librpm could give. */
class TestRpmInfoCalls : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();

    void goesByTheResult_data();
    void goesByTheResult();
    void logsTheErrorNumber_data();
    void logsTheErrorNumber();
    void readsTheErrorTextAsLatin1();

    void convertsTheFirstElement_data();
    void convertsTheFirstElement();
    void forgetsValuesOfOtherTypes_data();
    void forgetsValuesOfOtherTypes();
    void passesOverOtherTags();

    void readsTheConfigurationEveryTime();
    void verifiesForOneTagAlone_data();
    void verifiesForOneTagAlone();
    void verifiesFromTheStart_data();
    void verifiesFromTheStart();
    void doesNotVerifyWhatCannotBeRewound();

private:
    void addValues(rpmTagType type);
    bool addText(rpmTagVal tag, const char *text);

    QTemporaryFile m_file;
    RpmHandle<Header> m_header;
};

void TestRpmInfoCalls::init()
{
    if (!m_file.isOpen()) {
        QVERIFY(m_file.open());
        QVERIFY(m_file.write(QByteArray(100, 'x')) == 100 && m_file.flush());
    }
    m_header.reset(headerNew());
    FakeRpm::script = FakeRpm::Script();
    FakeRpm::script.header = m_header.get();
    FakeRpm::calls.clear();
}

bool TestRpmInfoCalls::addText(rpmTagVal tag, const char *text)
{
    return FakeRpm::addTag(m_header.get(), tag, RPM_STRING_TYPE, text, 1);
}

void TestRpmInfoCalls::goesByTheResult_data()
{
    QTest::addColumn<rpmRC>("result");
    QTest::addColumn<bool>("valid");
    QTest::newRow("0, good") << RPMRC_OK << true;
    QTest::newRow("1, not found") << RPMRC_NOTFOUND << false;
    QTest::newRow("2, failed") << RPMRC_FAIL << false;
    QTest::newRow("3, untrusted key") << RPMRC_NOTTRUSTED << true;
    QTest::newRow("4, unknown key") << RPMRC_NOKEY << true;
}

void TestRpmInfoCalls::goesByTheResult()
{
    QFETCH(rpmRC, result);
    QFETCH(bool, valid);
    QVERIFY(addText(RPMTAG_NAME, "somename"));
    FakeRpm::script.readResult = result;
    FakeRpm::script.readError = EIO;

    Journal journal;
    const MessageLog log(&journal);
    RpmInfo info;
    info.readPackage(m_file.fileName());

    QCOMPARE(info.isValid(), valid);
    QCOMPARE(info.name(), valid ? QStringLiteral("somename") : QString());
    const QString line = valid ? QStringLiteral("debug: RPM Package info: \"somename\" \"\" \"\"")
                               : QStringLiteral(R"(debug: could not read rpm: %1 "Input/output error")").arg(result);
    QCOMPARE(journal.entries(), QStringList{line});
}

void TestRpmInfoCalls::logsTheErrorNumber_data()
{
    QTest::addColumn<int>("error");
    QTest::addColumn<QString>("line");
    QTest::newRow("none") << 0 << QStringLiteral(R"(debug: could not read rpm: 2 "Success")");
    QTest::newRow("no space") << ENOSPC << QStringLiteral(R"(debug: could not read rpm: 2 "No space left on device")");
    QTest::newRow("unknown") << 12345 << QStringLiteral(R"(debug: could not read rpm: 2 "Unknown error 12345")");
}

void TestRpmInfoCalls::logsTheErrorNumber()
{
    QFETCH(int, error);
    FakeRpm::script.readResult = RPMRC_FAIL;
    FakeRpm::script.readError = error;
    Journal journal;
    const MessageLog log(&journal);
    RpmInfo().readPackage(m_file.fileName());
    QTEST(journal.entries().join(QLatin1Char('|')), "line");
}

void TestRpmInfoCalls::readsTheErrorTextAsLatin1()
{
    const ErrorText text(ENOSPC, "Kein Platz f\u00fcr mehr");
    FakeRpm::script.readResult = RPMRC_FAIL;
    FakeRpm::script.readError = ENOSPC;
    Journal journal;
    const MessageLog log(&journal);
    RpmInfo().readPackage(m_file.fileName());
    // Each of the two bytes that the letter has in this locale's encoding is a letter by itself.
    const QString line = QStringLiteral("debug: could not read rpm: 2 \"Kein Platz f\u00c3\u00bcr mehr\"");
    QCOMPARE(journal.entries(), QStringList{line});
}

void TestRpmInfoCalls::addValues(rpmTagType type)
{
    constexpr quint32 small[] = {std::numeric_limits<quint32>::max(), 7};
    constexpr quint64 large[] = {std::numeric_limits<quint64>::max(), 7};
    const char *const texts[] = {"\u00fc first", "second"};
    const void *data = texts;
    if (type == RPM_INT32_TYPE) {
        data = small;
    } else if (type == RPM_INT64_TYPE) {
        data = large;
    } else if (type == RPM_CHAR_TYPE || type == RPM_INT8_TYPE || type == RPM_INT16_TYPE || type == RPM_BIN_TYPE) {
        data = "abcd";
    }
    for (const rpmTagVal tag : {RPMTAG_NAME, RPMTAG_VERSION, RPMTAG_SUMMARY}) {
        QVERIFY(FakeRpm::addTag(m_header.get(), tag, type, type == RPM_STRING_TYPE ? texts[0] : data,
                                type == RPM_STRING_TYPE ? 1 : 2));
    }
}

void TestRpmInfoCalls::convertsTheFirstElement_data()
{
    QTest::addColumn<int>("type");
    QTest::addColumn<QString>("value");
    QTest::newRow("32 bits") << int(RPM_INT32_TYPE) << QStringLiteral("4294967295");
    QTest::newRow("64 bits") << int(RPM_INT64_TYPE) << QStringLiteral("18446744073709551615");
    QTest::newRow("text") << int(RPM_STRING_TYPE) << QStringLiteral("\u00fc first");
    QTest::newRow("texts") << int(RPM_STRING_ARRAY_TYPE) << QStringLiteral("\u00fc first");
    QTest::newRow("translated text") << int(RPM_I18NSTRING_TYPE) << QStringLiteral("\u00fc first");
}

void TestRpmInfoCalls::convertsTheFirstElement()
{
    QFETCH(int, type);
    QFETCH(QString, value);
    addValues(static_cast<rpmTagType>(type));
    RpmInfo info;
    info.readPackage(m_file.fileName());
    QVERIFY(info.isValid());
    QCOMPARE(info.name(), value);
    QCOMPARE(info.version(), value);
    QCOMPARE(info.summary(), value);
}

void TestRpmInfoCalls::forgetsValuesOfOtherTypes_data()
{
    QTest::addColumn<int>("type");
    QTest::newRow("characters") << int(RPM_CHAR_TYPE);
    QTest::newRow("8 bits") << int(RPM_INT8_TYPE);
    QTest::newRow("16 bits") << int(RPM_INT16_TYPE);
    QTest::newRow("bytes") << int(RPM_BIN_TYPE);
}

void TestRpmInfoCalls::forgetsValuesOfOtherTypes()
{
    QFETCH(int, type);
    addValues(RPM_STRING_TYPE);
    RpmInfo info;
    info.readPackage(m_file.fileName());
    QVERIFY(!info.name().isEmpty());

    m_header.reset(headerNew());
    FakeRpm::script.header = m_header.get();
    addValues(static_cast<rpmTagType>(type));
    info.readPackage(m_file.fileName());
    QVERIFY(info.isValid());
    QCOMPARE(info.name(), QString());
    QCOMPARE(info.version(), QString());
    QCOMPARE(info.summary(), QString());
}

void TestRpmInfoCalls::passesOverOtherTags()
{
    for (const rpmTagVal tag : {RPMTAG_RELEASE, RPMTAG_EPOCH, RPMTAG_DESCRIPTION, RPMTAG_URL, RPMTAG_LICENSE}) {
        QVERIFY(addText(tag, "unwanted"));
    }
    RpmInfo info;
    info.readPackage(m_file.fileName());
    QVERIFY(info.isValid());
    QCOMPARE(info.name() + info.version() + info.summary(), QString());
    QCOMPARE(FakeRpm::calls.filter(QStringLiteral("rpmVerifySignatures")).size(), 0);
}

void TestRpmInfoCalls::readsTheConfigurationEveryTime()
{
    RpmInfo info;
    info.readPackage(m_file.fileName());
    info.readPackage(m_file.fileName());
    const QStringList once{QStringLiteral("rpmReadConfigFiles"),
                           QStringLiteral("rpmReadPackageFile ") + m_file.fileName()};
    QCOMPARE(FakeRpm::calls, once + once);

    FakeRpm::calls.clear();
    info.readPackage(QStringLiteral("/missing.rpm"));
    QCOMPARE(FakeRpm::calls, QStringList());
}

void TestRpmInfoCalls::verifiesForOneTagAlone_data()
{
    QTest::addColumn<int>("tag");
    QTest::addColumn<bool>("verified");
    QTest::newRow("259, header and payload") << 259 << true;
    QTest::newRow("262, header and payload, another kind") << 262 << false;
    QTest::newRow("261, digest") << 261 << false;
    QTest::newRow("267, header, another kind") << 267 << false;
    QTest::newRow("268, header") << 268 << false;
}

void TestRpmInfoCalls::verifiesForOneTagAlone()
{
    QFETCH(int, tag);
    QFETCH(bool, verified);
    QVERIFY(FakeRpm::addTag(m_header.get(), static_cast<rpmTagVal>(tag), RPM_BIN_TYPE, "signature", 9));
    RpmInfo info;
    info.readPackage(m_file.fileName());
    QVERIFY(info.isValid());
    QCOMPARE(info.isSignatureValid(), verified);
    QCOMPARE(FakeRpm::calls.filter(QStringLiteral("rpmVerifySignatures")).size(), verified ? 1 : 0);
}

void TestRpmInfoCalls::verifiesFromTheStart_data()
{
    QTest::addColumn<int>("result");
    QTest::addColumn<bool>("signatureValid");
    QTest::newRow("verified") << 0 << true;
    QTest::newRow("not verified") << 1 << false;
    QTest::newRow("a negative result") << -1 << false;
}

void TestRpmInfoCalls::verifiesFromTheStart()
{
    QFETCH(int, result);
    QVERIFY(FakeRpm::addTag(m_header.get(), RPMTAG_SIGPGP, RPM_BIN_TYPE, "signature", 9));
    FakeRpm::script.verifyResult = result;
    RpmInfo info;
    info.readPackage(m_file.fileName());
    QVERIFY(info.isValid());
    QTEST(info.isSignatureValid(), "signatureValid");
    const QStringList expected{QStringLiteral("rpmReadConfigFiles"),
                               QStringLiteral("rpmReadPackageFile ") + m_file.fileName(), QStringLiteral("Fseek"),
                               QStringLiteral("rpmVerifySignatures %1 from 0").arg(m_file.fileName())};
    QCOMPARE(FakeRpm::calls, expected);
}

void TestRpmInfoCalls::doesNotVerifyWhatCannotBeRewound()
{
    QVERIFY(FakeRpm::addTag(m_header.get(), RPMTAG_SIGPGP, RPM_BIN_TYPE, "signature", 9));
    QVERIFY(addText(RPMTAG_NAME, "somename"));
    FakeRpm::script.seekFails = true;
    RpmInfo info;
    info.readPackage(m_file.fileName());
    QVERIFY(info.isValid());
    QVERIFY(!info.isSignatureValid());
    QCOMPARE(info.name(), QStringLiteral("somename"));
    QCOMPARE(FakeRpm::calls.filter(QStringLiteral("rpmVerifySignatures")).size(), 0);
}

QTEST_GUILESS_MAIN(TestRpmInfoCalls)

#include "tst_rpminfocalls.moc"
