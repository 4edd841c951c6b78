// SPDX-FileCopyrightText: velmora-installationhandler contributors
// SPDX-License-Identifier: BSD-3-Clause

#include "requests.h"

#include "stopwatch.h"

#include <QDBusConnection>
#include <QDBusMessage>

namespace {

const QString Path = QStringLiteral("/org/velmoraos/installationhandler");
const QString Interface = QStringLiteral("org.velmoraos.installationhandler");

}

Requests::Requests(const QString &service, const QString &outcome)
    : m_service(service)
    , m_outcome(outcome)
{
    QDBusConnection::sessionBus().connect(m_service, Path, Interface, m_outcome, this, SLOT(finished(bool,QString)));
}

double Requests::install(const QStringList &files)
{
    const double asked = now();
    requestInstallation(files, true);
    awaitOutcome();
    return m_finishedAt - asked;
}

double Requests::remove(const QString &package)
{
    const double asked = now();
    send(QStringLiteral("removePackages"), {QStringList{package}, false});
    awaitOutcome();
    if (!m_success) {
        fail(m_service + QStringLiteral(" does not remove ") + package + QStringLiteral(": ") + m_error);
    }
    return m_finishedAt - asked;
}

double Requests::ask(const QString &file)
{
    const double asked = now();
    requestInstallation({file}, false);
    return asked;
}

void Requests::awaitOutcome()
{
    waitUntil([this]() { return !m_pending; }, m_outcome + QStringLiteral(" of ") + m_service);
}

void Requests::requestInstallation(const QStringList &files, bool sdkMode)
{
    send(QStringLiteral("installFiles"), {files, sdkMode, false});
}

void Requests::send(const QString &method, const QVariantList &arguments)
{
    m_pending = true;
    QDBusMessage call = QDBusMessage::createMethodCall(m_service, Path, Interface, method);
    call.setArguments(arguments);
    QDBusConnection::sessionBus().send(call);
}

void Requests::finished(bool success, const QString &errorString)
{
    m_finishedAt = now();
    m_success = success;
    m_error = errorString;
    m_pending = false;
}
