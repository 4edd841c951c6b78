// SPDX-FileCopyrightText: velmora-installationhandler contributors
// SPDX-License-Identifier: BSD-3-Clause

#pragma once

#include <QString>

#include <functional>
#include <vector>

/** Microseconds of the monotonic clock. */
double now();

/**
 * Runs all functions in each round, in alternating order, so that none of them always follows the same other one.
 * Prints a line for each round in the end: the results, in the order of the functions.
 */
void measureInTurn(int rounds, const std::vector<std::function<double()>> &functions);

/** Runs the event loop until done() holds; fails after 60 seconds. */
void waitUntil(const std::function<bool()> &done, const QString &what);

/** Ends the program with an error message. */
[[noreturn]] void fail(const QString &what);
