// SPDX-FileCopyrightText: velmora-installationhandler contributors
// SPDX-License-Identifier: BSD-3-Clause

#pragma once

#include "qtproxy.h"

#include <QDBusServiceWatcher>

/** Installs and removes packages, one request at a time. */
class Packages : public QObject
{
    Q_OBJECT
    Q_PROPERTY(bool busy READ busy NOTIFY busyChanged)

public:
    explicit Packages(QObject *parent = nullptr);

    /** Whether a request has not ended yet. */
    bool busy() const { return m_request != None; }

    /** Requests an installation. The list must not be empty, and the request before must have ended. */
    Q_INVOKABLE void install(const QStringList &files);

    /** Requests removals, on the same conditions. */
    Q_INVOKABLE void remove(const QStringList &names);

signals:
    void busyChanged();

    /** The request has ended. The text has a line for each failure. */
    void finished(bool success, const QString &errorString);

private:
    enum Request { None, Installation, Removal };

    void begin(Request request, int outcomes, const QDBusPendingCall &call);
    void takeReply(QDBusPendingCallWatcher *reply);
    void takeOutcome(Request request, bool success, const QString &errorString);
    void abandon(const QString &errorString);
    void end();

    org::velmoraos::installationhandler m_handler;
    QDBusServiceWatcher m_watcher;
    QDBusPendingCallWatcher *m_reply = nullptr;
    Request m_request = None;
    int m_outcomes = 0;
    QStringList m_errors;
};
