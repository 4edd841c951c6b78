// SPDX-FileCopyrightText: velmora-installationhandler contributors
// SPDX-License-Identifier: BSD-3-Clause

#include "errand.h"

#include "bus.h"
#include "installation.h"
#include "launcherremoval.h"
#include "removal.h"
#include "report.h"
#include "results.h"
#include "submission.h"

#include <QStringList>

#include <algorithm>
#include <chrono>

namespace {

// The service has not taken the request.
bool isRefusal(const Result &result)
{
    return result.outcome == Outcome::Failed || result.outcome == Outcome::Unavailable
            || result.outcome == Outcome::Unprivileged;
}

}

Errand::Errand(const CommandLine &commandLine, const QList<Subject> &subjects, Report *report)
    : m_commandLine(commandLine)
    , m_subjects(subjects)
    , m_report(report)
    , m_service(Bus::connection())
    , m_callMonitor(Bus::monitorConnection())
    , m_runs(Bus::connection())
    , m_others(&m_service)
{
    m_timeout.setSingleShot(true);
    m_timeout.setTimerType(Qt::PreciseTimer);
    connect(&m_callMonitor, &CallMonitor::called, &m_others, &OtherRequests::take);
}

void Errand::start(QElapsedTimer clock)
{
    const int seconds = m_commandLine.limit();
    if (seconds > 0) {
        connect(&m_timeout, &QTimer::timeout, this, [this, seconds] { handleTimeout(seconds); });
        m_timeout.start(m_commandLine.timeLeft(clock));
    }
    // Without waiting for outcomes there is nothing to listen to.
    if (m_commandLine.noWait) {
        startNext();
    } else {
        prepare();
    }
}

void Errand::prepare()
{
    connect(&m_service, &Service::busLost, this, &Errand::handleBusLost);
    connect(&m_service, &Service::listening, this, &Errand::handlePrepared);
    // A bus that ends closes the two connections one after the other. The last call of the preparation goes over the
    // connection of the requests, so there is no request if that one is closed later.
    connect(&m_callMonitor, &CallMonitor::started, &m_runs, &RunQueue::enter);
    connect(&m_runs, &RunQueue::entered, this, [this] {
        if (m_runs.hasEarlier()) {
            m_others.assumeAll();
        }
        handlePrepared();
    });
    m_service.listen();
    m_callMonitor.start();
}

void Errand::handlePrepared()
{
    --m_preparations;
    if (m_preparations == 0 && !m_hasEnded) {
        startNext();
    }
}

void Errand::handleBusLost()
{
    // A request knows what this means for it.
    if (!m_request && !m_hasEnded) {
        showResult(Results::busGone());
        end();
    }
}

void Errand::handleTimeout(int seconds)
{
    if (m_request) {
        m_request->expire(seconds);
    } else {
        showResult(Results::silentBus(seconds));
        end();
    }
}

void Errand::interrupt(int signal)
{
    m_signal = signal;
    if (m_hasEnded) {
        return;
    }
    if (m_request) {
        m_request->interrupt();
    } else {
        showResult(Results::interruptedStart());
        end();
    }
}

void Errand::startNext()
{
    if (!Bus::connection().isConnected()) {
        showResult(Results::busGone());
        end();
        return;
    }
    m_report->showState(m_subjects.at(m_shown), firstState());
    startRequest(m_commandLine.noWait ? makeSubmission() : makeRequest(), &Errand::handleFinished);
}

State Errand::firstState() const
{
    if (m_commandLine.noWait) {
        return State::Waiting;
    }
    return m_subjects.at(m_shown).kind == Subject::PackageFile ? State::Reading : State::Removing;
}

// PackageKit's library may report a failure twice (Known behaviour 25, 28). The answer to a request of nothing comes
// after all that the service has to report at the moment.
void Errand::startPause()
{
    startRequest(new Submission(&m_service, QStringLiteral("removePackages"), {QStringList(), false}),
                 &Errand::handlePauseFinished);
}

Request *Errand::makeRequest()
{
    const Subject &subject = m_subjects.at(m_shown);
    switch (subject.kind) {
    case Subject::PackageFile:
        return new Installation(&m_service, &m_others, subject.argument,
                                {m_commandLine.sdk, m_commandLine.keepUserData});
    case Subject::Package:
        return new Removal(&m_service, &m_others, subject.argument, m_commandLine.keepUserData);
    case Subject::Launcher:
        break;
    }
    return new LauncherRemoval(&m_service, &m_others, subject.argument);
}

Request *Errand::makeSubmission()
{
    QStringList arguments;
    std::transform(m_subjects.cbegin(), m_subjects.cend(), std::back_inserter(arguments),
                   [](const Subject &subject) { return subject.argument; });
    switch (m_subjects.constFirst().kind) {
    case Subject::PackageFile:
        return new Submission(&m_service, QStringLiteral("installFiles"),
                              {arguments, m_commandLine.sdk, m_commandLine.keepUserData});
    case Subject::Package:
        return new Submission(&m_service, QStringLiteral("removePackages"), {arguments, m_commandLine.keepUserData});
    case Subject::Launcher:
        break;
    }
    return new Submission(&m_service, QStringLiteral("removePackageByDesktopFile"), {arguments.constFirst()});
}

template<typename Handler>
void Errand::startRequest(Request *request, Handler handler)
{
    m_request.reset(request);
    connect(request, &Request::stateChanged, this,
            [this](State state) { m_report->showState(m_subjects.at(m_shown), state); });
    connect(request, &Request::finished, this, handler);
    connect(request, &Request::taken, this, [this] {
        if (m_commandLine.seconds < 0) {
            m_timeout.stop();
        }
    });
    // A limit that the user has set is for everything together. The usual one is for each call.
    if (m_commandLine.seconds < 0) {
        m_timeout.start(std::chrono::seconds(m_commandLine.limit()));
    }
    request->start();
}

void Errand::handleFinished(const Result &result)
{
    m_request->disconnect(this);
    showResult(result);
    // One request was for all subjects.
    while (m_commandLine.noWait && !isRefusal(result) && m_shown < m_subjects.size()) {
        showResult(result);
    }
    if (result.last || m_commandLine.noWait || m_shown == m_subjects.size()) {
        end();
    } else if (result.outcome == Outcome::Failed && m_subjects.at(m_shown).kind == Subject::Package) {
        startPause();
    } else {
        startNext();
    }
}

void Errand::handlePauseFinished(const Result &result)
{
    m_request->disconnect(this);
    if (result.outcome == Outcome::Interrupted || result.outcome == Outcome::Timeout) {
        // The next subject has not been requested.
        m_outcome = weightier(m_outcome, result.outcome);
        end();
    } else if (result.last && isRefusal(result)) {
        showResult(result);
        end();
    } else {
        startNext();
    }
}

void Errand::showResult(const Result &result)
{
    m_outcome = weightier(m_outcome, result.told());
    m_report->showResult(m_subjects.at(m_shown), result);
    ++m_shown;
}

void Errand::end()
{
    m_hasEnded = true;
    m_timeout.stop();
    while (m_shown < m_subjects.size()) {
        showResult(Results::unrequested());
    }
    const int status = exitStatus(m_outcome, m_outcome == Outcome::Interrupted ? m_signal : 0);
    m_report->showEnd(m_outcome, status);
    emit finished(status);
}
