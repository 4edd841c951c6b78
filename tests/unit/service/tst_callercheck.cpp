// SPDX-FileCopyrightText: velmora-installationhandler contributors
// SPDX-License-Identifier: BSD-3-Clause

#include "busmonitor.h"
#include "callercheck.h"
#include "devicefile.h"
#include "journal.h"
#include "testrunner.h"

#include <QDBusConnectionInterface>
#include <QDBusContext>
#include <QFile>
#include <QProcess>

#include <optional>

namespace {

const QString Service = "test.Guarded"_s;

// The device knows nobody and nogroup. The others are added, but the last one.
constexpr int Root = 0;
constexpr int Nobody = 65534;
constexpr int Privileged = 9001;
constexpr int PrivilegedInCapitals = 9002;
constexpr int PrivilegedAndMore = 9003;
constexpr int RootInCapitals = 9004;
constexpr int Nameless = 9005;

const QByteArray Groups = "privileged:x:9001:\nPrivileged:x:9002:\nprivileged2:x:9003:\n";
const QByteArray Users = "privileged:x:9001:65534::/:/bin/false\nRoot:x:9004:65534::/:/bin/false\n";

QByteArray contentsOf(const QString &path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

QString refusal(const QString &process)
{
    return "org.freedesktop.DBus.Error.AccessDenied: PID %1 is not in privileged group"_s.arg(process);
}

}

/** A service that asks the check about each caller and notes its answer. */
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
        m_journal->add(privileged ? "privileged"_s : "not privileged"_s);
        return "come in"_s;
    }

private:
    Journal *const m_journal;
};

/** The check of callers of methods that only privileged processes may call. */
class CallerCheckTest : public QObject
{
    Q_OBJECT

private:
    void start(QProcess &caller, int user, int group, int supplementary, const char *how,
               const char *bus = "DBUS_SESSION_BUS_ADDRESS")
    {
        caller.setProcessChannelMode(QProcess::ForwardedErrorChannel);
        caller.start("/usr/bin/python3"_s,
                     {"-B"_s, QStringLiteral(CALLER), qEnvironmentVariable(bus), Service, QString::number(user),
                      QString::number(group), QString::number(supplementary), QString::fromLatin1(how)});
    }

    QStringList answer(int user, int group, int supplementary, const char *how = "stay",
                       const char *bus = "DBUS_SESSION_BUS_ADDRESS")
    {
        QProcess caller;
        start(caller, user, group, supplementary, how, bus);
        const bool ended = waitFor([&] { return caller.state() == QProcess::NotRunning; }, "the end of the caller");
        if (!ended || caller.exitStatus() != QProcess::NormalExit || caller.exitCode() != 0) {
            qFatal("The caller failed: %s", qPrintable(caller.errorString()));
        }
        return QString::fromUtf8(caller.readAllStandardOutput()).split(u'\n', Qt::SkipEmptyParts);
    }

    Journal m_journal;
    Guarded m_guarded{&m_journal};
    DeviceFile m_groups{"/etc/group"_s, contentsOf("/etc/group"_s) + Groups};
    DeviceFile m_users{"/etc/passwd"_s, contentsOf("/etc/passwd"_s) + Users};
    std::optional<MessageLog> m_log;

private Q_SLOTS:
    void initTestCase()
    {
        for (QDBusConnection bus : {QDBusConnection::sessionBus(), QDBusConnection::systemBus()}) {
            QVERIFY(bus.registerObject("/"_s, &m_guarded, QDBusConnection::ExportAllInvokables));
            QVERIFY(bus.registerService(Service));
        }
    }

    void init()
    {
        m_journal.clear();
        m_log.emplace(&m_journal);
    }

    void cleanup() { m_log.reset(); }

    void goesByGroupAndUser_data()
    {
        QTest::addColumn<int>("user");
        QTest::addColumn<int>("group");
        QTest::addColumn<int>("supplementary");
        QTest::addColumn<bool>("privileged");

        QTest::newRow("group privileged") << Nobody << Privileged << Nobody << true;
        QTest::newRow("group privileged, user Root") << RootInCapitals << Privileged << Nobody << true;
        QTest::newRow("root") << Root << Root << Root << true;
        QTest::newRow("root, any group") << Root << Nobody << Nobody << true;
        QTest::newRow("root, nameless group") << Root << Nameless << Nobody << true;
        QTest::newRow("both") << Root << Privileged << Nobody << true;
        QTest::newRow("neither") << Nobody << Nobody << Nobody << false;
        QTest::newRow("group Privileged") << Nobody << PrivilegedInCapitals << Nobody << false;
        QTest::newRow("group privileged2") << Nobody << PrivilegedAndMore << Nobody << false;
        QTest::newRow("group root") << Nobody << Root << Nobody << false;
        QTest::newRow("supplementary group") << Nobody << Nobody << Privileged << false;
        QTest::newRow("user privileged") << Privileged << Nobody << Nobody << false;
        QTest::newRow("user Root") << RootInCapitals << Nobody << Nobody << false;
        QTest::newRow("nameless group") << Nobody << Nameless << Nobody << false;
    }

    // The check asks the bus of the call, since a connection has another name on each bus. It logs nothing.
    // Known behaviour 12.
    void goesByGroupAndUser()
    {
        QFETCH(int, user);
        QFETCH(int, group);
        QFETCH(int, supplementary);
        QFETCH(bool, privileged);
        for (const char *bus : {"DBUS_SESSION_BUS_ADDRESS", "DBUS_SYSTEM_BUS_ADDRESS"}) {
            m_journal.clear();
            const QStringList said = answer(user, group, supplementary, "stay", bus);
            QCOMPARE(said.size(), 2);
            QCOMPARE(said.last(), privileged ? "come in"_s : refusal(said.first()));
            QCOMPARE(m_journal.entries(), QStringList(privileged ? "privileged"_s : "not privileged"_s));
        }
    }

    void refusesACallerThatHasLeftTheBus()
    {
        const QDBusConnection bus = QDBusConnection::sessionBus();
        BusMonitor monitor(bus, qgetenv("DBUS_SESSION_BUS_ADDRESS"));
        const int names = bus.interface()->registeredServiceNames().value().size();
        QProcess caller;
        start(caller, Root, Root, Root, "leave");
        // The event loop, and so the call, has to wait until the caller has gone.
        QVERIFY(caller.waitForFinished(WaitLimit));
        QDeadlineTimer left(WaitLimit);
        while (bus.interface()->registeredServiceNames().value().size() > names) {
            QVERIFY2(!left.hasExpired(), "the bus still knows the caller");
        }
        QCOMPARE(m_journal.entries(), QStringList());

        QCoreApplication::processEvents();
        QCOMPARE(m_journal.entries(), QStringList("not privileged"_s));
        QVERIFY(monitor.traffic().contains("string \"PID 0 is not in privileged group\""));
    }

    // The process was privileged, and its child still has the connection. The refusal names the process that the bus
    // tells: D-Bus 1.16 tells none that has ended.
    void refusesACallerThatHasEnded()
    {
        const QStringList said = answer(Root, Privileged, Nobody, "orphan");
        QCOMPARE(said.size(), 3);
        QVERIFY(!QFile::exists("/proc/"_s + said.first()));
        QVERIFY(said.at(1) == said.first() || said.at(1) == "0"_s);
        QCOMPARE(said.last(), refusal(said.at(1)));
        QCOMPARE(m_journal.entries(), QStringList("not privileged"_s));
    }
};

VELMORA_TEST(CallerCheckTest, Device, Gui)

#include "tst_callercheck.moc"
