// SPDX-FileCopyrightText: velmora-installationhandler contributors
// SPDX-License-Identifier: BSD-3-Clause

#pragma once

#include "report.h"

#include <QElapsedTimer>

class QJsonObject;

/** Prints JSON objects, one a line. */
class JsonReport : public Report
{
public:
    /** isQuiet: prints nothing of what goes well. clock: began when the program started. */
    JsonReport(bool isQuiet, QElapsedTimer clock);

    void showState(const Subject &subject, State state) override;
    void showResult(const Subject &subject, const Result &result) override;
    void showEnd(Outcome outcome, int status) override;

private:
    const bool m_isQuiet;
    const QElapsedTimer m_clock;
};
