// SPDX-FileCopyrightText: velmora-installationhandler contributors
// SPDX-License-Identifier: BSD-3-Clause

#pragma once

#include "progressline.h"
#include "report.h"

#include <QElapsedTimer>

#include <memory>

/** Prints lines for people: good outcomes and states on the standard output, the others on that for errors. */
class TextReport : public Report
{
public:
    /** isQuiet: prints nothing of what goes well. clock: began when the program started. */
    TextReport(bool isQuiet, QElapsedTimer clock);

    void showState(const Subject &subject, State state) override;
    void showResult(const Subject &subject, const Result &result) override;
    void showEnd(Outcome outcome, int status) override;

private:
    const bool m_isQuiet;
    std::unique_ptr<ProgressLine> m_progressLine;
    int m_count = 0;
    int m_unrequested = 0;
};
