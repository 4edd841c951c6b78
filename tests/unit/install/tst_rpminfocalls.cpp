// SPDX-FileCopyrightText: velmora-installationhandler contributors
// SPDX-License-Identifier: BSD-3-Clause

#include "fakerpm.h"
#include "journal.h"
#include "processstate.h"
#include "rpmhandle.h"
#include "rpminfotext.h"
#include "testrunner.h"

#include <QTemporaryDir>
#include <QTemporaryFile>

#include <cerrno>
#include <cstdio>
#include <limits>
#include <optional>
#include <thread>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

/** The reader's use of librpm, and all answers that librpm could give. */
class RpmInfoCallsTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase()
    {
        m_log.emplace(&m_journal);
        QVERIFY(m_file.open());
        QVERIFY(m_file.write(QByteArray(100, 'x')) == 100 && m_file.flush());
        m_readCalls = callsFor(m_file.fileName());
    }

    void cleanupTestCase() { m_log.reset(); }
    void init()
    {
        FakeRpm::script = FakeRpm::Script();
        takeNewHeader();
        FakeRpm::calls.clear();
        m_info.emplace();
        m_journal.clear();
    }

    void goesByTheResult_data()
    {
        QTest::addColumn<int>("result");
        QTest::addColumn<int>("error");
        QTest::addColumn<bool>("valid");
        QTest::addColumn<QString>("line");
        const QString good = R"(debug: RPM Package info: "somename" "" "")"_s;
        const QString bad = R"(debug: could not read rpm: %1 "%2")"_s;
        const QString ioError = "Input/output error"_s;
        QTest::newRow("0, good") << int(RPMRC_OK) << EIO << true << good;
        QTest::newRow("1, not found") << int(RPMRC_NOTFOUND) << EIO << false << bad.arg(QString::number(1), ioError);
        QTest::newRow("2, failed") << int(RPMRC_FAIL) << EIO << false << bad.arg(QString::number(2), ioError);
        QTest::newRow("3, untrusted key") << int(RPMRC_NOTTRUSTED) << EIO << true << good;
        QTest::newRow("4, unknown key") << int(RPMRC_NOKEY) << EIO << true << good;

        // Known behaviour 47.
        const int failed = RPMRC_FAIL;
        QTest::newRow("no error") << failed << 0 << false << R"(debug: could not read rpm: 2 "Success")";
        QTest::newRow("no space") << failed << ENOSPC << false
                                  << bad.arg(QString::number(2), "No space left on device"_s);
        QTest::newRow("unknown error") << failed << 12345 << false
                                       << R"(debug: could not read rpm: 2 "Unknown error 12345")";
    }

    void goesByTheResult()
    {
        QFETCH(int, result);
        QFETCH(int, error);
        QFETCH(bool, valid);
        QFETCH(QString, line);
        addText(RPMTAG_NAME, "somename");
        FakeRpm::script.readResult = static_cast<rpmRC>(result);
        FakeRpm::script.readError = error;
        QCOMPARE(read(), (valid ? "valid: somename|||"_s : "invalid: |||"_s) + m_file.fileName());
        QCOMPARE(m_journal.entries(), QStringList(line));
    }

    void readsTheErrorTextAsLatin1()
    {
        char text[] = "Kein Platz f\u00fcr mehr";
        FakeRpm::script.errorText = text;
        FakeRpm::script.readResult = RPMRC_FAIL;
        read();
        // Each of the two bytes of the letter in UTF-8 becomes a letter.
        QCOMPARE(m_journal.entries(), QStringList("debug: could not read rpm: 2 \"Kein Platz f\u00c3\u00bcr mehr\""_s));
    }

    void convertsTheFirstElement_data()
    {
        QTest::addColumn<int>("type");
        QTest::addColumn<QString>("value");
        QTest::newRow("32 bits") << int(RPM_INT32_TYPE) << "4294967295";
        QTest::newRow("64 bits") << int(RPM_INT64_TYPE) << "18446744073709551615";
        QTest::newRow("text") << int(RPM_STRING_TYPE) << "\u00fc first";
        QTest::newRow("texts") << int(RPM_STRING_ARRAY_TYPE) << "\u00fc first";
        QTest::newRow("translated text") << int(RPM_I18NSTRING_TYPE) << "\u00fc first";
        QTest::newRow("characters") << int(RPM_CHAR_TYPE) << QString();
        QTest::newRow("8 bits") << int(RPM_INT8_TYPE) << QString();
        QTest::newRow("16 bits") << int(RPM_INT16_TYPE) << QString();
        QTest::newRow("bytes") << int(RPM_BIN_TYPE) << QString();
    }

    // A value of another type replaces the value of the file before by nothing.
    void convertsTheFirstElement()
    {
        QFETCH(int, type);
        QFETCH(QString, value);
        for (const rpmTagVal tag : {RPMTAG_NAME, RPMTAG_VERSION, RPMTAG_SUMMARY}) {
            addText(tag, "before");
        }
        QCOMPARE(read(), "valid: before|before|before|"_s + m_file.fileName());

        takeNewHeader();
        addValues(static_cast<rpmTagType>(type));
        QCOMPARE(read(), "valid: %1|%1|%1|"_s.arg(value) + m_file.fileName());
    }

    void passesOverOtherTags()
    {
        for (const rpmTagVal tag : {RPMTAG_RELEASE, RPMTAG_EPOCH, RPMTAG_DESCRIPTION, RPMTAG_URL, RPMTAG_LICENSE}) {
            addText(tag, "unwanted");
        }
        QCOMPARE(read(), "valid: |||"_s + m_file.fileName());
        QCOMPARE(FakeRpm::calls, m_readCalls);
    }

    void readsTheConfigurationEveryTime()
    {
        read();
        read();
        QCOMPARE(FakeRpm::calls, m_readCalls + m_readCalls);

        FakeRpm::calls.clear();
        m_info->readPackage("/missing.rpm"_s);
        QCOMPARE(FakeRpm::calls, QStringList("Fopen r /missing.rpm"_s));
    }

    // The path is the caller's until librpm has opened it, so the file may be another one by then. Known behaviour 74.
    void waitsForAFifoThatHasTakenThePlace()
    {
        const QTemporaryDir folder;
        const QByteArray path = QFile::encodeName(folder.filePath("a.rpm"_s));
        const QByteArray fifo = path + ".fifo";
        QVERIFY(QFile::copy(m_file.fileName(), QFile::decodeName(path)));
        QCOMPARE(mkfifo(fifo.constData(), 0600), 0);
        bool replaced = false;
        int otherEnd = -1;
        std::thread other;
        FakeRpm::script.beforeOpening = [&] {
            replaced = std::rename(fifo.constData(), path.constData()) == 0;
            other = std::thread([&] {
                // This waits for librpm, as librpm waits for this.
                otherEnd = open(path.constData(), O_WRONLY | O_CLOEXEC);
                close(otherEnd);
            });
        };
        FakeRpm::script.readResult = RPMRC_NOTFOUND;
        {
            const Deadline deadline;
            m_info->readPackage(QFile::decodeName(path));
            QVERIFY(other.joinable());
            other.join();
            QVERIFY(!deadline.hasPassed());
        }
        QVERIFY(replaced);
        QVERIFY(otherEnd >= 0);
        QCOMPARE(FakeRpm::calls, callsFor(QFile::decodeName(path)));
    }

    void verifiesForOneTagAlone_data()
    {
        QTest::addColumn<int>("tag");
        QTest::addColumn<bool>("seekFails");
        QTest::addColumn<int>("verifyResult");
        QTest::addColumn<bool>("signatureValid");
        QTest::addColumn<QStringList>("calls");
        const QStringList rewinds{"Fseek"_s};
        const QStringList verifies = rewinds + QStringList("rpmVerifySignatures %1 from 0"_s.arg(m_file.fileName()));
        QTest::newRow("259, header and payload") << 259 << false << 0 << true << verifies;
        QTest::newRow("259, not verified") << 259 << false << 1 << false << verifies;
        QTest::newRow("259, a negative result") << 259 << false << -1 << false << verifies;
        QTest::newRow("259, cannot be rewound") << 259 << true << 0 << false << rewinds;
        QTest::newRow("262, header and payload, another kind") << 262 << false << 0 << false << QStringList();
        QTest::newRow("261, digest") << 261 << false << 0 << false << QStringList();
        QTest::newRow("267, header, another kind") << 267 << false << 0 << false << QStringList();
        QTest::newRow("268, header") << 268 << false << 0 << false << QStringList();
    }

    void verifiesForOneTagAlone()
    {
        QFETCH(int, tag);
        QFETCH(bool, seekFails);
        QFETCH(int, verifyResult);
        QFETCH(bool, signatureValid);
        QFETCH(QStringList, calls);
        QVERIFY(FakeRpm::addTag(m_header.get(), tag, RPM_BIN_TYPE, "signature", 9));
        addText(RPMTAG_NAME, "somename");
        FakeRpm::script.seekFails = seekFails;
        FakeRpm::script.verifyResult = verifyResult;
        QCOMPARE(read(), (signatureValid ? "valid signed: "_s : "valid: "_s) + "somename|||"_s + m_file.fileName());
        QCOMPARE(FakeRpm::calls, m_readCalls + calls);
    }

private:
    static QStringList callsFor(const QString &path)
    {
        return {"Fopen r "_s + path, "rpmReadConfigFiles"_s, "rpmReadPackageFile "_s + path};
    }

    void takeNewHeader()
    {
        m_header.reset(headerNew());
        FakeRpm::script.header = m_header.get();
    }

    void addText(rpmTagVal tag, const char *text)
    {
        QVERIFY(FakeRpm::addTag(m_header.get(), tag, RPM_STRING_TYPE, text, 1));
    }

    void addValues(rpmTagType type)
    {
        constexpr quint32 small[] = {std::numeric_limits<quint32>::max(), 7};
        constexpr quint64 large[] = {std::numeric_limits<quint64>::max(), 7};
        const char *const texts[] = {"\u00fc first", "second"};
        const void *data = "abcd";
        if (type == RPM_INT32_TYPE) {
            data = small;
        } else if (type == RPM_INT64_TYPE) {
            data = large;
        } else if (type == RPM_STRING_TYPE) {
            data = texts[0];
        } else if (type == RPM_STRING_ARRAY_TYPE || type == RPM_I18NSTRING_TYPE) {
            data = texts;
        }
        for (const rpmTagVal tag : {RPMTAG_NAME, RPMTAG_VERSION, RPMTAG_SUMMARY}) {
            QVERIFY(FakeRpm::addTag(m_header.get(), tag, type, data, type == RPM_STRING_TYPE ? 1 : 2));
        }
    }

    /** The values of the object after reading. */
    QString read()
    {
        m_info->readPackage(m_file.fileName());
        return described(*m_info);
    }

    QTemporaryFile m_file;
    QStringList m_readCalls;
    RpmHandle<Header> m_header;
    std::optional<RpmInfo> m_info;
    Journal m_journal;
    std::optional<MessageLog> m_log;
};

VELMORA_TEST(RpmInfoCallsTest, Anywhere, Core)

#include "tst_rpminfocalls.moc"
