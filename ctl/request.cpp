// SPDX-FileCopyrightText: velmora-installationhandler contributors
// SPDX-License-Identifier: BSD-3-Clause

#include "request.h"

#include "bus.h"
#include "callerror.h"
#include "results.h"

#include <QDBusError>

Request::Request(Service *service, const QString &method, const QVariantList &arguments)
    : m_service(service)
    , m_method(method)
    , m_arguments(arguments)
{
    connect(service, &Service::ownerChanged, this, &Request::handleOwnerChanged);
    connect(service, &Service::busLost, this, [this] { end(Results::busLost()); });
    connect(service, &Service::nonsense, this, [this] { end(Results::nonsense()); });
}

void Request::start()
{
    auto *watcher = new QDBusPendingCallWatcher(m_service->call(m_method, m_arguments), this);
    connect(watcher, &QDBusPendingCallWatcher::finished, this, &Request::handleReply);
}

void Request::expire(int seconds)
{
    if (m_isTaken) {
        end(Results::unfinished(seconds));
    } else {
        end(m_service->mayRun() ? Results::unanswered(seconds) : Results::notStarted(seconds));
    }
}

void Request::interrupt()
{
    end(m_isTaken || m_service->mayRun() ? Results::interrupted() : Results::interruptedStart());
}

void Request::take()
{
    m_isTaken = true;
    emit taken();
}

void Request::end(const Result &result)
{
    if (!m_hasEnded) {
        m_hasEnded = true;
        emit finished(result);
    }
}

void Request::handleReply(QDBusPendingCallWatcher *watcher)
{
    const QDBusMessage reply = watcher->reply();
    if (QDBusError(reply).type() == QDBusError::NoReply) {
        handleServiceGone();
        return;
    }
    if (reply.type() == QDBusMessage::ErrorMessage) {
        end(readCallError(reply));
        return;
    }
    m_answerer = reply.service();
    take();
    if (m_goneOwners.contains(m_answerer)) {
        handleServiceGone();
    } else if (!m_hasEnded) {
        handleAnswer();
    }
}

// Before the answer nobody knows who will answer: an idle service may have ended just when the bus started a new one
// for the call. QtDBus may also deliver this signal before an answer that came earlier.
void Request::handleOwnerChanged(const QString &oldOwner)
{
    m_goneOwners << oldOwner;
    if (isAnswered() && oldOwner == m_answerer) {
        handleServiceGone();
    }
}

// A bus that is about to end closes the connection of the service too, perhaps first, and answers no more calls.
void Request::handleServiceGone()
{
    // A new service knows nothing of this request.
    disconnect(m_service, nullptr, this, nullptr);
    const auto *watcher = new QDBusPendingCallWatcher(m_service->askBus(), this);
    connect(watcher, &QDBusPendingCallWatcher::finished, this, [this](QDBusPendingCallWatcher *asked) {
        end(Bus::hasAnswered(asked->error()) ? Results::serviceEnded() : Results::busLost());
    });
}
