// SPDX-FileCopyrightText: velmora-installationhandler contributors
// SPDX-License-Identifier: BSD-3-Clause

#include "outcome.h"

#include <algorithm>
#include <array>

namespace {

struct Row
{
    Outcome outcome;
    const char *word;
    int status;
};

// The order is that of Outcome.
constexpr std::array Rows{
        Row{Outcome::Done, "done", 0},
        Row{Outcome::Requested, "requested", 0},
        Row{Outcome::Failed, "failed", 1},
        Row{Outcome::Declined, "declined", 2},
        Row{Outcome::Forbidden, "forbidden", 3},
        Row{Outcome::Unclear, "unclear", 4},
        Row{Outcome::Usage, "usage", 64},
        Row{Outcome::Problem, "problem", 66},
        Row{Outcome::Unavailable, "unavailable", 69},
        Row{Outcome::Unwritten, "unwritten", 74},
        Row{Outcome::Unprivileged, "unprivileged", 77},
        Row{Outcome::Timeout, "timeout", 124},
        Row{Outcome::Interrupted, "interrupted", 128},
        Row{Outcome::Unrequested, "unrequested", 0},
};

constexpr std::array Weights{
        Outcome::Unrequested,  Outcome::Done,    Outcome::Requested, Outcome::Declined,
        Outcome::Forbidden,    Outcome::Unclear, Outcome::Failed,    Outcome::Unavailable,
        Outcome::Unprivileged, Outcome::Problem, Outcome::Timeout,   Outcome::Interrupted,
};

const Row &row(Outcome outcome)
{
    return Rows.at(static_cast<std::size_t>(outcome));
}

auto weight(Outcome outcome)
{
    return std::find(Weights.cbegin(), Weights.cend(), outcome);
}

}

QLatin1String word(Outcome outcome)
{
    return QLatin1String(row(outcome).word);
}

int exitStatus(Outcome outcome, int signal)
{
    return row(outcome).status + signal;
}

Outcome weightier(Outcome one, Outcome other)
{
    return weight(one) < weight(other) ? other : one;
}

bool Result::isGood() const
{
    return !uncertain && (outcome == Outcome::Done || outcome == Outcome::Requested);
}
