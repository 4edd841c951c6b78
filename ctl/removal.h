// SPDX-FileCopyrightText: velmora-installationhandler contributors
// SPDX-License-Identifier: BSD-3-Clause

#pragma once

#include "request.h"

class OtherRequests;

/** A removal, which ends with the first report. */
class Removal : public Request
{
    Q_OBJECT

public:
    /** The removal of a package. service, others: outlive this object. */
    Removal(Service *service, const OtherRequests *others, const QString &name, bool keepUserData);

protected:
    /** A removal by another method. */
    Removal(Service *service, const OtherRequests *others, const QString &method, const QVariantList &arguments);

    void handleAnswer() override {}

private:
    void handleRemovalFinished(bool success, const QString &errorString);

    const OtherRequests *m_others;
};
