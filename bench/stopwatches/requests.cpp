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

Requests::Requests(const QString &service)
    : m_service(service)
{
    QDBusConnection::sessionBus().connect(m_service, Path, Interface, QStringLiteral("installFinished"), this,
                                          SLOT(finished()));
}

double Requests::install(const QStringList &files)
{
    const double asked = now();
    send(files, true);
    awaitOutcome();
    return m_finishedAt - asked;
}

double Requests::ask(const QString &file)
{
    const double asked = now();
    send({file}, false);
    return asked;
}

void Requests::awaitOutcome()
{
    waitUntil([this]() { return !m_pending; }, QStringLiteral("installFinished of ") + m_service);
}

void Requests::send(const QStringList &files, bool sdkMode)
{
    m_pending = true;
    QDBusMessage call = QDBusMessage::createMethodCall(m_service, Path, Interface, QStringLiteral("installFiles"));
    QDBusConnection::sessionBus().send(call << files << sdkMode << false);
}

void Requests::finished()
{
    m_finishedAt = now();
    m_pending = false;
}
