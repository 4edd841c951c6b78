// SPDX-FileCopyrightText: velmora-installationhandler contributors
// SPDX-License-Identifier: BSD-3-Clause

#pragma once

#include "report.h"

#include <memory>
#include <vector>

/** Several reports as one. */
class Reports : public Report
{
public:
    void add(std::unique_ptr<Report> report) { m_reports.push_back(std::move(report)); }

    void showState(const Subject &subject, State state) override;
    void showResult(const Subject &subject, const Result &result) override;
    void showEnd(Outcome outcome, int status) override;

private:
    std::vector<std::unique_ptr<Report>> m_reports;
};
