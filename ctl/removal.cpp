// SPDX-FileCopyrightText: velmora-installationhandler contributors
// SPDX-License-Identifier: BSD-3-Clause

#include "removal.h"

#include "otherrequests.h"

#include <QStringList>

Removal::Removal(Service *service, const OtherRequests *others, const QString &name, bool keepUserData)
    : Removal(service, others, QStringLiteral("removePackages"), {QStringList(name), keepUserData})
{
}

Removal::Removal(Service *service, const OtherRequests *others, const QString &method, const QVariantList &arguments)
    : Request(service, method, arguments)
    , m_others(others)
{
    connect(service, &Service::removalFinished, this, &Removal::handleRemovalFinished);
}

void Removal::handleRemovalFinished(bool success, const QString &errorString)
{
    Result result;
    result.outcome = success ? Outcome::Done : Outcome::Failed;
    result.text = errorString;
    result.reported = true;
    result.uncertain = m_others->hasRemoval();
    end(result);
}
