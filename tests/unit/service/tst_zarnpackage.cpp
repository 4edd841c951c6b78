// SPDX-FileCopyrightText: velmora-installationhandler contributors
// SPDX-License-Identifier: BSD-3-Clause

#include "zarnpackage.h"

#include "journal.h"
#include "recordingpeer.h"
#include "testrunner.h"

#include <QAssociativeIterable>
#include <QDBusConnection>
#include <QDBusInterface>
#include <QDBusMetaType>
#include <QDBusPendingReply>
#include <QDBusReply>
#include <QtTest>

#include <memory>
#include <type_traits>

static_assert(std::is_same_v<ZarnPackage, QMap<QString, QString>>);
static_assert(sizeof(ZarnPackage) == sizeof(void *));

namespace {

const QString service = QStringLiteral("ru.quon.ZARN");
const QString path = QStringLiteral("/ru/quon/ZARN");

constexpr int timeout = 20000; // milliseconds

}

/** The record on its way over a real bus. */
class ZarnPackageTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();
    void cleanup();

    void isATypeByItsOwnName();
    void isUnknownToTheBusBeforehand();
    void hasTheFormOfTextsByText();
    void goesOutInKeyOrder_data();
    void goesOutInKeyOrder();
    void comesInWhole_data();
    void comesInWhole();
    void replacesWhatWasThere();
    void isRefusedInAnotherForm_data();
    void isRefusedInAnotherForm();
    void isRefusedWithoutAnAnswer_data();
    void isRefusedWithoutAnAnswer();
    void canBeWalkedByKey();

private:
    QDBusPendingCall getPackage(const QString &destination, int replyTimeout = timeout) const;

    Journal m_journal;
    std::unique_ptr<RecordingPeer> m_manager;
    QDBusConnection m_bus{QString()};
};

void ZarnPackageTest::initTestCase()
{
    const QString address = QString::fromLocal8Bit(qgetenv("DBUS_SYSTEM_BUS_ADDRESS"));
    m_manager = std::make_unique<RecordingPeer>(address, QStringList{service}, &m_journal);
    m_bus = QDBusConnection::connectToBus(address, QStringLiteral("test"));
    QVERIFY(m_bus.isConnected());
}

void ZarnPackageTest::cleanup()
{
    m_journal.clear();
}

QDBusPendingCall ZarnPackageTest::getPackage(const QString &destination, int replyTimeout) const
{
    QDBusMessage call = QDBusMessage::createMethodCall(destination, path, service, QStringLiteral("GetPackage"));
    call << QStringLiteral("somename");
    return m_bus.asyncCall(call, replyTimeout);
}

void ZarnPackageTest::isATypeByItsOwnName()
{
    const int type = qMetaTypeId<ZarnPackage>();
    QCOMPARE(QMetaType::type("ZarnPackage"), type);
    QCOMPARE(QByteArray(QMetaType::typeName(type)), QByteArray("ZarnPackage"));
    QCOMPARE(qMetaTypeId<ZarnPackage>(), type);
    QCOMPARE(QMetaType::sizeOf(type), static_cast<int>(sizeof(void *)));

    const QMetaType::TypeFlags flags = QMetaType::typeFlags(type);
    QVERIFY(flags.testFlag(QMetaType::NeedsConstruction));
    QVERIFY(flags.testFlag(QMetaType::NeedsDestruction));
    QVERIFY(flags.testFlag(QMetaType::MovableType));
}

void ZarnPackageTest::isUnknownToTheBusBeforehand()
{
    QCOMPARE(QDBusMetaType::typeToSignature(qMetaTypeId<ZarnPackage>()), nullptr);
    registerZarnPackage();
    QVERIFY(QDBusMetaType::typeToSignature(qMetaTypeId<ZarnPackage>()));
}

void ZarnPackageTest::hasTheFormOfTextsByText()
{
    QCOMPARE(QByteArray(QDBusMetaType::typeToSignature(qMetaTypeId<ZarnPackage>())), QByteArray("a{ss}"));
}

void ZarnPackageTest::goesOutInKeyOrder_data()
{
    QTest::addColumn<QStringList>("keys");
    QTest::addColumn<QString>("arguments");
    QTest::newRow("none") << QStringList() << QStringLiteral("(@a{ss} {},)");
    QTest::newRow("one") << QStringList{QStringLiteral("name")} << QStringLiteral("({'name': 'value of name'},)");
    QTest::newRow("several") << QStringList{QStringLiteral("b"),  QStringLiteral("a"), QStringLiteral("B"),
                                            QStringLiteral("10"), QStringLiteral("9"), QString()}
                             << QStringLiteral(
                                        "({'': 'value of ', '10': 'value of 10', '9': 'value of 9', 'B': 'value of B', "
                                        "'a': 'value of a', 'b': 'value of b'},)");
    // Surrogates sort before the last characters of the basic plane, though they stand for higher ones.
    QTest::newRow("by code units") << QStringList{QStringLiteral("\uff5e"), QStringLiteral("\U0001f4e6"),
                                                  QStringLiteral("\u00e9")}
                                   << QStringLiteral(
                                              "({'\u00e9': 'value of \u00e9', '\U0001f4e6': 'value of \U0001f4e6', "
                                              "'\uff5e': 'value of \uff5e'},)");
}

void ZarnPackageTest::goesOutInKeyOrder()
{
    QFETCH(QStringList, keys);
    QFETCH(QString, arguments);
    ZarnPackage package;
    for (const QString &key : qAsConst(keys)) {
        package.insert(key, QLatin1String("value of ") + key);
    }

    m_manager->answer(QStringLiteral("Take"), PeerAnswer::values());
    QDBusMessage call = QDBusMessage::createMethodCall(service, path, service, QStringLiteral("Take"));
    call << QVariant::fromValue(package);
    const QDBusMessage reply = m_bus.call(call, QDBus::Block, timeout);
    QCOMPARE(reply.errorMessage(), QString());
    QCOMPARE(m_journal.entries(),
             QStringList{QLatin1String("ru.quon.ZARN /ru/quon/ZARN ru.quon.ZARN.Take") + arguments});
}

void ZarnPackageTest::comesInWhole_data()
{
    QTest::addColumn<QByteArray>("answer");
    QTest::addColumn<ZarnPackage>("package");
    const auto text = [](const char *utf8) { return QString::fromUtf8(utf8); };
    QTest::newRow("none") << QByteArray("(@a{ss} {},)") << ZarnPackage();
    QTest::newRow("several") << QByteArray("({'b': '2', 'a': '1', '': ''},)")
                             << ZarnPackage{{QString(), QString()}, {text("a"), text("1")}, {text("b"), text("2")}};
    QTest::newRow("a key twice") << QByteArray("({'a': 'first', 'b': 'x', 'a': 'second'},)")
                                 << ZarnPackage{{text("a"), text("second")}, {text("b"), text("x")}};
    QTest::newRow("other characters") << QByteArray("({'ключ': '包\\n%1'},)")
                                      << ZarnPackage{{text("ключ"), text("包\n%1")}};
    QTest::newRow("a large one") << "({'a': '" + QByteArray(1024 * 1024, 'x') + "'},)"
                                 << ZarnPackage{{text("a"), QString(1024 * 1024, QLatin1Char('x'))}};
    QTest::newRow("more values after it")
            << QByteArray("({'a': '1'}, 'more', true)") << ZarnPackage{{text("a"), text("1")}};
}

void ZarnPackageTest::comesInWhole()
{
    QFETCH(QByteArray, answer);
    m_manager->answer(QStringLiteral("GetPackage"), PeerAnswer::values(answer));

    const QDBusReply<ZarnPackage> reply = getPackage(service);
    QVERIFY2(reply.isValid(), qPrintable(reply.error().message()));
    QVERIFY(!reply.error().isValid());
    QTEST(reply.value(), "package");
    QCOMPARE(m_journal.entries(),
             QStringList{QStringLiteral("ru.quon.ZARN /ru/quon/ZARN ru.quon.ZARN.GetPackage('somename',)")});

    QDBusPendingReply<ZarnPackage> pending = getPackage(service);
    pending.waitForFinished();
    QVERIFY2(!pending.isError(), qPrintable(pending.error().message()));
    QTEST(pending.value(), "package");
}

void ZarnPackageTest::replacesWhatWasThere()
{
    m_manager->answer(QStringLiteral("GetPackage"), PeerAnswer::values("({'a': 'new'},)"));
    QDBusPendingCall call = getPackage(service);
    call.waitForFinished();
    ZarnPackage package{{QStringLiteral("a"), QStringLiteral("old")}, {QStringLiteral("z"), QStringLiteral("old")}};
    call.reply().arguments().constFirst().value<QDBusArgument>() >> package;
    const ZarnPackage expected{{QStringLiteral("a"), QStringLiteral("new")}};
    QCOMPARE(package, expected);
}

void ZarnPackageTest::isRefusedInAnotherForm_data()
{
    QTest::addColumn<QByteArray>("answer");
    QTest::newRow("texts in variants") << QByteArray("({'a': <'1'>},)");
    QTest::newRow("no entry in variants") << QByteArray("(@a{sv} {},)");
    QTest::newRow("a variant") << QByteArray("(<{'a': '1'}>,)");
    QTest::newRow("numbers") << QByteArray("({'a': 1},)");
    QTest::newRow("texts by number") << QByteArray("({1: 'a'},)");
    QTest::newRow("a text") << QByteArray("('a',)");
    QTest::newRow("a list") << QByteArray("(['a', 'b'],)");
    QTest::newRow("pairs") << QByteArray("([('a', 'b')],)");
    QTest::newRow("nothing") << QByteArray("()");
    QTest::newRow("something before it") << QByteArray("(true, {'a': '1'})");
}

void ZarnPackageTest::isRefusedInAnotherForm()
{
    QFETCH(QByteArray, answer);
    m_manager->answer(QStringLiteral("GetPackage"), PeerAnswer::values(answer));

    const QDBusReply<ZarnPackage> reply = getPackage(service);
    QVERIFY(!reply.isValid());
    QCOMPARE(reply.error().type(), QDBusError::InvalidSignature);
    QVERIFY(reply.value().isEmpty());

    QDBusPendingReply<ZarnPackage> pending = getPackage(service);
    pending.waitForFinished();
    QVERIFY(pending.isError());
    QCOMPARE(pending.error().type(), QDBusError::InvalidSignature);
    QVERIFY(pending.value().isEmpty());
}

void ZarnPackageTest::isRefusedWithoutAnAnswer_data()
{
    QTest::addColumn<QString>("destination");
    QTest::addColumn<int>("replyTimeout");
    QTest::addColumn<PeerAnswer>("answer");
    QTest::addColumn<QString>("errorName");
    QTest::newRow("an error") << service << timeout
                              << PeerAnswer::error("ru.quon.ZARN.Error.NotFound", "no such package")
                              << QStringLiteral("ru.quon.ZARN.Error.NotFound");
    QTest::newRow("nobody there") << QStringLiteral("ru.quon.Absent") << timeout << PeerAnswer::held()
                                  << QStringLiteral("org.freedesktop.DBus.Error.ServiceUnknown");
    QTest::newRow("no time left") << service << 50 << PeerAnswer::held()
                                  << QStringLiteral("org.freedesktop.DBus.Error.NoReply");
}

void ZarnPackageTest::isRefusedWithoutAnAnswer()
{
    QFETCH(QString, destination);
    QFETCH(int, replyTimeout);
    QFETCH(PeerAnswer, answer);
    m_manager->answer(QStringLiteral("GetPackage"), answer);

    const QDBusReply<ZarnPackage> reply = getPackage(destination, replyTimeout);
    QVERIFY(!reply.isValid());
    QTEST(reply.error().name(), "errorName");
    QVERIFY(reply.value().isEmpty());
}

void ZarnPackageTest::canBeWalkedByKey()
{
    const QVariant record = QVariant::fromValue(
            ZarnPackage{{QStringLiteral("b"), QStringLiteral("2")}, {QStringLiteral("a"), QStringLiteral("1")}});
    QVERIFY((QMetaType::hasRegisteredConverterFunction<ZarnPackage, QtMetaTypePrivate::QAssociativeIterableImpl>()));

    QStringList walked;
    const auto iterable = record.value<QAssociativeIterable>();
    for (auto entry = iterable.begin(); entry != iterable.end(); ++entry) {
        walked.append(entry.key().toString() + QLatin1Char('=') + entry.value().toString());
    }
    const QStringList expected{QStringLiteral("a=1"), QStringLiteral("b=2")};
    QCOMPARE(walked, expected);
    QCOMPARE(iterable.value(QStringLiteral("b")).toString(), QStringLiteral("2"));
}

VELMORA_TEST(ZarnPackageTest, Gui)

#include "tst_zarnpackage.moc"
