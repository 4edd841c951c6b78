// SPDX-FileCopyrightText: velmora-installationhandler contributors
// SPDX-License-Identifier: BSD-3-Clause

#include "reports.h"

void Reports::showState(const Subject &subject, State state)
{
    for (const auto &report : m_reports) {
        report->showState(subject, state);
    }
}

void Reports::showResult(const Subject &subject, const Result &result)
{
    for (const auto &report : m_reports) {
        report->showResult(subject, result);
    }
}

void Reports::showEnd(Outcome outcome, int status)
{
    for (const auto &report : m_reports) {
        report->showEnd(outcome, status);
    }
}
