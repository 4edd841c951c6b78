// SPDX-FileCopyrightText: velmora-installationhandler contributors
// SPDX-License-Identifier: BSD-3-Clause

#pragma once

#include "outcome.h"
#include "service.h"
#include "state.h"

#include <QDBusPendingCallWatcher>
#include <QObject>
#include <QString>
#include <QStringList>
#include <QVariantList>

/**
 * One request to the service, from the call to its end. This class knows about the call; a subclass for each kind of
 * request knows about the reports.
 */
class Request : public QObject
{
    Q_OBJECT

public:
    /** service: outlives this object. */
    Request(Service *service, const QString &method, const QVariantList &arguments);

    /** Makes the call. */
    void start();

    /** Ends the request because its time is over. The service goes on. seconds: the time that there was. */
    void expire(int seconds);
    /** Ends the request because the user wants to wait no longer. The service goes on if it runs. */
    void interrupt();

Q_SIGNALS:
    void stateChanged(State state);
    /** The service works on the request, or has answered at least. */
    void taken();
    /** The last signal of a request. */
    void finished(const Result &result);

protected:
    /** The service has answered without an error. */
    virtual void handleAnswer() = 0;

    bool isAnswered() const { return !m_answerer.isEmpty(); }
    Service *service() const { return m_service; }
    /** The service works on the request. */
    void take();
    void end(const Result &result);

private:
    void handleReply(QDBusPendingCallWatcher *watcher);
    void handleOwnerChanged(const QString &oldOwner);
    void handleServiceGone();

    Service *m_service;
    const QString m_method;
    const QVariantList m_arguments;
    // The connection that has answered.
    QString m_answerer;
    // The connections that have lost the service's name since the request was made.
    QStringList m_goneOwners;
    bool m_isTaken = false;
    bool m_hasEnded = false;
};
