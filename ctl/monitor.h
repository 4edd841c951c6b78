// SPDX-FileCopyrightText: velmora-installationhandler contributors
// SPDX-License-Identifier: BSD-3-Clause

#pragma once

#include <QDBusMessage>
#include <QElapsedTimer>
#include <QJsonObject>
#include <QObject>

class Service;

/** Prints what happens between programs and the service. */
class Monitor : public QObject
{
    Q_OBJECT

public:
    enum Format { Text, Json, Nothing };

    /** service: listens already. clock: began when the program started. */
    Monitor(const Service *service, Format format, QElapsedTimer clock);

    /** Prints a call of a program. */
    void showCall(const QDBusMessage &call) const;

private:
    void showRunning(bool isRunning) const;
    void showOutcome(const char *name, bool success, const QString &errorString) const;
    void show(QLatin1String event, const QJsonObject &object, const QString &text) const;

    const Format m_format;
    const QElapsedTimer m_clock;
};
