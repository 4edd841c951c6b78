// SPDX-FileCopyrightText: velmora-installationhandler contributors
// SPDX-License-Identifier: BSD-3-Clause

#include "journal.h"
#include "messagelog.h"
#include "processstate.h"
#include "rpminfo.h"
#include "rpmtest.h"

#include <QMetaMethod>
#include <QMetaProperty>
#include <QSignalSpy>
#include <QtTest>

#include <type_traits>

// The dialog publishes the object itself to QML, and the values are copies of what it holds.
static_assert(std::is_base_of_v<QObject, RpmInfo>);
static_assert(std::is_same_v<decltype(std::declval<const RpmInfo>().name()), QString>);
static_assert(std::is_same_v<decltype(std::declval<const RpmInfo>().version()), QString>);
static_assert(std::is_same_v<decltype(std::declval<const RpmInfo>().summary()), QString>);
static_assert(std::is_same_v<decltype(std::declval<const RpmInfo>().fileName()), QString>);

class TestRpmInfo : public RpmTest
{
    Q_OBJECT

private Q_SLOTS:
    void startsEmpty();
    void hasFourReadableProperties();
    void hasFourSignalsOfItsOwn();

    void readsValues_data();
    void readsValues();
    void logsWhatItRead_data();
    void logsWhatItRead();
    void doesNotPickTheTranslation();
    void replacesValuesOfTheFileBefore();
    void keepsValuesThatTheHeaderLacks_data();
    void keepsValuesThatTheHeaderLacks();
    void emitsNoSignal();
    void gainsNoMemory();
};

void TestRpmInfo::startsEmpty()
{
    const RpmInfo info;
    QVERIFY(!info.isValid());
    QVERIFY(!info.isSignatureValid());
    QVERIFY(info.name().isEmpty());
    QVERIFY(info.version().isEmpty());
    QVERIFY(info.summary().isEmpty());
    QVERIFY(info.fileName().isEmpty());
    QCOMPARE(info.parent(), nullptr);
}

void TestRpmInfo::hasFourReadableProperties()
{
    const QMetaObject &meta = RpmInfo::staticMetaObject;
    const QByteArrayList names{"name", "version", "summary", "fileName"};
    QCOMPARE(meta.propertyCount() - meta.propertyOffset(), names.size());
    for (int i = 0; i < names.size(); ++i) {
        const QMetaProperty property = meta.property(meta.propertyOffset() + i);
        QCOMPARE(QByteArray(property.name()), names.at(i));
        QCOMPARE(property.userType(), static_cast<int>(QMetaType::QString));
        QVERIFY(property.isReadable());
        QVERIFY(!property.isWritable());
        QVERIFY(!property.isResettable());
        QVERIFY(!property.isConstant());
        QVERIFY(property.isScriptable());
        QVERIFY(property.isStored());
        QCOMPARE(property.notifySignal().methodSignature(), names.at(i) + "Changed()");
    }
}

void TestRpmInfo::hasFourSignalsOfItsOwn()
{
    const QMetaObject &meta = RpmInfo::staticMetaObject;
    const QByteArrayList signatures{"nameChanged()", "versionChanged()", "summaryChanged()", "fileNameChanged()"};
    QCOMPARE(meta.methodCount() - meta.methodOffset(), signatures.size());
    for (int i = 0; i < signatures.size(); ++i) {
        const QMetaMethod method = meta.method(meta.methodOffset() + i);
        QCOMPARE(method.methodSignature(), signatures.at(i));
        QCOMPARE(method.methodType(), QMetaMethod::Signal);
    }
    QCOMPARE(meta.constructorCount(), 0);
}

void TestRpmInfo::readsValues_data()
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<QString>("version");
    QTest::addColumn<QString>("summary");
    const QString handmade = QStringLiteral("handmade");
    const QString one = QStringLiteral("1.0");

    QTest::newRow("plain") << QStringLiteral("plain") << QStringLiteral("1.2.3") << QStringLiteral("A plain package");
    QTest::newRow("translated") << QStringLiteral("translated") << one << QStringLiteral("Says hello");
    QTest::newRow("large") << QStringLiteral("large") << one << QStringLiteral("The application large");
    QTest::newRow("damaged-payload") << QStringLiteral("plain") << QStringLiteral("1.2.3")
                                     << QStringLiteral("A plain package");
    QTest::newRow("summary-first") << handmade << one << QStringLiteral("first");
    QTest::newRow("summary-array") << handmade << one << QStringLiteral("first");
    QTest::newRow("summary-empty") << handmade << one << QString();
    QTest::newRow("summary-quotes") << handmade << one << QStringLiteral("\"\"");
    QTest::newRow("summary-latin1") << handmade << one << QStringLiteral("Gr\uFFFD\uFFFDe");
    QTest::newRow("summary-long") << handmade << one << QString(10000, QLatin1Char('x'));
    QTest::newRow("summary-markup") << handmade << one
                                    << QStringLiteral("<b>bold</b> <img src='file:///etc/passwd'> &amp; %1");
    QTest::newRow("summary-control")
            << handmade << one
            << QStringLiteral("bell \a, tab \t, line\nfeed, escape \x1b[31m, override \u202e, astral \U0001f600");
}

void TestRpmInfo::readsValues()
{
    QFETCH(QString, name);
    QFETCH(QString, version);
    QFETCH(QString, summary);
    const QString file = packageFile(QLatin1String(QTest::currentDataTag()));

    RpmInfo info;
    info.readPackage(file);

    QVERIFY(info.isValid());
    QVERIFY(!info.isSignatureValid());
    QCOMPARE(info.name(), name);
    QCOMPARE(info.version(), version);
    QCOMPARE(info.summary(), summary);
    QCOMPARE(info.fileName(), file);
    QCOMPARE(info.property("name").toString(), name);
    QCOMPARE(info.property("version").toString(), version);
    QCOMPARE(info.property("summary").toString(), summary);
    QCOMPARE(info.property("fileName").toString(), file);
}

void TestRpmInfo::logsWhatItRead_data()
{
    QTest::addColumn<QString>("line");
    QTest::newRow("plain") << QStringLiteral(R"(debug: RPM Package info: "plain" "1.2.3" "A plain package")");
    QTest::newRow("summary-empty") << QStringLiteral(R"(debug: RPM Package info: "handmade" "1.0" "")");
    QTest::newRow("no-summary") << QStringLiteral(R"(debug: RPM Package info: "handmade" "1.0" "")");
    QTest::newRow("no-name") << QStringLiteral(R"(debug: RPM Package info: "" "1.0" "Made by hand")");
    QTest::newRow("summary-quotes") << QStringLiteral(R"(debug: RPM Package info: "handmade" "1.0" "\"\"")");
    QTest::newRow("summary-markup") << QStringLiteral(R"(debug: RPM Package info: "handmade" "1.0" )"
                                                      R"("<b>bold</b> <img src='file:///etc/passwd'> &amp; %1")");
    QTest::newRow("summary-latin1") << QStringLiteral(
            "debug: RPM Package info: \"handmade\" \"1.0\" \"Gr\uFFFD\uFFFDe\"");
}

void TestRpmInfo::logsWhatItRead()
{
    QFETCH(QString, line);
    Journal journal;
    const MessageLog log(&journal);
    RpmInfo().readPackage(packageFile(QLatin1String(QTest::currentDataTag())));
    QCOMPARE(journal.entries(), QStringList{line});
}

void TestRpmInfo::doesNotPickTheTranslation()
{
    qputenv("LANGUAGE", "fi:de");
    qputenv("LC_ALL", "C.UTF-8");
    RpmInfo info;
    info.readPackage(packageFile(QStringLiteral("translated")));
    qunsetenv("LANGUAGE");
    qunsetenv("LC_ALL");
    QCOMPARE(info.summary(), QStringLiteral("Says hello"));
}

void TestRpmInfo::replacesValuesOfTheFileBefore()
{
    RpmInfo info;
    info.readPackage(packageFile(QStringLiteral("plain")));
    info.readPackage(packageFile(QStringLiteral("translated")));
    QVERIFY(info.isValid());
    QCOMPARE(info.name(), QStringLiteral("translated"));
    QCOMPARE(info.version(), QStringLiteral("1.0"));
    QCOMPARE(info.summary(), QStringLiteral("Says hello"));
    QCOMPARE(info.fileName(), packageFile(QStringLiteral("translated")));
}

void TestRpmInfo::keepsValuesThatTheHeaderLacks_data()
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<QString>("version");
    QTest::addColumn<QString>("summary");
    const QString name = QStringLiteral("handmade");
    const QString version = QStringLiteral("1.0");
    const QString summary = QStringLiteral("Made by hand");
    QTest::newRow("no-name") << QStringLiteral("plain") << version << summary;
    QTest::newRow("no-version") << name << QStringLiteral("1.2.3") << summary;
    QTest::newRow("no-summary") << name << version << QStringLiteral("A plain package");
}

void TestRpmInfo::keepsValuesThatTheHeaderLacks()
{
    RpmInfo info;
    info.readPackage(packageFile(QStringLiteral("plain")));
    info.readPackage(packageFile(QLatin1String(QTest::currentDataTag())));
    QVERIFY(info.isValid());
    QTEST(info.name(), "name");
    QTEST(info.version(), "version");
    QTEST(info.summary(), "summary");
}

void TestRpmInfo::emitsNoSignal()
{
    RpmInfo info;
    QSignalSpy nameChanged(&info, &RpmInfo::nameChanged);
    QSignalSpy versionChanged(&info, &RpmInfo::versionChanged);
    QSignalSpy summaryChanged(&info, &RpmInfo::summaryChanged);
    QSignalSpy fileNameChanged(&info, &RpmInfo::fileNameChanged);

    info.readPackage(packageFile(QStringLiteral("plain")));
    info.readPackage(packageFile(QStringLiteral("translated")));
    info.readPackage(QStringLiteral("/missing.rpm"));
    // Not later either: whatever had been queued is delivered here.
    QCoreApplication::sendPostedEvents();

    QCOMPARE(nameChanged.size(), 0);
    QCOMPARE(versionChanged.size(), 0);
    QCOMPARE(summaryChanged.size(), 0);
    QCOMPARE(fileNameChanged.size(), 0);
}

void TestRpmInfo::gainsNoMemory()
{
    RpmInfo info;
    const QString file = packageFile(QStringLiteral("plain"));
    const qint64 gained = bytesGainedPerCall([&] { info.readPackage(file); });
    QVERIFY2(gained < 1024, qPrintable(QStringLiteral("%1 bytes a read").arg(gained)));
}

QTEST_GUILESS_MAIN(TestRpmInfo)

#include "tst_rpminfo.moc"
