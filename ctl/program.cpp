// SPDX-FileCopyrightText: velmora-installationhandler contributors
// SPDX-License-Identifier: BSD-3-Clause

#include "program.h"

#include "bus.h"
#include "desktopnotification.h"
#include "errand.h"
#include "fillin.h"
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
#include <QDBusError>

#include <algorithm>
#include <csignal>
#include <cstdlib>

namespace {

// A notification service that is silent keeps the program no longer than this, in milliseconds.
int notificationTimeout(const CommandLine &commandLine)
{
    return 1000 * (commandLine.seconds > 0 ? std::min(commandLine.seconds, 3) : 3);
}

void addReports(Reports *reports, const CommandLine &commandLine, Bus::State bus, QElapsedTimer clock)
{
    if (commandLine.json) {
        reports->add(std::make_unique<JsonReport>(commandLine.quiet, clock));
    }
    reports->add(std::make_unique<TextReport>(commandLine.quiet || commandLine.json, clock));
    if (commandLine.notify && bus == Bus::Connected) {
        reports->add(std::make_unique<DesktopNotification>(notificationTimeout(commandLine)));
    }
}

// signal: the number of the one that has interrupted the program.
int endWith(Outcome outcome, Report *report, int signal = 0)
{
    const int status = exitStatus(outcome, signal);
    report->showEnd(outcome, status);
    return status;
}

int endWithProblems(const QList<NamedFile> &files, Report *report)
{
    for (const NamedFile &file : files) {
        if (!file.problem.isEmpty()) {
            report->showResult(file.subject, Results::problem(file.problem));
        }
    }
    return endWith(Outcome::Problem, report);
}

int endWithoutBus(const QList<NamedFile> &files, const Result &first, Report *report, int signal)
{
    Result result = first;
    for (const NamedFile &file : files) {
        report->showResult(file.subject, result);
        result = Results::unrequested();
    }
    return endWith(first.outcome, report, signal);
}

int runErrand(const CommandLine &commandLine, const QList<NamedFile> &files, Report *report,
              const Interruption &interruption, QElapsedTimer clock)
{
    QList<Subject> subjects;
    std::transform(files.cbegin(), files.cend(), std::back_inserter(subjects),
                   [](const NamedFile &file) { return file.subject; });
    // All requests are made even if nobody reads the output any more. The status tells how they ended.
    std::signal(SIGPIPE, SIG_IGN);
    Errand errand(commandLine, subjects, report);
    QObject::connect(&interruption, &Interruption::received, &errand, &Errand::interrupt);
    QObject::connect(&errand, &Errand::finished, &errand, &QCoreApplication::exit, Qt::QueuedConnection);
    errand.start(clock);
    return QCoreApplication::exec();
}

Result withoutBus(Bus::State state, const CommandLine &commandLine)
{
    switch (state) {
    case Bus::Interrupted:
        return Results::interruptedStart();
    case Bus::Silent:
        return Results::silentBus(commandLine.limit());
    default:
        return Results::noBus(Bus::connection().lastError().message());
    }
}

bool hasProblem(const QList<NamedFile> &files)
{
    return std::any_of(files.cbegin(), files.cend(), [](const NamedFile &file) { return !file.problem.isEmpty(); });
}

// Problems with files are told first. Where there is a bus, a notification can tell them too.
int run(const CommandLine &commandLine, Bus::State bus, const Interruption &interruption, QElapsedTimer clock)
{
    Reports reports;
    addReports(&reports, commandLine, bus, clock);
    const QList<NamedFile> files = findSubjects(commandLine);
    if (bus != Bus::Interrupted && hasProblem(files)) {
        return endWithProblems(files, &reports);
    }
    if (bus != Bus::Connected) {
        return endWithoutBus(files, withoutBus(bus, commandLine), &reports, interruption.signal());
    }
    return runErrand(commandLine, files, &reports, interruption, clock);
}

int watch(const CommandLine &commandLine, Bus::State bus, const Interruption &interruption, QElapsedTimer clock)
{
    if (bus == Bus::Interrupted) {
        return exitStatus(Outcome::Interrupted, interruption.signal());
    }
    if (bus != Bus::Connected) {
        printError(onOneLine(withoutBus(bus, commandLine).text));
        return exitStatus(Outcome::Unavailable);
    }
    Monitor monitor(commandLine, clock);
    QObject::connect(&monitor, &Monitor::finished, &monitor, &QCoreApplication::exit, Qt::QueuedConnection);
    QObject::connect(&interruption, &Interruption::received, &interruption,
                     [](int signal) { QCoreApplication::exit(exitStatus(Outcome::Interrupted, signal)); });
    monitor.start();
    return QCoreApplication::exec();
}

Outcome outcomeOfMonitor(int status)
{
    if (status == 0) {
        return Outcome::Done;
    }
    return status == exitStatus(Outcome::Unavailable) ? Outcome::Unavailable : Outcome::Interrupted;
}

int runMonitor(const CommandLine &commandLine, Bus::State bus, const Interruption &interruption, QElapsedTimer clock)
{
    const int status = watch(commandLine, bus, interruption, clock);
    if (commandLine.json) {
        // Ctrl-C may have ended the reader too.
        std::signal(SIGPIPE, SIG_IGN);
        JsonReport(false, clock).showEnd(outcomeOfMonitor(status), status);
    }
    return status;
}

// A bus that does not answer keeps QtDBus waiting, also at the end of the process.
int leaveIf(Bus::State bus, int status)
{
    if (bus == Bus::Silent || bus == Bus::Interrupted) {
        std::_Exit(status);
    }
    return status;
}

int refuse(const QString &error)
{
    printError(printable(error));
    //: %1 is a command
    //% "see %1"
    printError(fillIn(qtTrId("installctl-see-help"), QStringLiteral("velmora-installctl --help")));
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
    const Interruption interruption;
    const Bus::State bus = Bus::connect(!commandLine.noWait, commandLine.limit(), interruption);
    return leaveIf(bus,
                   commandLine.command == CommandLine::Monitor ? runMonitor(commandLine, bus, interruption, clock)
                                                               : run(commandLine, bus, interruption, clock));
}
