// SPDX-FileCopyrightText: velmora-installationhandler contributors
// SPDX-License-Identifier: BSD-3-Clause

#include "handlerfixture.h"
#include "testrunner.h"

#include <QDBusMessage>
#include <QDBusMetaType>
#include <QDBusPendingCallWatcher>
#include <QTimer>

namespace {

const QString Name = "org.velmoraos.installationhandler"_s;
const QString Path = "/org/velmoraos/installationhandler"_s;

const QString Introspection =
        R"(  <interface name="org.velmoraos.installationhandler">
    <signal name="installFinished">
      <arg name="success" type="b" direction="out"/>
      <arg name="errorString" type="s" direction="out"/>
    </signal>
    <signal name="removalFinished">
      <arg name="success" type="b" direction="out"/>
      <arg name="errorString" type="s" direction="out"/>
    </signal>
    <signal name="needConfirm">
    </signal>
    <method name="installFiles">
      <arg name="fileUrls" type="as" direction="in"/>
      <arg name="sdkMode" type="b" direction="in"/>
      <arg name="keepUserdata" type="b" direction="in"/>
    </method>
    <method name="installFiles">
      <arg name="fileUrls" type="as" direction="in"/>
      <arg name="sdkMode" type="b" direction="in"/>
    </method>
    <method name="installFiles">
      <arg name="fileUrls" type="as" direction="in"/>
    </method>
    <method name="removePackages">
      <arg name="packageNames" type="as" direction="in"/>
      <arg name="keepUserdata" type="b" direction="in"/>
    </method>
    <method name="removePackages">
      <arg name="packageNames" type="as" direction="in"/>
    </method>
    <method name="removePackageByDesktopFile">
      <arg name="desktopFile" type="s" direction="in"/>
    </method>
  </interface>
)"_s;

QString describe(const QDBusInterface &proxy)
{
    const bool system = proxy.connection().name() == QDBusConnection::systemBus().name();
    return "%1 %2 %3 %4 %5%6"_s.arg(system ? "system"_s : "session"_s, proxy.service(), proxy.path(), proxy.interface(),
                                    QString::number(proxy.timeout()), proxy.parent() ? " with a parent"_s : QString());
}

}

/** The object on the bus, its proxies and its idle timer. */
class InstallationHandlerTest : public HandlerFixture
{
    Q_OBJECT

private:
    // The object lives in this thread, which therefore must not block.
    QDBusMessage call(const QString &interface, const QString &member, const QVariantList &arguments = {})
    {
        QDBusMessage message = QDBusMessage::createMethodCall(Name, Path, interface, member);
        message.setArguments(arguments);
        const QDBusPendingCallWatcher watcher(m_client->asyncCall(message, WaitLimit));
        return waitFor([&] { return watcher.isFinished(); }, qPrintable(member)) ? watcher.reply() : QDBusMessage();
    }

    std::optional<QDBusConnection> m_client;

public Q_SLOTS:
    void noteSignal(const QDBusMessage &signal)
    {
        QStringList arguments;
        for (const QVariant &argument : signal.arguments()) {
            arguments.append(argument.toString());
        }
        note("bus: %1 %2 %3(%4) %5"_s.arg(signal.path(), signal.interface(), signal.member(), signal.signature(),
                                          arguments.join("|"_s)));
    }

private Q_SLOTS:
    // The first handler of a process registers the package record.
    void initTestCase()
    {
        QCOMPARE(QMetaType::type("ZarnPackage"), int(QMetaType::UnknownType));
        const InstallationHandler handler;
        const int type = QMetaType::type("ZarnPackage");
        QVERIFY(type != QMetaType::UnknownType);
        QCOMPARE(QByteArray(QDBusMetaType::typeToSignature(type)), "a{ss}"_b);
    }

    void init()
    {
        HandlerFixture::init();
        m_client = QDBusConnection::connectToBus(qEnvironmentVariable("DBUS_SESSION_BUS_ADDRESS"), "client"_s);
        QVERIFY(m_client->isConnected());
        QVERIFY(QDBusConnection::sessionBus().registerObject(Path, m_handler.get(),
                                                             QDBusConnection::ExportAllContents));
        QVERIFY(QDBusConnection::sessionBus().registerService(Name));
    }

    void cleanup()
    {
        QDBusConnection::sessionBus().unregisterService(Name);
        m_client.reset();
        QDBusConnection::disconnectFromBus("client"_s);
        HandlerFixture::cleanup();
    }

    void belongsToItsParent()
    {
        QObject parent;
        const auto child = new InstallationHandler(&parent);
        QCOMPARE(child->parent(), &parent);
        QVERIFY(!m_handler->parent());
    }

    void exportsItsInterfaceOnly()
    {
        const QDBusMessage reply = call("org.freedesktop.DBus.Introspectable"_s, "Introspect"_s);
        const QString xml = reply.arguments().value(0).toString();
        const int begin = xml.indexOf("  <interface name=\"org.velmoraos"_s);
        const int end = xml.indexOf("  <interface name=\"org.freedesktop"_s);
        QVERIFY2(xml.mid(begin, end - begin) == Introspection, qPrintable(xml));
        for (const QString &standard : xml.mid(end).split("<interface name="_s).mid(1)) {
            QVERIFY2(standard.startsWith("\"org.freedesktop.DBus."_s), qPrintable(standard));
        }
    }

    void answersOnTheBus_data()
    {
        QTest::addColumn<QVariantList>("arguments");
        QTest::newRow("as") << QVariantList{QStringList()};
        QTest::newRow("asb") << QVariantList{QStringList(), false};
        QTest::newRow("asbb") << QVariantList{QStringList(), true, true};
    }

    // The signal comes before the reply. Known behaviour 2.
    void answersOnTheBus()
    {
        QFETCH(QVariantList, arguments);
        const QDBusMessage reply = call(Name, "installFiles"_s, arguments);

        QCOMPARE(reply.type(), QDBusMessage::ReplyMessage);
        QCOMPARE(reply.signature(), QString());
        QCOMPARE(entries(), QStringList(succeeded()));
    }

    void refusesOtherCalls_data()
    {
        QTest::addColumn<QString>("member");
        QTest::addColumn<QVariantList>("arguments");
        QTest::newRow("one string") << "installFiles"_s << QVariantList{"/a.rpm"_s};
        QTest::newRow("nothing") << "installFiles"_s << QVariantList();
        QTest::newRow("too much") << "installFiles"_s << QVariantList{QStringList(), true, true, true};
        QTest::newRow("private slot") << "transactionFinished"_s << QVariantList{true, QString(), QString()};
        QTest::newRow("timer") << "updateIdleTimer"_s << QVariantList();
        QTest::newRow("deletion") << "deleteLater"_s << QVariantList();
    }

    // Known behaviour 1.
    void refusesOtherCalls()
    {
        QFETCH(QString, member);
        QFETCH(QVariantList, arguments);
        const QDBusMessage reply = call(Name, member, arguments);

        QCOMPARE(reply.type(), QDBusMessage::ErrorMessage);
        QCOMPARE(reply.errorName(), "org.freedesktop.DBus.Error.UnknownMethod"_s);
        QCOMPARE(entries(), QStringList());
    }

    void signalsOnTheBus()
    {
        for (const QString &signal : {"installFinished"_s, "needConfirm"_s}) {
            QVERIFY(m_client->connect(Name, Path, Name, signal, this, SLOT(noteSignal(QDBusMessage))));
        }
        m_handler->installFiles({packageFile("plain"_s)});
        TestDialog::dismiss(TestDialog::window());
        m_handler->installFiles({});

        const QString signal = "bus: %1 %2 "_s.arg(Path, Name);
        QTRY_COMPARE_WITH_TIMEOUT(entries().filter("bus: "_s),
                                  QStringList({signal + "needConfirm() "_s,
                                               signal + "installFinished(bs) false|installationhandler-user-aborted"_s,
                                               signal + "installFinished(bs) true|"_s}),
                                  WaitLimit);
    }

    void hasItsProxies()
    {
        InstallationHandler *const handler = m_handler.get();
        const QStringList proxies{
                describe(HandlerInternals::launcherModel(handler)), describe(HandlerInternals::developerMode(handler)),
                describe(HandlerInternals::packageManager(handler)), describe(HandlerInternals::hooks(handler))};
        QCOMPARE(proxies,
                 QStringList({"session org.orrinmobile.rozzle /LauncherModel org.orrinmobile.rozzle.LauncherModel -1"_s,
                              "system ru.quon.developermode / ru.quon.developermode -1"_s,
                              "system ru.quon.ZARN /ru/quon/ZARN ru.quon.ZARN 900000"_s,
                              "system ru.quon.RuntimeManager /ru/quon/ZARN/Hooks ru.quon.ZARN.Hooks -1"_s}));
    }

    void idlesFromTheStart()
    {
        const QTimer *timer = &HandlerInternals::idleTimer(m_handler.get());
        QVERIFY(timer->isActive());
        QVERIFY(timer->isSingleShot());
        QCOMPARE(timer->interval(), 30000);
        QCOMPARE(state(), "idle"_s);
        QCOMPARE(entries(), QStringList());
    }

    void quitsWhenIdle()
    {
        HandlerInternals::idleTimer(m_handler.get()).start(0);
        QTimer::singleShot(WaitLimit, qApp, [] { QCoreApplication::exit(1); });
        QCOMPARE(QCoreApplication::exec(), 0);
    }
};

VELMORA_TEST(InstallationHandlerTest, Device, Gui)

#include "tst_installationhandler.moc"
