// SPDX-FileCopyrightText: velmora-installationhandler contributors
// SPDX-License-Identifier: BSD-3-Clause

#include "packages.h"

#include <limits>

Packages::Packages(QObject *parent)
    : QObject(parent)
    , m_handler(QStringLiteral("org.velmoraos.installationhandler"),
                QStringLiteral("/org/velmoraos/installationhandler"), QDBusConnection::sessionBus())
    , m_watcher(m_handler.service(), m_handler.connection(), QDBusServiceWatcher::WatchForUnregistration)
{
    // Removals may reply late. If the service ends before its reply, the bus answers with an error.
    m_handler.setTimeout(std::numeric_limits<int>::max());
    using Handler = org::velmoraos::installationhandler;
    connect(&m_handler, &Handler::installFinished, this,
            [this](bool success, const QString &errorString) { takeOutcome(Installation, success, errorString); });
    connect(&m_handler, &Handler::removalFinished, this,
            [this](bool success, const QString &errorString) { takeOutcome(Removal, success, errorString); });
    connect(&m_watcher, &QDBusServiceWatcher::serviceUnregistered, this, [this] {
        if (!m_reply) {
            abandon(QStringLiteral("The service has ended."));
        }
    });
}

void Packages::install(const QStringList &files)
{
    begin(Installation, 1, m_handler.installFiles(files));
}

void Packages::remove(const QStringList &names)
{
    begin(Removal, names.size(), m_handler.removePackages(names));
}

void Packages::begin(Request request, int outcomes, const QDBusPendingCall &call)
{
    m_request = request;
    m_outcomes = outcomes;
    m_errors.clear();
    emit busyChanged();

    m_reply = new QDBusPendingCallWatcher(call, this);
    connect(m_reply, &QDBusPendingCallWatcher::finished, this, &Packages::takeReply);
}

void Packages::takeReply(QDBusPendingCallWatcher *reply)
{
    reply->deleteLater();
    // The outcome may have come before the reply, and a new request after it.
    if (reply != m_reply) {
        return;
    }
    m_reply = nullptr;
    if (reply->isError()) {
        abandon(reply->error().message());
    }
}

void Packages::takeOutcome(Request request, bool success, const QString &errorString)
{
    if (request != m_request) {
        return;
    }
    if (!success) {
        m_errors << errorString;
    }
    if (--m_outcomes == 0) {
        end();
    }
}

void Packages::abandon(const QString &errorString)
{
    if (busy()) {
        m_errors << errorString;
        end();
    }
}

void Packages::end()
{
    m_request = None;
    m_reply = nullptr;
    emit busyChanged();
    emit finished(m_errors.isEmpty(), m_errors.join(QLatin1Char('\n')));
}
