// SPDX-FileCopyrightText: velmora-installationhandler contributors
// SPDX-License-Identifier: BSD-3-Clause

#pragma once

#include "request.h"

class OtherRequests;

/** The installation of one package file. */
class Installation : public Request
{
    Q_OBJECT

public:
    struct Options
    {
        bool sdkMode = false;
        bool keepUserData = false;
    };

    /** argument: a path or URL for the service. service, others: outlive this object. */
    Installation(Service *service, const OtherRequests *others, const QString &argument, Options options);

protected:
    void handleAnswer() override;

private:
    void handleNeedConfirm();
    void handleInstallFinished(bool success, const QString &errorString);
    Outcome readFailure(const QString &errorString) const;
    bool asksUser() const;
    bool isUncertain() const;

    const OtherRequests *m_others;
    const bool m_sdkMode;
    // How often the service has asked since the call.
    int m_questions = 0;
};
