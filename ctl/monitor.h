// SPDX-FileCopyrightText: velmora-installationhandler contributors
// SPDX-License-Identifier: BSD-3-Clause

#pragma once

#include "callmonitor.h"
#include "service.h"

#include <QDBusMessage>
#include <QElapsedTimer>
#include <QJsonObject>
#include <QObject>

/** Prints what happens between programs and the service. */
class Monitor : public QObject
{
    Q_OBJECT

public:
    enum Format { Text, Json };

    /** clock: began when the program started. The bus must be connected. */
    Monitor(Format format, QElapsedTimer clock);

    void start();

Q_SIGNALS:
    /** There is nothing to see any more. status: the exit status of the program. */
    void finished(int status);

private:
    void showCall(const QDBusMessage &call) const;
    void showRunning(bool isRunning) const;
    void showSignal(const QDBusMessage &signal) const;
    void show(QLatin1String event, const QJsonObject &object, const QString &text) const;
    void handleBusLost();

    Service m_service;
    CallMonitor m_callMonitor;
    const Format m_format;
    const QElapsedTimer m_clock;
};
