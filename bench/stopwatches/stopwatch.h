// SPDX-FileCopyrightText: velmora-installationhandler contributors
// SPDX-License-Identifier: BSD-3-Clause

#pragma once

#include <QString>

#include <functional>

/** Microseconds of the monotonic clock. */
double now();

/** Prints one measurement: which of the programs it belongs to, counted from 0, and its value. */
void print(int program, double value);

/**
 * Runs two functions in turn and prints the microseconds of processor time that
 * each run took. For work that waits for nobody: that is all there is, then,
 * but for the disk.
 */
void printProcessorTimes(int rounds, const std::function<void()> (&functions)[2]);

/** Runs the event loop until done() holds; ends the program with a word on what was awaited after 60 seconds. */
void waitUntil(const std::function<bool()> &done, const QString &what);

/** Ends the program with a word on what went wrong. */
[[noreturn]] void fail(const QString &what);
