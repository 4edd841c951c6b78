// SPDX-FileCopyrightText: velmora-installationhandler contributors
// SPDX-License-Identifier: BSD-3-Clause

#pragma once

#include <QLatin1String>
#include <QString>

/** How the request for a file or a package has ended, or why there was none. */
enum class Outcome {
    Done,
    Requested,
    Failed,
    Declined,
    Forbidden,
    Unclear,
    Usage,
    Problem,
    Unavailable,
    Unwritten,
    Unprivileged,
    Timeout,
    Interrupted,
    Unrequested,
};

/** The word of an outcome in the JSON output. */
QLatin1String word(Outcome outcome);

/** The exit status of the program. signal: the number of the one that has interrupted it. */
int exitStatus(Outcome outcome, int signal = 0);

/** Which of two outcomes the exit status of both tells. */
Outcome weightier(Outcome one, Outcome other);

/** The end of a request, as far as it is known. */
struct Result
{
    Outcome outcome = Outcome::Done;
    /** The service's text, or the reason of an outcome that the service has not reported. */
    QString text;
    /** The service has reported this by a signal. */
    bool reported = false;
    /** The report may be that of another request. */
    bool uncertain = false;
    /** No request can be made any more. */
    bool last = false;

    /** Everything went well, as far as can be known. */
    bool isGood() const;

    /** The outcome that the exit status tells: an uncertain one is unclear. */
    Outcome told() const { return uncertain ? Outcome::Unclear : outcome; }
};
