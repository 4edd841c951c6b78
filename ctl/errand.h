// SPDX-FileCopyrightText: velmora-installationhandler contributors
// SPDX-License-Identifier: BSD-3-Clause

#pragma once

#include "callmonitor.h"
#include "commandline.h"
#include "otherrequests.h"
#include "request.h"
#include "runqueue.h"
#include "subject.h"

#include <QElapsedTimer>
#include <QList>
#include <QObject>
#include <QScopedPointer>
#include <QTimer>

class Report;

/** All that a command line asks the service for: one request after the other, reported to the user. */
class Errand : public QObject
{
    Q_OBJECT

public:
    /** subjects: at least one. report: outlives this object. The bus must be connected. */
    Errand(const CommandLine &commandLine, const QList<Subject> &subjects, Report *report);

    /** clock: began when the program started. */
    void start(QElapsedTimer clock);

    /** Ends, because the process has received a signal. */
    void interrupt(int signal);

Q_SIGNALS:
    /** status: the exit status of the program. */
    void finished(int status);

private:
    void prepare();
    void handlePrepared();
    void handleBusLost();
    void handleTimeout(int seconds);
    void startNext();
    State firstState() const;
    void startPause();
    Request *makeRequest();
    Request *makeSubmission();
    /** Starts a request in the place of the last one. */
    template<typename Handler>
    void startRequest(Request *request, Handler handler);
    void handleFinished(const Result &result);
    void handlePauseFinished(const Result &result);
    void showResult(const Result &result);
    void end();

    const CommandLine m_commandLine;
    const QList<Subject> m_subjects;
    Report *m_report;
    Service m_service;
    CallMonitor m_callMonitor;
    RunQueue m_runs;
    OtherRequests m_others;
    QScopedPointer<Request, QScopedPointerDeleteLater> m_request;
    QTimer m_timeout;
    // The number of preparations that have not ended: to receive signals, and, after the calls of others can be seen,
    // to have a place among the runs of this program.
    int m_preparations = 2;
    // The number of subjects whose results have been shown, and so the index of the current one.
    int m_shown = 0;
    int m_signal = 0;
    bool m_hasEnded = false;
    Outcome m_outcome = Outcome::Unrequested;
};
