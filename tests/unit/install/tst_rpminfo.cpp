// SPDX-FileCopyrightText: velmora-installationhandler contributors
// SPDX-License-Identifier: BSD-3-Clause

#include "rpminfo.h"

#include "journal.h"
#include "processstate.h"
#include "rpmenvironment.h"
#include "rpminfotext.h"
#include "specialfiles.h"
#include "testrunner.h"

#include <QDir>
#include <QMetaProperty>
#include <QtEndian>

#include <cstring>
#include <optional>
#include <type_traits>

#include <unistd.h>

// The dialog publishes the object itself to QML, and the values are copies of what it holds.
static_assert(std::is_base_of_v<QObject, RpmInfo>);
static_assert(std::is_same_v<decltype(std::declval<const RpmInfo>().name()), QString>);
static_assert(std::is_same_v<decltype(std::declval<const RpmInfo>().version()), QString>);
static_assert(std::is_same_v<decltype(std::declval<const RpmInfo>().summary()), QString>);
static_assert(std::is_same_v<decltype(std::declval<const RpmInfo>().fileName()), QString>);

namespace {

constexpr int LeadSize = 96;

// What librpm's function for reading returns.
constexpr int NotAPackage = 1;
constexpr int Failed = 2;

const QString PlainValues = "plain|1.2.3|A plain package|"_s;

QString plain()
{
    return packageFile("plain"_s);
}

/** The values of a new object that has read a file. */
QString read(const QString &path)
{
    RpmInfo info;
    info.readPackage(path);
    return described(info);
}

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
    return start + 16 + 16 * qFromBigEndian<qint32>(counts) + qFromBigEndian<qint32>(counts + 4);
}

/** Whether a log line has librpm's result and the text of any error number. */
bool isFailureLine(const QString &line, int result)
{
    const QString start = "debug: could not read rpm: %1 \""_s.arg(result);
    for (int error = 0; error < 134; ++error) {
        if (line == start + QString::fromLatin1(std::strerror(error)) + QLatin1Char('"')) {
            return true;
        }
    }
    return false;
}

}

/**
 * Package files, good, broken and absent, read with a database that knows the keys "known" and "modern". After each
 * test no more files are open than before.
 */
class RpmInfoTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase()
    {
        QVERIFY(m_environment.useDatabase("known"_s));
        QVERIFY(m_environment.importKey("known.asc"_s));
        QVERIFY(m_environment.importKey("modern.asc"_s));
        // librpm opens some files once and for all.
        QCOMPARE(read(plain()), "valid: "_s + PlainValues + plain());
    }

    void init()
    {
        m_openFiles = openFiles();
        m_info.emplace();
        m_info->readPackage(plain());
    }

    void cleanup() { QCOMPARE(openFiles(), m_openFiles); }

    void startsEmpty()
    {
        const RpmInfo info;
        QCOMPARE(described(info), "invalid: |||"_s);
        QCOMPARE(info.parent(), nullptr);
    }

    void hasFourReadableProperties()
    {
        const QMetaObject &meta = RpmInfo::staticMetaObject;
        const QByteArrayList names{"name", "version", "summary", "fileName"};
        QStringList values;
        QCOMPARE(meta.propertyCount() - meta.propertyOffset(), names.size());
        for (int i = 0; i < names.size(); ++i) {
            const QMetaProperty property = meta.property(meta.propertyOffset() + i);
            QCOMPARE(QByteArray(property.name()), names.at(i));
            QCOMPARE(property.userType(), int(QMetaType::QString));
            QVERIFY(property.isReadable() && property.isScriptable() && property.isStored());
            QVERIFY(!property.isWritable() && !property.isResettable() && !property.isConstant());
            QCOMPARE(property.notifySignal().methodSignature(), names.at(i) + "Changed()");
            values.append(property.read(&*m_info).toString());
        }
        QCOMPARE(values.join(QLatin1Char('|')), PlainValues + plain());
    }

    void hasFourSignalsOfItsOwn()
    {
        QCOMPARE(methodsOf(RpmInfo::staticMetaObject),
                 QStringList({"signal nameChanged()"_s, "signal versionChanged()"_s, "signal summaryChanged()"_s,
                              "signal fileNameChanged()"_s}));
        QCOMPARE(RpmInfo::staticMetaObject.constructorCount(), 0);
    }

    void emitsNoSignal()
    {
        RpmInfo info;
        int emitted = 0;
        for (const auto signal :
             {&RpmInfo::nameChanged, &RpmInfo::versionChanged, &RpmInfo::summaryChanged, &RpmInfo::fileNameChanged}) {
            connect(&info, signal, this, [&emitted] { ++emitted; });
        }
        for (const QString &path : {plain(), packageFile("translated"_s), "/missing.rpm"_s}) {
            info.readPackage(path);
        }
        // This delivers all that has been queued.
        QCoreApplication::sendPostedEvents();
        QCOMPARE(emitted, 0);
    }

    void readsValues_data()
    {
        QTest::addColumn<QString>("values");
        QTest::addColumn<QString>("line");
        const auto row = [](const char *file, const QString &name, const QString &version, const QString &summary,
                            const char *loggedSummary = nullptr) {
            const QString logged = loggedSummary ? QString::fromUtf8(loggedSummary) : summary;
            QTest::newRow(file) << QStringList{name, version, summary}.join(QLatin1Char('|'))
                                << R"(debug: RPM Package info: "%1" "%2" "%3")"_s.arg(name, version, logged);
        };
        const QString handmade = "handmade"_s;
        const QString one = "1.0"_s;
        row("plain", "plain"_s, "1.2.3"_s, "A plain package"_s);
        row("translated", "translated"_s, one, "Says hello"_s);
        row("large", "large"_s, one, "The application large"_s);
        row("damaged-payload", "plain"_s, "1.2.3"_s, "A plain package"_s);
        row("summary-first", handmade, one, "first"_s);
        row("summary-array", handmade, one, "first"_s);
        row("summary-empty", handmade, one, QString());
        row("summary-quotes", handmade, one, R"("")"_s, R"(\"\")");
        row("summary-latin1", handmade, one, "Gr\uFFFD\uFFFDe"_s);
        row("summary-long", handmade, one, QString(10000, QLatin1Char('x')));
        row("summary-markup", handmade, one, "<b>bold</b> <img src='file:///etc/passwd'> &amp; %1"_s);
        row("summary-control", handmade, one,
            "bell \a, tab \t, line\nfeed, escape \x1b[31m, override \u202e, astral \U0001f600"_s,
            R"(bell \u0007, tab \t, line\nfeed, escape \u001B[31m, override \u202E, astral )"
            "\U0001f600");

        // The values of the file before stay where the header has none.
        row("no-name", "plain"_s, one, "Made by hand"_s);
        row("no-version", handmade, "1.2.3"_s, "Made by hand"_s);
        row("no-summary", handmade, one, "A plain package"_s);

        // Only the first of these has a good signature of header and payload by a known key.
        for (const char *name : {"signed", "signed-unknown-key", "signed-header-only", "signed-modern",
                                 "signed-unknown-key-header-only"}) {
            row(name, QLatin1String(name), one, "The application "_s + QLatin1String(name));
        }
        for (const char *name : {"signed-damaged-payload", "signed-damaged-signature", "signed-unreadable-signature"}) {
            row(name, "signed"_s, one, "The application signed"_s);
        }
    }

    // The package "plain" has been read before.
    void readsValues()
    {
        QFETCH(QString, values);
        QFETCH(QString, line);
        const QString name = QLatin1String(QTest::currentDataTag());
        Journal journal;
        {
            const MessageLog log(&journal);
            m_info->readPackage(packageFile(name));
        }
        QCOMPARE(described(*m_info),
                 (name == "signed"_s ? "valid signed: "_s : "valid: "_s) + values + QLatin1Char('|')
                         + packageFile(name));
        QCOMPARE(journal.entries(), QStringList(line));
    }

    void doesNotPickTheTranslation()
    {
        qputenv("LANGUAGE", "fi:de");
        qputenv("LC_ALL", "C.UTF-8");
        const QString values = read(packageFile("translated"_s));
        qunsetenv("LANGUAGE");
        qunsetenv("LC_ALL");
        QCOMPARE(values, "valid: translated|1.0|Says hello|"_s + packageFile("translated"_s));
    }

    void clearsTheSignatureAtEveryRead()
    {
        for (const QString &file : {plain(), packageFile("signed-unknown-key"_s), packageFile("damaged-header"_s),
                                    "/missing.rpm"_s, QString()}) {
            m_info->readPackage(packageFile("signed"_s));
            QVERIFY2(m_info->isSignatureValid(), qPrintable("before "_s + file));
            m_info->readPackage(file);
            QVERIFY2(!m_info->isSignatureValid(), qPrintable(file));
        }
    }

    void looksForKeysAnewAtEveryRead()
    {
        const auto isKnown = [this] {
            m_info->readPackage(packageFile("signed"_s));
            return m_info->isValid() && m_info->isSignatureValid();
        };
        QVERIFY(isKnown());
        QVERIFY(m_environment.useDatabase("empty"_s));
        const bool isKnownToTheEmptyOne = isKnown();
        QVERIFY(m_environment.useDatabase("known"_s));
        QVERIFY(!isKnownToTheEmptyOne);
        QVERIFY(isKnown());
    }

    void takesAnyPath_data()
    {
        QTest::addColumn<QString>("path");
        const auto addName = [this](const char *title, const QString &name) {
            QTest::newRow(title) << m_files.path(name);
        };
        addName("blanks", " a  b .rpm "_s);
        addName("UTF-8", "пакет 打包 \U0001f4e6.rpm"_s);
        addName("line feed", "line\nfeed.rpm"_s);
        addName("percent", "%1 %n %20 %s.rpm"_s);
        addName("quotes", "\"'`$(x)\\.rpm"_s);
        addName("no suffix", "package"_s);
        addName("macro", "%{_dbpath}%(exit 1).rpm"_s);
        addName("pattern", "[*?]{a,b}.rpm"_s);
        addName("longest name", QString(255, QLatin1Char('x')));

        QTest::newRow("relative") << "here.rpm";
        QTest::newRow("relative, like an option") << "--eval";
        QTest::newRow("relative, a dash") << "-";
        QTest::newRow("relative, with dots") << "./../current/here2.rpm";
        QTest::newRow("relative, a link") << "link.rpm";
    }

    void takesAnyPath()
    {
        QFETCH(QString, path);
        const QString before = QDir::currentPath();
        QVERIFY(QDir().mkpath(m_files.path("current"_s)));
        QVERIFY(QDir::setCurrent(m_files.path("current"_s)));
        const bool made = path == "link.rpm"_s ? QFile::link(plain(), path) : QFile::copy(plain(), path);
        const QString values = read(path);
        QVERIFY(QDir::setCurrent(before));

        QVERIFY(made);
        QCOMPARE(values, "valid: "_s + PlainValues + path);
    }

    void refuses_data()
    {
        QTest::addColumn<QString>("path");
        QTest::addColumn<int>("result");
        for (const char *broken :
             {"damaged-header", "name-number", "claims-nothing", "claims-most", "claims-most-entries",
              "claims-most-data", "claims-entries", "claims-data", "claims-all-allowed", "signature-claims-most",
              "signature-claims-entries", "signature-claims-data", "signature-claims-all-allowed",
              "signed-damaged-header", "signed-damaged-header-signature", "signed-unreadable-header-signature"}) {
            QTest::newRow(broken) << packageFile(QLatin1String(broken)) << Failed;
        }
        const auto addFile = [this](const char *name, const QByteArray &bytes, int result) {
            const QString path = m_files.path(QLatin1String(name));
            QVERIFY(save(path, bytes));
            QTest::newRow(name) << path << result;
        };
        addFile("no bytes", QByteArray(), NotAPackage);
        addFile("text", QByteArray("This is no package. ").repeated(100), NotAPackage);
        addFile("zeros", QByteArray(4096, '\0'), NotAPackage);
        addFile("a lead, then zeros", contents(plain()).left(LeadSize) + QByteArray(4096, '\0'), Failed);
        QTest::newRow("the device without contents") << "/dev/null" << NotAPackage;
        QTest::newRow("the device without end") << "/dev/zero" << NotAPackage;
        QTest::newRow("a folder") << m_files.path({}) << Failed;

        // These do not even open, and nothing is logged. Known behaviour 48 for those with another end.
        constexpr int notOpened = 0;
        QTest::newRow("missing") << "/missing.rpm" << notOpened;
        QTest::newRow("empty") << QString() << notOpened;
        QTest::newRow("a blank") << " " << notOpened;
        QTest::newRow("too long a name") << m_files.path(QString(256, QLatin1Char('x'))) << notOpened;
        QTest::newRow("too long a path") << QString(5000, QLatin1Char('/')) << notOpened;
        QTest::newRow("a very long path") << QLatin1Char('/') + QString(1024 * 1024, QLatin1Char('x')) << notOpened;
        QTest::newRow("a file as a folder") << plain() + QLatin1Char('/') << notOpened;
        QTest::newRow("a URL") << "file://"_s + plain() << notOpened;
        QTest::newRow("a remote URL") << "http://localhost/package.rpm" << notOpened;
        QTest::newRow("dash") << "-" << notOpened;
        QTest::newRow("tilde") << "~/package.rpm" << notOpened;
        QTest::newRow("FIFO") << m_files.fifo() << notOpened;
        QTest::newRow("link to a FIFO") << m_files.linkToFifo() << notOpened;
        QTest::newRow("URL of a FIFO") << "file://"_s + m_files.fifo() << notOpened;
        QTest::newRow("socket") << m_files.socket() << notOpened;
        QTest::newRow("terminal") << m_files.terminal() << notOpened;
    }

    void refuses()
    {
        QFETCH(QString, path);
        QFETCH(int, result);
        checkNothingIsRead(path, result);
        m_info->readPackage(plain());
        QCOMPARE(described(*m_info), "valid: "_s + PlainValues + plain());
    }

    void refusesAllThatIsTruncated()
    {
        const QByteArray package = contents(plain());
        const int signatureEnd = headerEnd(package, LeadSize);
        const int payload = headerEnd(package, (signatureEnd + 7) / 8 * 8);
        QVERIFY(payload > signatureEnd && payload < package.size());

        QList<int> lengths{1, LeadSize - 1, LeadSize, LeadSize + 1, LeadSize + 15, LeadSize + 16};
        lengths << signatureEnd - 1 << signatureEnd << signatureEnd + 1 << signatureEnd + 16 << payload - 1;
        for (int length = 53; length < payload; length += 53) {
            lengths.append(length);
        }
        const QString path = m_files.path("truncated.rpm"_s);
        for (const int length : qAsConst(lengths)) {
            QVERIFY(save(path, package.left(length)));
            checkNothingIsRead(path, length < LeadSize ? NotAPackage : Failed);
            QVERIFY2(!QTest::currentTestFailed(), qPrintable("%1 bytes"_s.arg(length)));
        }

        // Nobody looks at the payload.
        QVERIFY(save(path, package.left(payload)));
        QCOMPARE(read(path), "valid: "_s + PlainValues + path);
    }

    void saysWhyAFolderCannotBeRead()
    {
        Journal journal;
        const MessageLog log(&journal);
        RpmInfo().readPackage(m_files.path({}));
        QCOMPARE(journal.entries(), QStringList(R"(debug: could not read rpm: 2 "Is a directory")"_s));
    }

    void passesOverWhatMayNotBeOpened()
    {
        const QString path = m_files.path("secret.rpm"_s);
        QVERIFY(QFile::copy(plain(), path));
        QVERIFY(QFile::setPermissions(path, {}));
        QVERIFY(QFile::setPermissions(m_files.path({}), QFileDevice::Permissions(0x7555)));
        const Nobody nobody;
        checkNothingIsRead(path);
    }

    void passesOverTheStandardInput()
    {
        // Nobody writes to this pipe.
        int ends[2];
        QCOMPARE(pipe(ends), 0);
        const int standardInput = dup(STDIN_FILENO);
        QCOMPARE(dup2(ends[0], STDIN_FILENO), STDIN_FILENO);

        checkNothingIsRead("/dev/stdin"_s);

        QCOMPARE(dup2(standardInput, STDIN_FILENO), STDIN_FILENO);
        for (const int descriptor : {standardInput, ends[0], ends[1]}) {
            close(descriptor);
        }
    }

    void gainsNoMemory_data()
    {
        QTest::addColumn<QString>("file");
        for (const char *name : {"plain", "damaged-header", "signed"}) {
            QTest::newRow(name) << packageFile(QLatin1String(name));
        }
    }

    void gainsNoMemory()
    {
        QFETCH(QString, file);
        const qint64 gained = bytesGainedPerCall([&] { m_info->readPackage(file); });
        QVERIFY2(gained < 256, qPrintable("%1 bytes a read"_s.arg(gained)));
    }

private:
    /** Checks that the values of the package "plain" stay, and that the log has librpm's result, if there is one. */
    void checkNothingIsRead(const QString &path, int result = 0)
    {
        Journal journal;
        {
            const MessageLog log(&journal);
            const Deadline deadline;
            m_info->readPackage(path);
            QVERIFY2(!deadline.hasPassed(), "The read waited for somebody at the other end");
        }
        QCOMPARE(described(*m_info), "invalid: "_s + PlainValues + path);
        const QString line = journal.entries().join(QLatin1Char('\n'));
        QVERIFY2(result == 0 ? line.isEmpty() : isFailureLine(line, result), qPrintable(line));
    }

    RpmEnvironment m_environment;
    SpecialFiles m_files;
    QStringList m_openFiles;

    /** Has read the package "plain". */
    std::optional<RpmInfo> m_info;
};

VELMORA_TEST(RpmInfoTest, Anywhere, Core)

#include "tst_rpminfo.moc"
