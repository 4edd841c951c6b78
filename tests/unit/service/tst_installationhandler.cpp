// SPDX-FileCopyrightText: velmora-installationhandler contributors
// SPDX-License-Identifier: BSD-3-Clause

#include "handlerscene.h"

#include "testrunner.h"

#include <QDBusMessage>
#include <QDBusMetaType>
#include <QDBusPendingCallWatcher>
#include <QMetaMethod>
#include <QTimer>

namespace {

const QString Name = QStringLiteral("org.velmoraos.installationhandler");
const QString Path = QStringLiteral("/org/velmoraos/installationhandler");

const QString Introspection = QStringLiteral(
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
)");

QStringList describe(const QDBusInterface &proxy)
{
    return {
            proxy.connection().name() == QDBusConnection::systemBus().name() ? QStringLiteral("system")
                                                                             : QStringLiteral("session"),
            proxy.service(),
            proxy.path(),
            proxy.interface(),
            QString::number(proxy.timeout()),
            proxy.parent() ? QStringLiteral("owned") : QStringLiteral("by value"),
    };
}

}

/** The object on the bus, its proxies and its idle timer. */
class InstallationHandlerTest : public HandlerScene
{
    Q_OBJECT

public Q_SLOTS:
    void hear(const QDBusMessage &signal);

private Q_SLOTS:
    void initTestCase();
    void init();
    void cleanup();

    void belongsToItsParent();
    void exportsWhatItShould();
    void answersOnTheBus_data();
    void answersOnTheBus();
    void refusesOtherCalls_data();
    void refusesOtherCalls();
    void signalsOnTheBus();
    void hasItsProxies();
    void idlesFromTheStart();
    void quitsWhenIdle();

private:
    QDBusMessage call(const QString &interface, const QString &member, const QVariantList &arguments = {});

    std::optional<QDBusConnection> m_client;
};

void InstallationHandlerTest::init()
{
    setUpHandler();
    m_client =
            QDBusConnection::connectToBus(qEnvironmentVariable("DBUS_SESSION_BUS_ADDRESS"), QStringLiteral("client"));
    QVERIFY(m_client->isConnected());
    QVERIFY(QDBusConnection::sessionBus().registerObject(Path, m_handler.get(), QDBusConnection::ExportAllContents));
    QVERIFY(QDBusConnection::sessionBus().registerService(Name));
}

void InstallationHandlerTest::cleanup()
{
    QDBusConnection::sessionBus().unregisterService(Name);
    m_client.reset();
    QDBusConnection::disconnectFromBus(QStringLiteral("client"));
    tearDownHandler();
}

// The object lives in this thread, which therefore must not wait for it.
QDBusMessage InstallationHandlerTest::call(const QString &interface, const QString &member,
                                           const QVariantList &arguments)
{
    QDBusMessage message = QDBusMessage::createMethodCall(Name, Path, interface, member);
    message.setArguments(arguments);
    const QDBusPendingCallWatcher watcher(m_client->asyncCall(message, 5000));
    return QTest::qWaitFor([&] { return watcher.isFinished(); }, 6000) ? watcher.reply() : QDBusMessage();
}

void InstallationHandlerTest::hear(const QDBusMessage &signal)
{
    QStringList arguments;
    for (const QVariant &argument : signal.arguments()) {
        arguments.append(argument.toString());
    }
    note(QStringLiteral("bus: %1 %2 %3(%4) %5")
                 .arg(signal.path(), signal.interface(), signal.member(), signal.signature(),
                      arguments.join(QLatin1Char('|'))));
}

// The first handler makes the package record known, for good.
void InstallationHandlerTest::initTestCase()
{
    QCOMPARE(QMetaType::type("ZarnPackage"), int(QMetaType::UnknownType));
    const InstallationHandler handler;
    const int type = QMetaType::type("ZarnPackage");
    QVERIFY(type != QMetaType::UnknownType);
    QCOMPARE(QByteArray(QDBusMetaType::typeToSignature(type)), QByteArray("a{ss}"));
}

void InstallationHandlerTest::belongsToItsParent()
{
    QObject parent;
    const auto child = new InstallationHandler(&parent);
    QCOMPARE(child->parent(), &parent);
    QVERIFY(!m_handler->parent());
}

void InstallationHandlerTest::exportsWhatItShould()
{
    const QDBusMessage reply =
            call(QStringLiteral("org.freedesktop.DBus.Introspectable"), QStringLiteral("Introspect"));
    const QString xml = reply.arguments().value(0).toString();
    const int begin = xml.indexOf(QStringLiteral("  <interface name=\"org.velmoraos"));
    const int end = xml.indexOf(QStringLiteral("  <interface name=\"org.freedesktop"));
    QVERIFY2(xml.mid(begin, end - begin) == Introspection, qPrintable(xml));
    for (const QString &standard : xml.mid(end).split(QStringLiteral("<interface name=")).mid(1)) {
        QVERIFY2(standard.startsWith(QStringLiteral("\"org.freedesktop.DBus.")), qPrintable(standard));
    }
}

void InstallationHandlerTest::answersOnTheBus_data()
{
    QTest::addColumn<QVariantList>("arguments");
    QTest::newRow("as") << QVariantList{QStringList()};
    QTest::newRow("asb") << QVariantList{QStringList(), false};
    QTest::newRow("asbb") << QVariantList{QStringList(), true, true};
}

// The outcome of what ends at once is out before the answer.
void InstallationHandlerTest::answersOnTheBus()
{
    QFETCH(QVariantList, arguments);
    const QDBusMessage reply = call(Name, QStringLiteral("installFiles"), arguments);

    QCOMPARE(reply.type(), QDBusMessage::ReplyMessage);
    QCOMPARE(reply.signature(), QString());
    QCOMPARE(entries(), QStringList(finished(true, QString(), QStringLiteral("1 running, 0 waiting"))));
}

void InstallationHandlerTest::refusesOtherCalls_data()
{
    QTest::addColumn<QString>("member");
    QTest::addColumn<QVariantList>("arguments");
    QTest::newRow("one string") << QStringLiteral("installFiles") << QVariantList{QStringLiteral("/a.rpm")};
    QTest::newRow("nothing") << QStringLiteral("installFiles") << QVariantList();
    QTest::newRow("too much") << QStringLiteral("installFiles") << QVariantList{QStringList(), true, true, true};
    QTest::newRow("private slot") << QStringLiteral("transactionFinished") << QVariantList{true, QString(), QString()};
    QTest::newRow("timer") << QStringLiteral("updateIdleTimer") << QVariantList();
    QTest::newRow("deletion") << QStringLiteral("deleteLater") << QVariantList();
}

void InstallationHandlerTest::refusesOtherCalls()
{
    QFETCH(QString, member);
    QFETCH(QVariantList, arguments);
    const QDBusMessage reply = call(Name, member, arguments);

    QCOMPARE(reply.type(), QDBusMessage::ErrorMessage);
    QCOMPARE(reply.errorName(), QStringLiteral("org.freedesktop.DBus.Error.UnknownMethod"));
    QCOMPARE(entries(), QStringList());
}

void InstallationHandlerTest::signalsOnTheBus()
{
    for (const QString &signal : {QStringLiteral("installFinished"), QStringLiteral("needConfirm")}) {
        QVERIFY(m_client->connect(Name, Path, Name, signal, this, SLOT(hear(QDBusMessage))));
    }
    m_handler->installFiles({packageFile(QStringLiteral("plain"))});
    TestDialog::dismiss(TestDialog::window());
    m_handler->installFiles({});

    QTRY_COMPARE(
            entries().filter(QStringLiteral("bus: ")),
            QStringList({
                    QStringLiteral(
                            "bus: /org/velmoraos/installationhandler org.velmoraos.installationhandler needConfirm() "),
                    QStringLiteral("bus: /org/velmoraos/installationhandler org.velmoraos.installationhandler "
                                   "installFinished(bs) false|installationhandler-user-aborted"),
                    QStringLiteral("bus: /org/velmoraos/installationhandler org.velmoraos.installationhandler "
                                   "installFinished(bs) true|"),
            }));
}

void InstallationHandlerTest::hasItsProxies()
{
    const QString defaultTimeout = QStringLiteral("-1");
    const QString byValue = QStringLiteral("by value");
    QCOMPARE(describe(HandlerInternals::launcherModel(m_handler.get())),
             QStringList({QStringLiteral("session"), QStringLiteral("org.orrinmobile.rozzle"),
                          QStringLiteral("/LauncherModel"), QStringLiteral("org.orrinmobile.rozzle.LauncherModel"),
                          defaultTimeout, byValue}));
    QCOMPARE(describe(HandlerInternals::developerMode(m_handler.get())),
             QStringList({QStringLiteral("system"), QStringLiteral("ru.quon.developermode"), QStringLiteral("/"),
                          QStringLiteral("ru.quon.developermode"), defaultTimeout, byValue}));
    QCOMPARE(describe(HandlerInternals::packageManager(m_handler.get())),
             QStringList({QStringLiteral("system"), QStringLiteral("ru.quon.ZARN"), QStringLiteral("/ru/quon/ZARN"),
                          QStringLiteral("ru.quon.ZARN"), QStringLiteral("900000"), byValue}));
    QCOMPARE(describe(HandlerInternals::hooks(m_handler.get())),
             QStringList({QStringLiteral("system"), QStringLiteral("ru.quon.RuntimeManager"),
                          QStringLiteral("/ru/quon/ZARN/Hooks"), QStringLiteral("ru.quon.ZARN.Hooks"), defaultTimeout,
                          byValue}));
}

void InstallationHandlerTest::idlesFromTheStart()
{
    const QTimer *timer = HandlerInternals::idleTimer(m_handler.get());
    QVERIFY(timer->isActive());
    QVERIFY(timer->isSingleShot());
    QCOMPARE(timer->interval(), 30000);
    QCOMPARE(state(), QStringLiteral("idle"));
    QCOMPARE(entries(), QStringList());
}

void InstallationHandlerTest::quitsWhenIdle()
{
    HandlerInternals::idleTimer(m_handler.get())->start(0);
    QTimer::singleShot(5000, qApp, [] { QCoreApplication::exit(1); });
    QCOMPARE(QCoreApplication::exec(), 0);
}

VELMORA_TEST(InstallationHandlerTest, Gui)

#include "tst_installationhandler.moc"
