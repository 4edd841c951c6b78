// SPDX-FileCopyrightText: velmora-installationhandler contributors
// SPDX-License-Identifier: BSD-3-Clause

#include "submission.h"

void Submission::handleAnswer()
{
    Result result;
    result.outcome = Outcome::Requested;
    end(result);
}
