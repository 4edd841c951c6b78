// SPDX-FileCopyrightText: velmora-installationhandler contributors
// SPDX-License-Identifier: BSD-3-Clause

#pragma once

#include "outcome.h"
#include "state.h"
#include "subject.h"

/** Tells the user or a program how a command goes. */
class Report
{
public:
    Report() = default;
    Report(const Report &) = delete;
    Report &operator=(const Report &) = delete;
    virtual ~Report() = default;

    virtual void showState(const Subject &subject, State state) = 0;
    virtual void showResult(const Subject &subject, const Result &result) = 0;
    /** The last call. */
    virtual void showEnd(Outcome outcome, int status) = 0;
};
