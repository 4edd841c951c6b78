// SPDX-FileCopyrightText: velmora-installationhandler contributors
// SPDX-License-Identifier: BSD-3-Clause

#include "busmonitor.h"
#include "devicefile.h"
#include "journal.h"
#include "recordingpeer.h"
#include "testdialog.h"
#include "testrunner.h"

#include <QProcess>
#include <QRegularExpression>
#include <QTemporaryDir>

namespace {

struct Outcome
{
    int status;
    QStringList said;
    QStringList logged;

    QString value(const QString &what) const
    {
        const QStringList lines = said.filter(QRegularExpression(QLatin1Char('^') + what + QStringLiteral(": ")));
        return lines.size() == 1 ? lines.first().mid(what.size() + 2) : QStringLiteral("(nothing)");
    }
};

QStringList linesOf(const QByteArray &output)
{
    return QString::fromUtf8(output).split(QLatin1Char('\n'), Qt::SkipEmptyParts);
}

// In the environment given here, on top of the test's own.
Outcome start(const QStringList &arguments, const QHash<QString, QString> &environment = {})
{
    QProcessEnvironment all = QProcessEnvironment::systemEnvironment();
    for (auto variable = environment.cbegin(); variable != environment.cend(); ++variable) {
        all.insert(variable.key(), variable.value());
    }
    QProcess service;
    service.setProcessEnvironment(all);
    service.start(QCoreApplication::applicationDirPath() + QStringLiteral("/startupprobe"), arguments);
    if (!service.waitForFinished(20000)) {
        qFatal("The service is still running after 20 seconds, or did not start: %s",
               qPrintable(service.errorString()));
    }
    return {service.exitStatus() == QProcess::NormalExit ? service.exitCode() : -1,
            linesOf(service.readAllStandardOutput()), linesOf(service.readAllStandardError())};
}

QByteArray catalogueSource(const QByteArray &name, const QList<QByteArray> &ids)
{
    QByteArray source = "<?xml version=\"1.0\" encoding=\"utf-8\"?>\n<!DOCTYPE TS>\n"
                        "<TS version=\"2.1\">\n<context>\n<name/>\n";
    for (const QByteArray &id : ids) {
        source += "<message id=\"" + id + "\"><source>" + id + "</source><translation>" + name
                + "</translation></message>\n";
    }
    return source + "</context>\n</TS>\n";
}

QByteArray compiled(const QByteArray &name, const QList<QByteArray> &ids)
{
    const QTemporaryDir folder;
    const DeviceFile source(folder.filePath(QStringLiteral("a.ts")), catalogueSource(name, ids));
    QProcess lrelease;
    lrelease.start(QStringLiteral("lrelease"),
                   {QStringLiteral("-silent"), QStringLiteral("-idbased"), folder.filePath(QStringLiteral("a.ts")),
                    QStringLiteral("-qm"), folder.filePath(QStringLiteral("a.qm"))});
    QFile result(folder.filePath(QStringLiteral("a.qm")));
    if (!lrelease.waitForFinished() || !result.open(QIODevice::ReadOnly)) {
        qFatal("No catalogue: %s", lrelease.readAllStandardError().constData());
    }
    return result.readAll();
}

/** A catalogue whose every text is the catalogue's own name. */
class Catalogue
{
public:
    Catalogue(const QString &name, const QList<QByteArray> &ids)
        : m_file(QStringLiteral("/usr/share/translations/%1.qm").arg(name), compiled(name.toUtf8(), ids))
    {
    }

private:
    DeviceFile m_file;
};

// What the probe has told, among it the handler's beginning and end: the last proxy that it makes looks at its peer,
// and its display watcher, which goes last, listens no longer.
QStringList comingsAndGoings(const QString &traffic)
{
    static const QRegularExpression message(
            QStringLiteral("member=Tell\\n +string \"(?<told>.*)\"|"
                           "(?<made>destination=ru\\.quon\\.RuntimeManager .*member=Introspect)|"
                           "(?<destroyed>member=RemoveMatch\\n +string \".*member='display_status_ind')"));
    QStringList all;
    for (auto matches = message.globalMatch(traffic); matches.hasNext();) {
        const QRegularExpressionMatch match = matches.next();
        if (match.capturedLength(QStringLiteral("made")) > 0) {
            all << QStringLiteral("handler made");
        } else if (match.capturedLength(QStringLiteral("destroyed")) > 0) {
            all << QStringLiteral("handler destroyed");
        } else {
            all << match.captured(QStringLiteral("told"));
        }
    }
    return all;
}

const QString Absent = QStringLiteral("unix:path=/absent");

const QString English = QStringLiteral("velmora-installationhandler_eng_en");
const QString German = QStringLiteral("velmora-installationhandler-de");
const QString ZarnEnglish = QStringLiteral("zarn_eng_en");
const QString ZarnGerman = QStringLiteral("zarn-de");

const QHash<QString, QString> InGerman{{QStringLiteral("LANG"), QStringLiteral("de_DE.UTF-8")},
                                       {QStringLiteral("LC_ALL"), QStringLiteral("de_DE.UTF-8")}};

}

/** What the service mode has set up when its event loop begins, and where it gives up before. */
class StartupTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void isOnTheBus();
    void handsItsArgumentsOver();
    void consultsTheCataloguesInOrder();
    void prefersTheMostSpecificLocale();
    void doesWithoutCatalogues();
    void startsWithoutSystemBus();
    void givesUpWithoutSessionBus();
    void givesUpWhenThePathIsTaken();
    void givesUpWhenTheNameIsTaken();
    void endsInReverseOrder_data();
    void endsInReverseOrder();
};

void StartupTest::isOnTheBus()
{
    const TestDialog dialog;
    const Outcome outcome = start({});

    QCOMPARE(outcome.status, 42);
    QCOMPARE(outcome.value(QStringLiteral("object on the bus")), QStringLiteral("yes"));
    QCOMPARE(outcome.value(QStringLiteral("name on the bus")), QStringLiteral("yes"));
    QCOMPARE(outcome.value(QStringLiteral("quits with its last window")), QStringLiteral("no"));
    QCOMPARE(outcome.value(QStringLiteral("windows")), QStringLiteral("0"));
    QCOMPARE(outcome.value(QStringLiteral("windows with a dialog")), QStringLiteral("1"));
}

void StartupTest::handsItsArgumentsOver()
{
    const Outcome outcome = start({QStringLiteral("install"), QStringLiteral("-x"), QStringLiteral("a b")});
    QCOMPARE(outcome.value(QStringLiteral("arguments")), QStringLiteral("install -x a b"));
}

void StartupTest::consultsTheCataloguesInOrder()
{
    const Catalogue english(English, {"probe-one", "probe-two", "probe-three", "probe-four"});
    const Catalogue german(German, {"probe-two", "probe-three", "probe-four"});
    const Catalogue zarnEnglish(ZarnEnglish, {"probe-three", "probe-four"});
    const Catalogue zarnGerman(ZarnGerman, {"probe-four"});
    const Outcome outcome = start({}, InGerman);

    QCOMPARE(outcome.value(QStringLiteral("probe-one")), English);
    QCOMPARE(outcome.value(QStringLiteral("probe-two")), German);
    QCOMPARE(outcome.value(QStringLiteral("probe-three")), ZarnEnglish);
    QCOMPARE(outcome.value(QStringLiteral("probe-four")), ZarnGerman);
    QCOMPARE(outcome.value(QStringLiteral("probe-none")), QStringLiteral("probe-none"));
}

void StartupTest::prefersTheMostSpecificLocale()
{
    const Catalogue german(German, {"probe-one"});
    const Catalogue ofGermany(German + QStringLiteral("_DE"), {"probe-one"});
    QCOMPARE(start({}, InGerman).value(QStringLiteral("probe-one")), German + QStringLiteral("_DE"));
}

void StartupTest::doesWithoutCatalogues()
{
    const Outcome outcome = start({}, {{QStringLiteral("LC_ALL"), QStringLiteral("eo.UTF-8")}});
    QCOMPARE(outcome.status, 42);
    QCOMPARE(outcome.value(QStringLiteral("probe-one")), QStringLiteral("probe-one"));
}

void StartupTest::startsWithoutSystemBus()
{
    const Outcome outcome = start({}, {{QStringLiteral("DBUS_SYSTEM_BUS_ADDRESS"), Absent}});
    QCOMPARE(outcome.status, 42);
    QCOMPARE(outcome.value(QStringLiteral("name on the bus")), QStringLiteral("yes"));
}

void StartupTest::givesUpWithoutSessionBus()
{
    const Outcome outcome = start({}, {{QStringLiteral("DBUS_SESSION_BUS_ADDRESS"), Absent}});
    QCOMPARE(outcome.status, 1);
    QCOMPARE(outcome.logged, QStringList(QStringLiteral("Could not connect to session bus.")));
    QCOMPARE(outcome.said, QStringList());
}

void StartupTest::givesUpWhenThePathIsTaken()
{
    const Outcome outcome = start({QStringLiteral("occupied")});
    QCOMPARE(outcome.status, 1);
    QCOMPARE(outcome.logged, QStringList(QStringLiteral("Could not register installation handler object")));
    QCOMPARE(outcome.said, QStringList());
}

void StartupTest::givesUpWhenTheNameIsTaken()
{
    Journal calls;
    const RecordingPeer owner(qEnvironmentVariable("DBUS_SESSION_BUS_ADDRESS"),
                              {QStringLiteral("org.velmoraos.installationhandler")}, &calls);
    const Outcome outcome = start({});
    QCOMPARE(outcome.status, 1);
    QCOMPARE(outcome.logged,
             QStringList(QStringLiteral("Service name is already in use: org.velmoraos.installationhandler")));
    QCOMPARE(outcome.said, QStringList());
    QCOMPARE(calls.entries(), QStringList());
}

void StartupTest::endsInReverseOrder_data()
{
    QTest::addColumn<QStringList>("arguments");
    QTest::addColumn<QString>("sessionBus");
    QTest::addColumn<QStringList>("names");
    QTest::addColumn<int>("status");
    const QString bus = qEnvironmentVariable("DBUS_SESSION_BUS_ADDRESS");
    QTest::newRow("after its work") << QStringList() << bus << QStringList() << 42;
    QTest::newRow("without session bus") << QStringList() << Absent << QStringList() << 1;
    QTest::newRow("path taken") << QStringList(QStringLiteral("occupied")) << bus << QStringList() << 1;
    QTest::newRow("name taken") << QStringList() << bus
                                << QStringList(QStringLiteral("org.velmoraos.installationhandler")) << 1;
}

// Also where it gives up: the handler has been there by then.
void StartupTest::endsInReverseOrder()
{
    QFETCH(QStringList, arguments);
    QFETCH(QString, sessionBus);
    QFETCH(QStringList, names);
    QFETCH(int, status);
    const QList<QByteArray> everywhere{"probe-all"};
    const Catalogue english(English, everywhere);
    const Catalogue german(German, everywhere);
    const Catalogue zarnEnglish(ZarnEnglish, everywhere);
    const Catalogue zarnGerman(ZarnGerman, everywhere);
    Journal calls;
    const RecordingPeer other(qEnvironmentVariable("DBUS_SESSION_BUS_ADDRESS"), names, &calls);
    BusMonitor monitor(QDBusConnection::systemBus(), qgetenv("DBUS_SYSTEM_BUS_ADDRESS"));
    QHash<QString, QString> environment = InGerman;
    environment.insert(QStringLiteral("DBUS_SESSION_BUS_ADDRESS"), sessionBus);

    QCOMPARE(start(arguments, environment).status, status);
    const QString textOf = QStringLiteral("text of ");
    QCOMPARE(comingsAndGoings(QString::fromUtf8(monitor.traffic())),
             QStringList({textOf + English, textOf + German, textOf + ZarnEnglish, textOf + ZarnGerman,
                          QStringLiteral("handler made"), QStringLiteral("handler destroyed"), textOf + ZarnEnglish,
                          textOf + German, textOf + English, textOf + QStringLiteral("probe-all"),
                          QStringLiteral("engine destroyed"), QStringLiteral("application destroyed")}));
}

VELMORA_TEST(StartupTest, Gui)

#include "tst_startup.moc"
