// SPDX-FileCopyrightText: velmora-installationhandler contributors
// SPDX-License-Identifier: BSD-3-Clause

#include "program.h"

#include "callmonitor.h"
#include "desktopnotification.h"
#include "errand.h"
#include "help.h"
#include "interruption.h"
#include "jsonreport.h"
#include "monitor.h"
#include "print.h"
#include "reports.h"
#include "results.h"
#include "subjects.h"
#include "textreport.h"

#include <QCoreApplication>
#include <QDBusConnection>
#include <QDBusError>
#include <QTimer>

#include <chrono>

namespace {

void addReports(Reports *reports, const CommandLine &commandLine, QElapsedTimer clock)
{
    if (commandLine.json) {
        reports->add(std::make_unique<JsonReport>(commandLine.quiet, clock));
    }
    reports->add(std::make_unique<TextReport>(commandLine.quiet || commandLine.json, clock));
    if (commandLine.notify) {
        reports->add(std::make_unique<DesktopNotification>());
    }
}

int endWith(Outcome outcome, Report *report)
{
    report->showEnd(outcome, exitStatus(outcome));
    return exitStatus(outcome);
}

int endWithoutBus(const QList<Subject> &subjects, const QString &reason, Report *report)
{
    Result result = Results::noBus(reason);
    for (const Subject &subject : subjects) {
        report->showResult(subject, result);
        result = Results::unrequested();
    }
    return endWith(Outcome::Unavailable, report);
}

int runErrand(const CommandLine &commandLine, QElapsedTimer clock)
{
    Reports reports;
    addReports(&reports, commandLine, clock);
    const QList<Subject> subjects = findSubjects(commandLine, &reports);
    if (subjects.isEmpty()) {
        return endWith(Outcome::Problem, &reports);
    }
    const QDBusConnection bus = QDBusConnection::sessionBus();
    if (!bus.isConnected()) {
        return endWithoutBus(subjects, bus.lastError().message(), &reports);
    }

    Service service(bus);
    Errand errand(commandLine, subjects, &service, &reports);
    CallMonitor callMonitor;
    QObject::connect(&callMonitor, &CallMonitor::called, &errand, &Errand::takeCallOfOther);
    // Nobody listens who does not wait.
    if (!commandLine.noWait) {
        service.listen();
        callMonitor.start();
    }
    const Interruption interruption;
    QObject::connect(&interruption, &Interruption::received, &errand, &Errand::interrupt);
    QObject::connect(&errand, &Errand::finished, &errand, &QCoreApplication::exit, Qt::QueuedConnection);
    // QtDBus keeps signals back until the event loop runs, but no replies. A reply would overtake the signals before
    // it.
    QMetaObject::invokeMethod(&errand, &Errand::start, Qt::QueuedConnection);
    return QCoreApplication::exec();
}

Monitor::Format monitorFormat(const CommandLine &commandLine)
{
    if (commandLine.quiet) {
        return Monitor::Nothing;
    }
    return commandLine.json ? Monitor::Json : Monitor::Text;
}

int runMonitor(const CommandLine &commandLine, QElapsedTimer clock)
{
    const QDBusConnection bus = QDBusConnection::sessionBus();
    if (!bus.isConnected()) {
        printError(Results::noBus(bus.lastError().message()).text);
        return exitStatus(Outcome::Unavailable);
    }
    Service service(bus);
    service.listen();
    const Monitor monitor(&service, monitorFormat(commandLine), clock);
    CallMonitor callMonitor;
    QObject::connect(&callMonitor, &CallMonitor::called, &monitor, &Monitor::showCall);
    callMonitor.start();

    QObject::connect(&service, &Service::busLost, &service, [] {
        //: An error
        //% "the session bus went away"
        printError(qtTrId("installctl-monitor-bus-lost"));
        QCoreApplication::exit(exitStatus(Outcome::Unavailable));
    });
    const Interruption interruption;
    QObject::connect(&interruption, &Interruption::received, &interruption,
                     [](int signal) { QCoreApplication::exit(exitStatus(Outcome::Interrupted, signal)); });
    if (commandLine.seconds > 0) {
        QTimer::singleShot(std::chrono::seconds(commandLine.seconds), &service, &QCoreApplication::quit);
    }
    return QCoreApplication::exec();
}

int refuse(const QString &error)
{
    printError(error);
    //: %1 is a command
    //% "see %1"
    printError(qtTrId("installctl-see-help").arg(QStringLiteral("velmora-installctl --help")));
    return exitStatus(Outcome::Usage);
}

}

int runProgram(const CommandLine &commandLine, QElapsedTimer clock)
{
    if (!commandLine.error.isEmpty()) {
        return refuse(commandLine.error);
    }
    if (commandLine.help) {
        printLine(stdout, helpText().trimmed());
        return 0;
    }
    if (commandLine.version) {
        printLine(stdout, QStringLiteral("velmora-installctl " VELMORA_VERSION));
        return 0;
    }
    return commandLine.command == CommandLine::Monitor ? runMonitor(commandLine, clock) : runErrand(commandLine, clock);
}
