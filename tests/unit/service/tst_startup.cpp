// SPDX-FileCopyrightText: velmora-installationhandler contributors
// SPDX-License-Identifier: BSD-3-Clause

#include "busmonitor.h"
#include "devicefile.h"
#include "journal.h"
#include "recordingpeer.h"
#include "testdialog.h"
#include "testrunner.h"

#include <QDBusConnection>
#include <QProcess>
#include <QRegularExpression>
#include <QTemporaryDir>

namespace {

const QString AbsentBus = "unix:path=/absent"_s;

const QString English = "velmora-installationhandler_eng_en"_s;
const QString German = "velmora-installationhandler-de"_s;
const QString ZarnEnglish = "zarn_eng_en"_s;
const QString ZarnGerman = "zarn-de"_s;

using Environment = QHash<QString, QString>;
const Environment InGerman{{"LANG"_s, "de_DE.UTF-8"_s}, {"LC_ALL"_s, "de_DE.UTF-8"_s}};

struct Outcome
{
    int status;
    QStringList printed;
    QStringList logged;

    QString value(const QString &what) const
    {
        const QStringList lines = printed.filter(QRegularExpression("^%1: "_s.arg(what)));
        return lines.size() == 1 ? lines.first().mid(what.size() + 2) : "(nothing)"_s;
    }
};

QStringList linesOf(const QByteArray &output)
{
    return QString::fromUtf8(output).split(u'\n', Qt::SkipEmptyParts);
}

// The environment is added to the test's own.
Outcome start(const QStringList &arguments = {}, const Environment &environment = {})
{
    QProcessEnvironment all = QProcessEnvironment::systemEnvironment();
    for (auto variable = environment.cbegin(); variable != environment.cend(); ++variable) {
        all.insert(variable.key(), variable.value());
    }
    QProcess service;
    service.setProcessEnvironment(all);
    service.start(QCoreApplication::applicationDirPath() + "/startupprobe"_s, arguments);
    if (!service.waitForFinished(WaitLimit)) {
        qFatal("The service has not ended, or did not start: %s", qPrintable(service.errorString()));
    }
    return {service.exitStatus() == QProcess::NormalExit ? service.exitCode() : -1,
            linesOf(service.readAllStandardOutput()), linesOf(service.readAllStandardError())};
}

QByteArray compileCatalogue(const QByteArray &text, const QList<QByteArray> &ids)
{
    QByteArray messages;
    for (const QByteArray &id : ids) {
        messages += "<message id=\"" + id + "\"><source>" + id + "</source><translation>" + text
                + "</translation></message>\n";
    }
    const QTemporaryDir folder;
    const DeviceFile source(folder.filePath("a.ts"_s),
                            "<?xml version=\"1.0\" encoding=\"utf-8\"?>\n<!DOCTYPE TS>\n<TS version=\"2.1\">\n"
                            "<context>\n<name/>\n"
                                    + messages + "</context>\n</TS>\n");
    QProcess lrelease;
    lrelease.start("lrelease"_s,
                   {"-silent"_s, "-idbased"_s, folder.filePath("a.ts"_s), "-qm"_s, folder.filePath("a.qm"_s)});
    QFile result(folder.filePath("a.qm"_s));
    if (!lrelease.waitForFinished(WaitLimit) || !result.open(QIODevice::ReadOnly)) {
        qFatal("No catalogue: %s", lrelease.readAllStandardError().constData());
    }
    return result.readAll();
}

/** An installed catalogue whose every text is the catalogue's own name. */
class Catalogue
{
public:
    Catalogue(const QString &name, const QList<QByteArray> &ids)
        : m_file("/usr/share/translations/%1.qm"_s.arg(name), compileCatalogue(name.toUtf8(), ids))
    {
    }

private:
    DeviceFile m_file;
};

// The events that the probe has reported, and the handler's beginning and end. The last proxy that the handler makes
// introspects its peer. The display watcher is destroyed last and then unsubscribes.
QStringList eventsIn(const QString &traffic)
{
    static const QRegularExpression message(
            "member=Report\\n +string \"(?<reported>.*)\"|"
            "(?<made>destination=ru\\.quon\\.RuntimeManager .*member=Introspect)|"
            "(?<destroyed>member=RemoveMatch\\n +string \".*member='display_status_ind')"_s);
    QStringList events;
    for (auto matches = message.globalMatch(traffic); matches.hasNext();) {
        const QRegularExpressionMatch match = matches.next();
        if (match.capturedLength("made"_s) > 0) {
            events << "handler made"_s;
        } else if (match.capturedLength("destroyed"_s) > 0) {
            events << "handler destroyed"_s;
        } else {
            events << match.captured("reported"_s);
        }
    }
    return events;
}

}

/** The set-up of the service mode, and the reasons to give up before its event loop begins. */
class StartupTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void isOnTheBus()
    {
        const TestDialog dialog;
        const Outcome outcome = start();

        QCOMPARE(outcome.status, 42);
        QCOMPARE(outcome.value("object on the bus"_s), "yes"_s);
        QCOMPARE(outcome.value("name on the bus"_s), "yes"_s);
        QCOMPARE(outcome.value("quits with its last window"_s), "no"_s);
        QCOMPARE(outcome.value("windows"_s), "0"_s);
        QCOMPARE(outcome.value("windows with a dialog"_s), "1"_s);
    }

    void asksForNoNameWithoutItsObject()
    {
        BusMonitor monitor(QDBusConnection::sessionBus(), qgetenv("DBUS_SESSION_BUS_ADDRESS"));
        QCOMPARE(start({"occupied"_s}).status, 1);
        QVERIFY(!monitor.traffic().contains("RequestName"));
        QCOMPARE(start().status, 42);
        QVERIFY(monitor.traffic().contains("RequestName"));
    }

    void handsItsArgumentsOver()
    {
        const Outcome outcome = start({"install"_s, "-x"_s, "a b"_s});
        QCOMPARE(outcome.value("arguments"_s), "install -x a b"_s);
    }

    void consultsTheCataloguesInOrder()
    {
        const Catalogue english(English, {"probe-one", "probe-two", "probe-three", "probe-four"});
        const Catalogue german(German, {"probe-two", "probe-three", "probe-four"});
        const Catalogue zarnEnglish(ZarnEnglish, {"probe-three", "probe-four"});
        const Catalogue zarnGerman(ZarnGerman, {"probe-four"});
        const Outcome outcome = start({}, InGerman);

        QCOMPARE(outcome.value("probe-one"_s), English);
        QCOMPARE(outcome.value("probe-two"_s), German);
        QCOMPARE(outcome.value("probe-three"_s), ZarnEnglish);
        QCOMPARE(outcome.value("probe-four"_s), ZarnGerman);
        QCOMPARE(outcome.value("probe-none"_s), "probe-none"_s);
    }

    void prefersTheMostSpecificLocale()
    {
        const Catalogue german(German, {"probe-one"});
        const Catalogue ofGermany(German + "_DE"_s, {"probe-one"});
        QCOMPARE(start({}, InGerman).value("probe-one"_s), German + "_DE"_s);
    }

    void doesWithoutCatalogues()
    {
        const Outcome outcome = start({}, {{"LC_ALL"_s, "eo.UTF-8"_s}});
        QCOMPARE(outcome.status, 42);
        QCOMPARE(outcome.value("probe-one"_s), "probe-one"_s);
    }

    // Known behaviour 9.
    void startsWithoutSystemBus()
    {
        const Outcome outcome = start({}, {{"DBUS_SYSTEM_BUS_ADDRESS"_s, AbsentBus}});
        QCOMPARE(outcome.status, 42);
        QCOMPARE(outcome.value("name on the bus"_s), "yes"_s);
    }

    void endsInReverseOrder_data()
    {
        QTest::addColumn<QStringList>("arguments");
        QTest::addColumn<QString>("sessionBus");
        QTest::addColumn<QStringList>("names");
        QTest::addColumn<QString>("error");
        const QString bus = qEnvironmentVariable("DBUS_SESSION_BUS_ADDRESS");
        const QString name = "org.velmoraos.installationhandler"_s;
        const QStringList none;
        QTest::newRow("after its work") << none << bus << none << QString();
        QTest::newRow("without session bus") << none << AbsentBus << none << "Could not connect to session bus."_s;
        QTest::newRow("path taken") << QStringList("occupied"_s) << bus << none
                                    << "Could not register installation handler object"_s;
        QTest::newRow("name taken") << none << bus << QStringList(name)
                                    << "Service name is already in use: org.velmoraos.installationhandler"_s;
    }

    // Where the service gives up the handler has been made before.
    void endsInReverseOrder()
    {
        QFETCH(QStringList, arguments);
        QFETCH(QString, sessionBus);
        QFETCH(QStringList, names);
        QFETCH(QString, error);
        const Catalogue english(English, {"probe-all"});
        const Catalogue german(German, {"probe-all"});
        const Catalogue zarnEnglish(ZarnEnglish, {"probe-all"});
        const Catalogue zarnGerman(ZarnGerman, {"probe-all"});
        Journal calls;
        const RecordingPeer owner(qEnvironmentVariable("DBUS_SESSION_BUS_ADDRESS"), names, &calls);
        BusMonitor monitor(QDBusConnection::systemBus(), qgetenv("DBUS_SYSTEM_BUS_ADDRESS"));
        Environment environment = InGerman;
        environment.insert("DBUS_SESSION_BUS_ADDRESS"_s, sessionBus);

        const Outcome outcome = start(arguments, environment);
        QCOMPARE(outcome.status, error.isEmpty() ? 42 : 1);
        QCOMPARE(outcome.printed.isEmpty(), !error.isEmpty());
        if (!error.isEmpty()) {
            QCOMPARE(outcome.logged, QStringList(error));
        }
        QCOMPARE(calls.entries(), QStringList());
        const QString textOf = "text of "_s;
        QCOMPARE(eventsIn(QString::fromUtf8(monitor.traffic())),
                 QStringList({textOf + English, textOf + German, textOf + ZarnEnglish, textOf + ZarnGerman,
                              "handler made"_s, "handler destroyed"_s, textOf + ZarnEnglish, textOf + German,
                              textOf + English, textOf + "probe-all"_s, "engine destroyed"_s,
                              "application destroyed"_s}));
    }
};

VELMORA_TEST(StartupTest, Device, Gui)

#include "tst_startup.moc"
