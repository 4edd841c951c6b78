// SPDX-FileCopyrightText: velmora-installationhandler contributors
// SPDX-License-Identifier: BSD-3-Clause

#pragma once

#include "callmonitor.h"
#include "commandline.h"
#include "outcome.h"
#include "service.h"

#include <QDBusMessage>
#include <QElapsedTimer>
#include <QJsonObject>
#include <QObject>
#include <QTimer>

/** Prints what happens between programs and the service. */
class Monitor : public QObject
{
    Q_OBJECT

public:
    /** clock: began when the program started. The bus must be connected. */
    Monitor(const CommandLine &commandLine, QElapsedTimer clock);

    void start();

Q_SIGNALS:
    /** There is nothing to see any more, or the time is over. status: the exit status of the program. */
    void finished(int status);

private:
    void handlePrepared();
    void handleTimeout();
    void fail(const Result &result);
    void showCall(const QDBusMessage &call) const;
    void showRunning(bool isRunning) const;
    void showSignal(const QDBusMessage &signal) const;
    void show(QLatin1String event, const QJsonObject &object, const QString &text) const;

    const CommandLine m_commandLine;
    Service m_service;
    CallMonitor m_callMonitor;
    const QElapsedTimer m_clock;
    QTimer m_timeout;
    // The number of preparations that have not ended: to receive signals, and to see calls.
    int m_preparations = 2;
};
