// SPDX-FileCopyrightText: velmora-installationhandler contributors
// SPDX-License-Identifier: BSD-3-Clause

#include "installation.h"

#include "otherrequests.h"
#include "servicetexts.h"
#include "systempaths.h"

#include <QFile>
#include <QStringList>

Installation::Installation(Service *service, const OtherRequests *others, const QString &argument, Options options)
    : Request(service, QStringLiteral("installFiles"), {QStringList(argument), options.sdkMode, options.keepUserData})
    , m_others(others)
    , m_sdkMode(options.sdkMode)
{
    connect(service, &Service::needConfirm, this, &Installation::handleNeedConfirm);
    connect(service, &Service::installFinished, this, &Installation::handleInstallFinished);
}

void Installation::handleNeedConfirm()
{
    take();
    ++m_questions;
    emit stateChanged(State::Confirming);
}

void Installation::handleAnswer()
{
    if (m_questions == 0) {
        emit stateChanged(asksUser() ? State::Waiting : State::Installing);
    }
}

void Installation::handleInstallFinished(bool success, const QString &errorString)
{
    Result result;
    result.outcome = success ? Outcome::Done : readFailure(errorString);
    result.text = errorString;
    result.reported = true;
    // The policy is the same for all requests.
    result.last = result.outcome == Outcome::Forbidden;
    result.uncertain = !result.last && isUncertain();

    // The service asks before it installs. So this is the end of a request that was made before.
    const bool isEarlier = asksUser() && m_questions == 0 && !result.last;
    if (isEarlier && service()->wasRunning()) {
        return;
    }
    // QtDBus may deliver the report before an answer that came earlier. The states are the same in any order.
    if (!isAnswered() && !result.last) {
        handleAnswer();
    }
    end(result);
}

Outcome Installation::readFailure(const QString &errorString) const
{
    if (m_questions > 0) {
        return ServiceTexts::tellsDeclined(errorString) ? Outcome::Declined : Outcome::Failed;
    }
    return ServiceTexts::tellsForbidden(errorString) ? Outcome::Forbidden : Outcome::Failed;
}

// In sdk mode it depends on the developer mode, which only the service is told.
bool Installation::asksUser() const
{
    return !m_sdkMode && !QFile::exists(SystemPaths::EmulatorMarker);
}

bool Installation::isUncertain() const
{
    const bool hasOther = asksUser() ? m_others->hasSilentInstallation() : m_others->hasInstallation();
    return hasOther || m_questions > 1;
}
