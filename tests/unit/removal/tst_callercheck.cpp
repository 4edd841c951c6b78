// SPDX-FileCopyrightText: velmora-installationhandler contributors
// SPDX-License-Identifier: BSD-3-Clause

#include "callercheck.h"

#include "busmonitor.h"
#include "devicefile.h"
#include "journal.h"
#include "messagelog.h"
#include "testrunner.h"

#include <QDBusConnectionInterface>
#include <QDBusContext>
#include <QFile>
#include <QProcess>

namespace {

const QString Service = QStringLiteral("test.Guarded");
constexpr int deadline = 30000; // milliseconds

// The device knows nobody and nogroup; these are added.
enum Id {
    Root = 0,
    Nobody = 65534,
    Privileged = 9001,
    PrivilegedInCapitals,
    PrivilegedAndMore,
    RootInCapitals,
    Nameless
};

const QByteArray Groups = "privileged:x:9001:\nPrivileged:x:9002:\nprivileged2:x:9003:\n";
const QByteArray Users = "privileged:x:9001:65534::/:/bin/false\nRoot:x:9004:65534::/:/bin/false\n";

QByteArray contentsOf(const QString &path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

QStringList lines(QProcess &caller)
{
    return QString::fromUtf8(caller.readAllStandardOutput()).split(QLatin1Char('\n'), Qt::SkipEmptyParts);
}

QString refusal(const QString &process)
{
    return QStringLiteral("org.freedesktop.DBus.Error.AccessDenied: PID %1 is not in privileged group").arg(process);
}

}

/** A service that lets in whom the check lets in, and says what the check said. */
class Guarded : public QObject, protected QDBusContext
{
    Q_OBJECT
    Q_CLASSINFO("D-Bus Interface", "test.Guarded")

public:
    explicit Guarded(Journal *journal)
        : m_journal(journal)
    {
    }

    Q_INVOKABLE QString enter()
    {
        const bool privileged = CallerCheck::isPrivileged(*this);
        m_journal->add(privileged ? QStringLiteral("privileged") : QStringLiteral("not privileged"));
        return QStringLiteral("come in");
    }

private:
    Journal *const m_journal;
};

/** Who may call what only privileged processes may. */
class CallerCheckTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();
    void init() { m_journal.clear(); }

    void goesByGroupAndUser_data();
    void goesByGroupAndUser();
    void asksTheBusOfTheCall();
    void refusesWhoHasLeftTheBus();
    void refusesWhoHasEnded();

private:
    void start(QProcess &caller, int user, int group, int supplementary, const char *how,
               const char *bus = "DBUS_SESSION_BUS_ADDRESS");
    QStringList answer(int user, int group, int supplementary, const char *how = "stay",
                       const char *bus = "DBUS_SESSION_BUS_ADDRESS");

    Journal m_journal;
    Guarded m_guarded{&m_journal};
    DeviceFile m_groups{QStringLiteral("/etc/group"), contentsOf(QStringLiteral("/etc/group")) + Groups};
    DeviceFile m_users{QStringLiteral("/etc/passwd"), contentsOf(QStringLiteral("/etc/passwd")) + Users};
    MessageLog m_log{&m_journal};
};

void CallerCheckTest::initTestCase()
{
    for (QDBusConnection bus : {QDBusConnection::sessionBus(), QDBusConnection::systemBus()}) {
        QVERIFY(bus.registerObject(QStringLiteral("/"), &m_guarded, QDBusConnection::ExportAllInvokables));
        QVERIFY(bus.registerService(Service));
    }
}

void CallerCheckTest::start(QProcess &caller, int user, int group, int supplementary, const char *how, const char *bus)
{
    caller.setProcessChannelMode(QProcess::ForwardedErrorChannel);
    caller.start(QStringLiteral("/usr/bin/python3"),
                 {QStringLiteral("-B"), QStringLiteral(CALLER), qEnvironmentVariable(bus), Service,
                  QString::number(user), QString::number(group), QString::number(supplementary),
                  QString::fromLatin1(how)});
}

QStringList CallerCheckTest::answer(int user, int group, int supplementary, const char *how, const char *bus)
{
    QProcess caller;
    start(caller, user, group, supplementary, how, bus);
    if (!QTest::qWaitFor([&caller] { return caller.state() == QProcess::NotRunning; }, deadline)) {
        qFatal("The caller has not ended: %s", qPrintable(caller.errorString()));
    }
    return lines(caller);
}

void CallerCheckTest::goesByGroupAndUser_data()
{
    QTest::addColumn<int>("user");
    QTest::addColumn<int>("group");
    QTest::addColumn<int>("supplementary");
    QTest::addColumn<bool>("privileged");

    QTest::newRow("group privileged") << int(Nobody) << int(Privileged) << int(Nobody) << true;
    QTest::newRow("group privileged, user Root") << int(RootInCapitals) << int(Privileged) << int(Nobody) << true;
    QTest::newRow("root") << int(Root) << int(Root) << int(Root) << true;
    QTest::newRow("root, any group") << int(Root) << int(Nobody) << int(Nobody) << true;
    QTest::newRow("root, nameless group") << int(Root) << int(Nameless) << int(Nobody) << true;
    QTest::newRow("both") << int(Root) << int(Privileged) << int(Nobody) << true;
    QTest::newRow("neither") << int(Nobody) << int(Nobody) << int(Nobody) << false;
    QTest::newRow("group Privileged") << int(Nobody) << int(PrivilegedInCapitals) << int(Nobody) << false;
    QTest::newRow("group privileged2") << int(Nobody) << int(PrivilegedAndMore) << int(Nobody) << false;
    QTest::newRow("group root") << int(Nobody) << int(Root) << int(Nobody) << false;
    QTest::newRow("supplementary group") << int(Nobody) << int(Nobody) << int(Privileged) << false;
    QTest::newRow("user privileged") << int(Privileged) << int(Nobody) << int(Nobody) << false;
    QTest::newRow("user Root") << int(RootInCapitals) << int(Nobody) << int(Nobody) << false;
    QTest::newRow("nameless group") << int(Nobody) << int(Nameless) << int(Nobody) << false;
}

// And without a line in the log.
void CallerCheckTest::goesByGroupAndUser()
{
    QFETCH(int, user);
    QFETCH(int, group);
    QFETCH(int, supplementary);
    QFETCH(bool, privileged);

    const QStringList said = answer(user, group, supplementary);
    QCOMPARE(said.size(), 2);
    QCOMPARE(said.last(), privileged ? QStringLiteral("come in") : refusal(said.first()));
    QCOMPARE(m_journal.entries(),
             QStringList(privileged ? QStringLiteral("privileged") : QStringLiteral("not privileged")));
}

// The names of connections say nothing on another bus.
void CallerCheckTest::asksTheBusOfTheCall()
{
    QCOMPARE(answer(Nobody, Privileged, Nobody, "stay", "DBUS_SYSTEM_BUS_ADDRESS").value(1), QStringLiteral("come in"));
    const QStringList said = answer(Nobody, Nobody, Nobody, "stay", "DBUS_SYSTEM_BUS_ADDRESS");
    QCOMPARE(said.size(), 2);
    QCOMPARE(said.last(), refusal(said.first()));
}

void CallerCheckTest::refusesWhoHasLeftTheBus()
{
    const QDBusConnection bus = QDBusConnection::sessionBus();
    BusMonitor monitor(bus, qgetenv("DBUS_SESSION_BUS_ADDRESS"));
    const int names = bus.interface()->registeredServiceNames().value().size();
    QProcess caller;
    start(caller, Root, Root, Root, "leave");
    // Nothing is handled before the caller has gone.
    QVERIFY(caller.waitForFinished(deadline));
    QDeadlineTimer left(deadline);
    while (bus.interface()->registeredServiceNames().value().size() > names) {
        QVERIFY2(!left.hasExpired(), "the bus still knows the caller");
    }
    QCOMPARE(m_journal.entries(), QStringList());

    QCoreApplication::processEvents();
    QCOMPARE(m_journal.entries(), QStringList(QStringLiteral("not privileged")));
    QVERIFY(monitor.traffic().contains("string \"PID 0 is not in privileged group\""));
}

// Even one that was privileged, and whose connection somebody else still has.
void CallerCheckTest::refusesWhoHasEnded()
{
    const QStringList said = answer(Root, Privileged, Nobody, "orphan");
    QCOMPARE(said.size(), 2);
    QVERIFY(!QFile::exists(QStringLiteral("/proc/") + said.first()));
    QCOMPARE(said.last(), refusal(said.first()));
    QCOMPARE(m_journal.entries(), QStringList(QStringLiteral("not privileged")));
}

VELMORA_TEST(CallerCheckTest, Gui)

#include "tst_callercheck.moc"
