// SPDX-FileCopyrightText: velmora-installationhandler contributors
// SPDX-License-Identifier: BSD-3-Clause

#pragma once

#include "outcome.h"
#include "state.h"
#include "subject.h"

/** The texts of states and outcomes, in the user's language. */
namespace OutcomeText {

QString of(const Subject &subject, State state);

/** The word for an outcome, empty where the result's own text says everything. */
QString of(const Subject &subject, Outcome outcome);

/** The word and the text of a result, on one line. word: as `of` has returned it, with colours or without. */
QString join(const QString &word, const Result &result);

}
