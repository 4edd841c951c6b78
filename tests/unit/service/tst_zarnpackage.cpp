// SPDX-FileCopyrightText: velmora-installationhandler contributors
// SPDX-License-Identifier: BSD-3-Clause

#include "journal.h"
#include "recordingpeer.h"
#include "testrunner.h"
#include "zarnpackage.h"

#include <QAssociativeIterable>
#include <QDBusConnection>
#include <QDBusMetaType>
#include <QDBusPendingCall>
#include <QDBusReply>

#include <memory>
#include <type_traits>

static_assert(std::is_same_v<ZarnPackage, QMap<QString, QString>>);
static_assert(sizeof(ZarnPackage) == sizeof(void *));

namespace {

const QString Service = "ru.quon.ZARN"_s;
const QString Path = "/ru/quon/ZARN"_s;

}

/** The package record on its way over a bus. */
class ZarnPackageTest : public QObject
{
    Q_OBJECT

private:
    QDBusPendingCall getPackage(const QString &destination = Service, int timeout = WaitLimit) const
    {
        QDBusMessage call = QDBusMessage::createMethodCall(destination, Path, Service, "GetPackage"_s);
        call << "somename"_s;
        return QDBusConnection::systemBus().asyncCall(call, timeout);
    }

    Journal m_journal;
    std::unique_ptr<RecordingPeer> m_manager;

private Q_SLOTS:
    void initTestCase()
    {
        m_manager = std::make_unique<RecordingPeer>(qEnvironmentVariable("DBUS_SYSTEM_BUS_ADDRESS"),
                                                    QStringList{Service}, &m_journal);
    }

    void cleanup() { m_journal.clear(); }

    void isATypeByItsOwnName()
    {
        const int type = qMetaTypeId<ZarnPackage>();
        QCOMPARE(QMetaType::type("ZarnPackage"), type);
        QCOMPARE(QByteArray(QMetaType::typeName(type)), "ZarnPackage"_b);
        QCOMPARE(qMetaTypeId<ZarnPackage>(), type);
        QCOMPARE(QMetaType::sizeOf(type), static_cast<int>(sizeof(void *)));

        const QMetaType::TypeFlags flags = QMetaType::typeFlags(type);
        QVERIFY(flags.testFlag(QMetaType::NeedsConstruction));
        QVERIFY(flags.testFlag(QMetaType::NeedsDestruction));
        QVERIFY(flags.testFlag(QMetaType::MovableType));
    }

    void isKnownToTheBusOnceRegistered()
    {
        QCOMPARE(QDBusMetaType::typeToSignature(qMetaTypeId<ZarnPackage>()), nullptr);
        registerZarnPackage();
        QCOMPARE(QByteArray(QDBusMetaType::typeToSignature(qMetaTypeId<ZarnPackage>())), "a{ss}"_b);
    }

    void goesOutInKeyOrder_data()
    {
        QTest::addColumn<QStringList>("keys");
        QTest::addColumn<QString>("arguments");
        QTest::newRow("none") << QStringList() << "(@a{ss} {},)"_s;
        QTest::newRow("one") << QStringList{"name"_s} << "({'name': 'value of name'},)"_s;
        QTest::newRow("several") << QStringList{"b"_s, "a"_s, "B"_s, "10"_s, "9"_s, QString()}
                                 << "({'': 'value of ', '10': 'value of 10', '9': 'value of 9', 'B': 'value of B', "
                                    "'a': 'value of a', 'b': 'value of b'},)"_s;
        // Surrogates sort before the last characters of the basic plane, though they stand for higher ones.
        QTest::newRow("by code units") << QStringList{"\uff5e"_s, "\U0001f4e6"_s, "\u00e9"_s}
                                       << "({'\u00e9': 'value of \u00e9', '\U0001f4e6': 'value of \U0001f4e6', "
                                          "'\uff5e': 'value of \uff5e'},)"_s;
    }

    void goesOutInKeyOrder()
    {
        QFETCH(QStringList, keys);
        QFETCH(QString, arguments);
        ZarnPackage package;
        for (const QString &key : qAsConst(keys)) {
            package.insert(key, "value of "_s + key);
        }

        m_manager->answer("Take"_s, PeerAnswer::values());
        QDBusMessage call = QDBusMessage::createMethodCall(Service, Path, Service, "Take"_s);
        call << QVariant::fromValue(package);
        const QDBusMessage reply = QDBusConnection::systemBus().call(call, QDBus::Block, WaitLimit);
        QCOMPARE(reply.errorMessage(), QString());
        QCOMPARE(m_journal.entries(), QStringList{"ru.quon.ZARN /ru/quon/ZARN ru.quon.ZARN.Take"_s + arguments});
    }

    void comesInWhole_data()
    {
        QTest::addColumn<QByteArray>("answer");
        QTest::addColumn<ZarnPackage>("package");
        QTest::newRow("none") << "(@a{ss} {},)"_b << ZarnPackage();
        QTest::newRow("several") << "({'b': '2', 'a': '1', '': ''},)"_b
                                 << ZarnPackage{{QString(), QString()}, {"a"_s, "1"_s}, {"b"_s, "2"_s}};
        QTest::newRow("a key twice") << "({'a': 'first', 'b': 'x', 'a': 'second'},)"_b
                                     << ZarnPackage{{"a"_s, "second"_s}, {"b"_s, "x"_s}};
        QTest::newRow("other characters") << "({'ключ': '包\\n%1'},)"_b << ZarnPackage{{"ключ"_s, "包\n%1"_s}};
        QTest::newRow("a large one") << "({'a': '" + QByteArray(1024 * 1024, 'x') + "'},)"
                                     << ZarnPackage{{"a"_s, QString(1024 * 1024, QLatin1Char('x'))}};
        QTest::newRow("more values after it") << "({'a': '1'}, 'more', true)"_b << ZarnPackage{{"a"_s, "1"_s}};
    }

    void comesInWhole()
    {
        QFETCH(QByteArray, answer);
        m_manager->answer("GetPackage"_s, PeerAnswer::values(answer));

        const QDBusReply<ZarnPackage> reply = getPackage();
        QVERIFY2(reply.isValid(), qPrintable(reply.error().message()));
        QVERIFY(!reply.error().isValid());
        QTEST(reply.value(), "package");
        QCOMPARE(m_journal.entries(), QStringList{"ru.quon.ZARN /ru/quon/ZARN ru.quon.ZARN.GetPackage('somename',)"_s});
    }

    void replacesEarlierContents()
    {
        m_manager->answer("GetPackage"_s, PeerAnswer::values("({'a': 'new'},)"));
        QDBusPendingCall call = getPackage();
        call.waitForFinished();
        ZarnPackage package{{"a"_s, "old"_s}, {"z"_s, "old"_s}};
        call.reply().arguments().constFirst().value<QDBusArgument>() >> package;
        QCOMPARE(package, (ZarnPackage{{"a"_s, "new"_s}}));
    }

    void isInvalidOtherwise_data()
    {
        QTest::addColumn<PeerAnswer>("answer");
        QTest::addColumn<QString>("errorName");
        const QString invalid = "org.freedesktop.DBus.Error.InvalidSignature"_s;
        QTest::newRow("texts in variants") << PeerAnswer::values("({'a': <'1'>},)") << invalid;
        QTest::newRow("no entry in variants") << PeerAnswer::values("(@a{sv} {},)") << invalid;
        QTest::newRow("a variant") << PeerAnswer::values("(<{'a': '1'}>,)") << invalid;
        QTest::newRow("numbers") << PeerAnswer::values("({'a': 1},)") << invalid;
        QTest::newRow("texts by number") << PeerAnswer::values("({1: 'a'},)") << invalid;
        QTest::newRow("a text") << PeerAnswer::values("('a',)") << invalid;
        QTest::newRow("a list") << PeerAnswer::values("(['a', 'b'],)") << invalid;
        QTest::newRow("pairs") << PeerAnswer::values("([('a', 'b')],)") << invalid;
        QTest::newRow("nothing") << PeerAnswer::values("()") << invalid;
        QTest::newRow("something before it") << PeerAnswer::values("(true, {'a': '1'})") << invalid;
        QTest::newRow("an error") << PeerAnswer::error("ru.quon.ZARN.Error.NotFound", "no such package")
                                  << "ru.quon.ZARN.Error.NotFound"_s;
        QTest::newRow("no answer") << PeerAnswer::held() << "org.freedesktop.DBus.Error.NoReply"_s;
    }

    void isInvalidOtherwise()
    {
        QFETCH(PeerAnswer, answer);
        m_manager->answer("GetPackage"_s, answer);

        const QDBusReply<ZarnPackage> reply =
                getPackage(Service, answer.kind == PeerAnswer::Kind::Held ? 50 : WaitLimit);
        QVERIFY(!reply.isValid());
        QTEST(reply.error().name(), "errorName");
        QVERIFY(reply.value().isEmpty());
    }

    void isInvalidWithoutAPeer()
    {
        const QDBusReply<ZarnPackage> reply = getPackage("ru.quon.Absent"_s);
        QVERIFY(!reply.isValid());
        QCOMPARE(reply.error().name(), "org.freedesktop.DBus.Error.ServiceUnknown"_s);
        QVERIFY(reply.value().isEmpty());
    }

    void canBeIteratedByKey()
    {
        const QVariant record = QVariant::fromValue(ZarnPackage{{"b"_s, "2"_s}, {"a"_s, "1"_s}});
        QVERIFY((
                QMetaType::hasRegisteredConverterFunction<ZarnPackage, QtMetaTypePrivate::QAssociativeIterableImpl>()));

        QStringList seen;
        const auto iterable = record.value<QAssociativeIterable>();
        for (auto entry = iterable.begin(); entry != iterable.end(); ++entry) {
            seen.append(entry.key().toString() + "="_s + entry.value().toString());
        }
        QCOMPARE(seen, QStringList({"a=1"_s, "b=2"_s}));
        QCOMPARE(iterable.value("b"_s).toString(), "2"_s);
    }
};

VELMORA_TEST(ZarnPackageTest, Anywhere, Gui)

#include "tst_zarnpackage.moc"
